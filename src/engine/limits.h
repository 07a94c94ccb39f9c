#pragma once
// The largest sizes, counts and repeats the engine takes from a form, a script or a
// data file. Those files come from other programs and from hand edits; every number is
// held against these before any arithmetic is done with it, so that a slip of the
// keyboard (or a hostile file) gets a message naming the file, the key or line and the
// limit, instead of an overflow, a blank page or a job that never ends.

namespace engine::limits {

// A side of the paper, and any length or position in a form, in mm: a few metres is
// more than any label sheet, envelope or roll the office prints on.
constexpr double kLengthMm = 3000;
// Label cells on one sheet (columns x rows), and rows on one page of a list.
constexpr int kSlotsPerPage = 1000;
// Pages of one print job, all its reports together.
constexpr int kPagesPerJob = 50000;
// A font size in points.
constexpr double kFontPoints = 1000;
// Line pitch in font sizes.
constexpr double kLineSpacing = 10;
// The script's print offsets, in 0.1 mm (as far as the longest paper).
constexpr int kOffsetTenths = 30000;
// The script's preview zoom, in percent.
constexpr int kZoomPercent = 1000;

}  // namespace engine::limits

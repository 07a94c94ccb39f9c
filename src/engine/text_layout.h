#pragma once
// Lays one field's text into its box: Japanese line breaking, horizontal or vertical
// writing, and shrinking where the text does not fit, so that nothing runs outside.
// Layout is pure computation in millimetres; drawing is a separate step.

#include "engine/font_book.h"
#include "engine/form.h"

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

namespace engine {

struct TextStyle {
    FontFace face = FontFace::Gothic;
    bool bold = false;
    double size = 10.0;  // points, the largest size wanted
    HAlign align = HAlign::Left;
    VAlign valign = VAlign::Top;
    bool vertical = false;
    bool wrap = true;
    double lineSpacing = 1.15;
    Numerals numerals = Numerals::AsIs;
    double minSize = 5.0;  // points: below this the text is cut with "…" instead
    double indent = 0;     // ems by which a wrapped line's continuation lines start later
};

// One run of characters drawn at a baseline start (horizontal), or one character in
// its em square (vertical).
struct PlacedRun {
    QString text;
    QPointF origin;  // horizontal: baseline start; vertical: centre of the square
    bool rotate = false;
    double shift = 0;  // vertical: part of the square to move up and right
};

struct TextLayout {
    double sizeMm = 0;  // the size used, as the em in mm
    bool vertical = false;
    bool fits = true;  // false: even the smallest size overflowed and was cut with "…"
    QList<PlacedRun> runs;
    QRectF bounds;  // the em squares the text covers
};

inline double ptToMm(double pt) { return pt * 25.4 / 72.0; }

// Breaks text into lines no wider than width (ems scaled by sizeMm). Explicit line
// ends are kept. A break never leaves a small kana, a closing bracket or punctuation at
// a line start, an opening bracket at a line end, splits a word of letters and digits,
// splits "御中", or separates keepTail (the honorific at the end) from the name's last
// character. Among the places that remain a line ends at a blank or between an
// address's parts (town, block number, building) before it ends inside a word, and
// inside a katakana run only where nothing better stands in the line's last third.
// Continuation lines are indentEms shorter. overflow is set where some unbreakable
// piece is wider than the line.
QStringList breakLines(const QString& text, double width, double sizeMm, const FontBook& fonts, FontFace face,
                       bool bold, const QString& keepTail, bool* overflow = nullptr, double indentEms = 0);

// The text as the field shows it: numerals converted, and in vertical writing letters
// and digits made full width so that they stand upright.
QString shapeText(const QString& text, const TextStyle& style);

TextLayout layoutText(const QString& text, const QRectF& box, const TextStyle& style, const FontBook& fonts,
                      const QString& keepTail = QString());

// Draws a layout; the painter works in mm. The text is clipped to clip.
void drawLayout(QPainter& painter, const TextLayout& layout, const TextStyle& style, const FontBook& fonts,
                const QColor& color, const QRectF& clip);

}  // namespace engine

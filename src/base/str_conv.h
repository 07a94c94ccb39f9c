#pragma once
// Width and kana conversion as the runtime's StrConv does it on a Japanese system.

#include <QString>

namespace base {

inline constexpr int vbUpperCase = 1;
inline constexpr int vbLowerCase = 2;
inline constexpr int vbWide = 4;
inline constexpr int vbNarrow = 8;
inline constexpr int vbKatakana = 16;
inline constexpr int vbHiragana = 32;

// Converts text by the conversion flags, which may be combined (vbNarrow +
// vbKatakana). Wide turns ASCII into its full-width forms (the blank into U+3000,
// "-" into "－", "\" into "￥", the quotes into ’ and ”) and half-width katakana into
// full-width, joining a voiced mark with the letter before it ("ｶﾞ" -> "ガ",
// "ﾊﾟ" -> "パ", "ｳﾞ" -> "ヴ"). Narrow does the reverse and splits such letters again.
// Hiragana has no half-width form and stays. Contradictory flags (wide with narrow,
// katakana with hiragana, upper with lower) raise 5.
QString StrConv(const QString& text, int conversion);

}  // namespace base

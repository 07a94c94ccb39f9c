#pragma once
// Character rules of Japanese typesetting that the layout needs: where a line may not
// break, which characters turn or change shape in vertical writing, and numerals.

#include <QChar>
#include <QString>

namespace engine {

// Characters that may not start a line: small kana, the long vowel mark, closing
// brackets and punctuation.
bool cannotStartLine(char16_t c);
// Opening brackets, which may not end a line.
bool cannotEndLine(char16_t c);
// Letters, digits and the marks between them in house numbers ("2-3", "A.B"): a run
// of them is one word.
bool isWordChar(char16_t c);

// ASCII letters, digits and signs to their full-width forms; a blank to the ideographic
// blank.
QString toFullWidth(const QString& s);
// Digits (half or full width) to kanji numerals, digit by digit ("10" -> "一〇").
QString toKanjiDigits(const QString& s);

// How one character stands in a vertical line. Brackets are turned rather than
// replaced by their vertical presentation forms, which a PDF's text layer would keep:
// a saved "（" must read as "（", not "︵".
struct VerticalGlyph {
    char16_t ch;
    bool rotate = false;  // turned a quarter clockwise (dashes, the long vowel mark, brackets)
    double shift = 0;     // moved up and right by this part of its square (、。, small kana)
};
VerticalGlyph verticalGlyph(char16_t c);

}  // namespace engine

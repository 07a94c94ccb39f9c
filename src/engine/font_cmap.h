#pragma once
// A PDF's text layer names each glyph by the lowest character the font maps to it
// (that is how Qt's PDF writer builds its ToUnicode map). IPAex maps the Kangxi
// radicals and the ideographs to the same glyphs, so a saved PDF would say "⽥" for
// "田" and could not be searched for a patient's name. trimCharacterMap rewrites the
// font's character map without such aliases, in memory, under a family name of its
// own; the glyphs stay as they are.

#include <QByteArray>
#include <QHash>
#include <QString>

namespace engine {

struct TrimmedFont {
    QByteArray data;  // the rewritten font file; empty where the font could not be read
    // A character left out of the map -> the character that now names its glyph. Text
    // is drawn through this so that it prints the same glyph as before.
    QHash<char16_t, char16_t> aliases;
};

// Characters no printed text names a glyph by while another character names the same
// glyph: radicals, combining and modifier marks, typographic spaces, the soft hyphen,
// and the wave dash (CP932 text carries the full-width tilde).
bool isAliasOnly(char32_t c);

// family: the family name the rewritten font is registered under, so that it never
// mixes with the untouched font installed on the system.
TrimmedFont trimCharacterMap(const QByteArray& font, const QString& family);

// The aliases trimCharacterMap leaves out of the file's map, read from its character
// map alone (a cached trimmed font needs them without the whole file being read).
QHash<char16_t, char16_t> characterAliases(const QString& fontPath);

// The character map of a font file, BMP and beyond (for tests and diagnostics).
QHash<char32_t, quint16> unicodeMap(const QByteArray& font);

}  // namespace engine

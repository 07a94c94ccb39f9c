#pragma once
// The engine's fonts: IPAex Gothic and Mincho from the installed fonts folder or else
// the system's, each loaded the first time it is used, with its character map trimmed
// (font_cmap.h) so that a PDF's text layer reads as the printed text; and the glyph
// advances the layout measures with.

#include "engine/form.h"

#include <QFont>
#include <QRawFont>
#include <QString>

#include <array>
#include <vector>

namespace engine {

class FontBook {
public:
    // Needs a QGuiApplication. Uses the IPAex files where they exist; otherwise the
    // families are asked for by name and the system may stand in.
    FontBook() = default;

    QString family(FontFace face) const { return load(face).family; }
    // A font of the given pixel size, in the painter's units.
    QFont font(FontFace face, bool bold, int sizeUnits) const;
    // The font file itself at rawPixels, for drawing glyphs without shaping; invalid
    // where the family was taken by name.
    const QRawFont& rawFont(FontFace face) const { return load(face).raw; }
    static constexpr int rawPixels = 1000;
    // Advance of one character in ems.
    double advance(FontFace face, bool bold, char16_t c) const;
    double width(FontFace face, bool bold, QStringView text) const;
    // Ascent as a part of the em, for placing the baseline inside the em square.
    double ascent(FontFace face) const { return load(face).ascent; }
    bool hasGlyph(FontFace face, char16_t c) const;
    // The files in use, for messages; empty where a family was taken by name.
    QString fontFile(FontFace face) const { return load(face).file; }
    // text with each character the trimmed map left out replaced by the one that now
    // names the same glyph (a Kangxi radical by its ideograph): it prints as before.
    QString printable(FontFace face, const QString& text) const;

private:
    struct Face {
        bool loaded = false;
        QString family;
        QString file;
        double ascent = 0.88;
        QRawFont raw;
        std::vector<char16_t> aliases;  // by UTF-16 unit, 0 where none
    };
    const Face& load(FontFace face) const;

    mutable std::array<Face, 2> faces_;
    mutable std::array<std::vector<float>, 4> advances_;  // face x bold, by UTF-16 unit
};

}  // namespace engine

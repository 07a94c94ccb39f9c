#pragma once
// The engine's fonts: IPAex Gothic and Mincho, loaded once per process from the
// installed fonts folder or else the system's, and the glyph advances the layout measures with.

#include "engine/form.h"

#include <QFont>
#include <QRawFont>
#include <QString>

#include <array>
#include <vector>

namespace engine {

class FontBook {
public:
    // Needs a QGuiApplication. Loads the IPAex files where they exist; otherwise the
    // families are asked for by name and the system may stand in.
    FontBook();

    QString family(FontFace face) const { return family_[int(face)]; }
    // A font of the given pixel size, in the painter's units.
    QFont font(FontFace face, bool bold, int sizeUnits) const;
    // The font file itself at rawPixels, for drawing glyphs without shaping; invalid
    // where the family was taken by name.
    const QRawFont& rawFont(FontFace face) const { return raw_[int(face)]; }
    static constexpr int rawPixels = 1000;
    // Advance of one character in ems.
    double advance(FontFace face, bool bold, char16_t c) const;
    double width(FontFace face, bool bold, QStringView text) const;
    // Ascent as a part of the em, for placing the baseline inside the em square.
    double ascent(FontFace face) const { return ascent_[int(face)]; }
    bool hasGlyph(FontFace face, char16_t c) const;
    // The files in use, for messages; empty where a family was taken by name.
    QString fontFile(FontFace face) const { return file_[int(face)]; }

private:
    std::array<QString, 2> family_;
    std::array<QString, 2> file_;
    std::array<double, 2> ascent_{0.88, 0.88};
    std::array<QRawFont, 2> raw_;
    mutable std::array<std::vector<float>, 4> advances_;  // face x bold, by UTF-16 unit
};

}  // namespace engine

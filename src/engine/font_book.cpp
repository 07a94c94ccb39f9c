#include "engine/font_book.h"

#include "base/install_dirs.h"
#include "base/log.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>

namespace engine {

namespace {

constexpr int kMeasurePixels = FontBook::rawPixels;

}  // namespace

FontBook::FontBook()
{
    const char* files[2] = {"ipaexg.ttf", "ipaexm.ttf"};
    const char* fallback[2] = {"IPAexGothic", "IPAexMincho"};
    for (int f = 0; f < 2; ++f) {
        family_[f] = QString::fromLatin1(fallback[f]);
        for (const QString& dir : base::fontFolders(QCoreApplication::applicationDirPath())) {
            const QString path = QDir(dir).filePath(QString::fromLatin1(files[f]));
            if (!QFile::exists(path)) continue;
            const int id = QFontDatabase::addApplicationFont(path);
            const QStringList families = QFontDatabase::applicationFontFamilies(id);
            if (id >= 0 && !families.isEmpty()) {
                family_[f] = families.first();
                file_[f] = path;
                raw_[f] = QRawFont(path, kMeasurePixels, QFont::PreferNoHinting);
                break;
            }
        }
        if (file_[f].isEmpty())
            qCWarning(base::lcEngine).noquote() << files[f] << "could not be loaded; the system stands in for" << fallback[f];
        QFontMetricsF m(font(FontFace(f), false, kMeasurePixels));
        const double em = m.ascent() + m.descent();
        if (em > 0) ascent_[f] = m.ascent() / em;
    }
}

QFont FontBook::font(FontFace face, bool bold, int sizeUnits) const
{
    QFont font(family_[int(face)]);
    font.setPixelSize(std::max(1, sizeUnits));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

double FontBook::advance(FontFace face, bool bold, char16_t c) const
{
    std::vector<float>& table = advances_[int(face) * 2 + (bold ? 1 : 0)];
    if (table.empty()) table.assign(0x10000, -1.0f);
    float& a = table[c];
    if (a < 0 && QChar::isSurrogate(c)) {
        // A character beyond the BMP (𠮷 in a name) is a pair; it is ideographic and
        // takes the whole square on its first half.
        a = QChar::isHighSurrogate(c) ? 1.0f : 0.0f;
    } else if (a < 0) {
        QFontMetricsF m(font(face, bold, kMeasurePixels));
        a = float(m.horizontalAdvance(QChar(c)) / kMeasurePixels);
    }
    return a;
}

double FontBook::width(FontFace face, bool bold, QStringView text) const
{
    double w = 0;
    for (QChar c : text) w += advance(face, bold, c.unicode());
    return w;
}

bool FontBook::hasGlyph(FontFace face, char16_t c) const
{
    const QRawFont& raw = raw_[int(face)];
    if (!raw.isValid()) return false;
    return raw.supportsCharacter(QChar(c));
}

}  // namespace engine

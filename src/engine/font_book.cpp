#include "engine/font_book.h"

#include "base/install_dirs.h"
#include "base/log.h"
#include "engine/font_cmap.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QSaveFile>
#include <QStandardPaths>

namespace engine {

namespace {

constexpr int kMeasurePixels = FontBook::rawPixels;

// A trimmed font is made once per installed font file and kept in the user's cache
// folder: making it takes longer than printing a sheet of labels. The file where it
// could be kept, else the font's bytes; neither where the font cannot be read.
struct Trimmed {
    QString file;
    QByteArray data;
};
Trimmed trimmedFont(const QString& path, const QString& family)
{
    const QFileInfo info(path);
    const QString cacheRoot = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString dir = cacheRoot.isEmpty() ? QString() : cacheRoot + QStringLiteral("/sealprint/fonts");
    // Named after the installed file's size and time; the number after "trimmed" goes up
    // whenever trimCharacterMap changes what it writes.
    const QString cached = QDir(dir).filePath(QStringLiteral("%1-%2-%3-trimmed1.ttf")
                                                  .arg(info.completeBaseName())
                                                  .arg(info.size())
                                                  .arg(info.lastModified().toSecsSinceEpoch()));
    if (!dir.isEmpty() && QFileInfo(cached).size() > 0) return {cached, {}};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray data = trimCharacterMap(file.readAll(), family).data;
    if (data.isEmpty()) return {};
    QSaveFile out(cached);
    if (!dir.isEmpty() && QDir().mkpath(dir) && out.open(QIODevice::WriteOnly) && out.write(data) == data.size() &&
        out.commit())
        return {cached, {}};
    return {{}, data};
}

}  // namespace

const FontBook::Face& FontBook::load(FontFace which) const
{
    Face& face = faces_[int(which)];
    if (face.loaded) return face;
    face.loaded = true;
    const bool gothic = which == FontFace::Gothic;
    face.family = QString::fromLatin1(gothic ? "IPAexGothic" : "IPAexMincho");
    for (const QString& dir : base::fontFolders(QCoreApplication::applicationDirPath())) {
        const QString path = QDir(dir).filePath(QString::fromLatin1(gothic ? "ipaexg.ttf" : "ipaexm.ttf"));
        if (!QFile::exists(path)) continue;
        const Trimmed trimmed =
            trimmedFont(path, QString::fromLatin1(gothic ? "Sealprint IPAex Gothic" : "Sealprint IPAex Mincho"));
        int id = -1;
        if (!trimmed.file.isEmpty())
            id = QFontDatabase::addApplicationFont(trimmed.file);
        else if (!trimmed.data.isEmpty())
            id = QFontDatabase::addApplicationFontFromData(trimmed.data);
        const bool isTrimmed = id >= 0;
        if (!isTrimmed) id = QFontDatabase::addApplicationFont(path);  // the font as it is, radicals and all
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        if (id < 0 || families.isEmpty()) continue;
        face.family = families.first();
        face.file = path;
        if (!trimmed.file.isEmpty())
            face.raw = QRawFont(trimmed.file, kMeasurePixels, QFont::PreferNoHinting);
        else if (isTrimmed)
            face.raw = QRawFont(trimmed.data, kMeasurePixels, QFont::PreferNoHinting);
        else
            face.raw = QRawFont(path, kMeasurePixels, QFont::PreferNoHinting);
        if (isTrimmed) {
            const QHash<char16_t, char16_t> aliases = characterAliases(path);
            face.aliases.assign(0x10000, 0);
            for (auto it = aliases.begin(); it != aliases.end(); ++it) face.aliases[it.key()] = it.value();
        }
        break;
    }
    if (face.file.isEmpty())
        qCWarning(base::lcEngine).noquote()
            << (gothic ? "ipaexg.ttf" : "ipaexm.ttf") << "could not be loaded; the system stands in for" << face.family;
    QFontMetricsF m(font(which, false, kMeasurePixels));
    const double em = m.ascent() + m.descent();
    if (em > 0) face.ascent = m.ascent() / em;
    return face;
}

QString FontBook::printable(FontFace face, const QString& text) const
{
    const std::vector<char16_t>& table = load(face).aliases;
    if (table.empty()) return text;
    QString out = text;
    for (QChar& c : out)
        if (const char16_t to = table[c.unicode()]) c = QChar(to);
    return out;
}

QFont FontBook::font(FontFace face, bool bold, int sizeUnits) const
{
    QFont font(load(face).family);
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
    const QRawFont& raw = load(face).raw;
    if (!raw.isValid()) return false;
    return raw.supportsCharacter(QChar(c));
}

}  // namespace engine

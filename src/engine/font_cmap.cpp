#include "engine/font_cmap.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

namespace engine {

namespace {

constexpr quint32 tag(const char (&t)[5])
{
    return quint32(quint8(t[0])) << 24 | quint32(quint8(t[1])) << 16 | quint32(quint8(t[2])) << 8 | quint8(t[3]);
}

struct BadFont : std::runtime_error {
    BadFont() : std::runtime_error("font file cannot be read") {}
};

// Big-endian reads that refuse to run past the data.
quint16 u16(const QByteArray& d, qint64 at)
{
    if (at < 0 || at + 2 > d.size()) throw BadFont();
    return qFromBigEndian<quint16>(d.constData() + at);
}
quint32 u32(const QByteArray& d, qint64 at)
{
    if (at < 0 || at + 4 > d.size()) throw BadFont();
    return qFromBigEndian<quint32>(d.constData() + at);
}

void put16(QByteArray& d, quint16 v)
{
    char b[2];
    qToBigEndian(v, b);
    d.append(b, 2);
}
void put32(QByteArray& d, quint32 v)
{
    char b[4];
    qToBigEndian(v, b);
    d.append(b, 4);
}

struct Table {
    quint32 tag;
    QByteArray data;
};

std::vector<Table> readTables(const QByteArray& font)
{
    const quint16 n = u16(font, 4);
    std::vector<Table> tables;
    for (int i = 0; i < n; ++i) {
        const qint64 rec = 12 + 16 * i;
        const quint32 off = u32(font, rec + 8);
        const quint32 len = u32(font, rec + 12);
        if (qint64(off) + len > font.size()) throw BadFont();
        // A view on the file's bytes: most tables are written out as they stand.
        tables.push_back({u32(font, rec), QByteArray::fromRawData(font.constData() + off, len)});
    }
    return tables;
}

const QByteArray* findTable(const std::vector<Table>& tables, quint32 t)
{
    for (const Table& table : tables)
        if (table.tag == t) return &table.data;
    return nullptr;
}

using CharMap = std::map<char32_t, quint16>;

void readFormat12(const QByteArray& cmap, qint64 at, CharMap& out)
{
    const quint32 groups = u32(cmap, at + 12);
    for (quint32 g = 0; g < groups; ++g) {
        const qint64 rec = at + 16 + 12 * qint64(g);
        const quint32 first = u32(cmap, rec);
        const quint32 last = u32(cmap, rec + 4);
        const quint32 glyph = u32(cmap, rec + 8);
        if (last < first || last > 0x10FFFF) throw BadFont();
        for (quint32 c = first; c <= last; ++c) out[c] = quint16(glyph + (c - first));
    }
}

void readFormat4(const QByteArray& cmap, qint64 at, CharMap& out)
{
    const int segs = u16(cmap, at + 6) / 2;
    const qint64 ends = at + 14;
    const qint64 starts = ends + 2 * segs + 2;
    const qint64 deltas = starts + 2 * segs;
    const qint64 ranges = deltas + 2 * segs;
    for (int s = 0; s < segs; ++s) {
        const quint16 first = u16(cmap, starts + 2 * s);
        const quint16 last = u16(cmap, ends + 2 * s);
        const quint16 delta = u16(cmap, deltas + 2 * s);
        const quint16 range = u16(cmap, ranges + 2 * s);
        for (quint32 c = first; c <= last && c < 0xFFFF; ++c) {
            quint16 g;
            if (range == 0) {
                g = quint16(c + delta);
            } else {
                g = u16(cmap, ranges + 2 * s + range + 2 * (c - first));
                if (g) g = quint16(g + delta);
            }
            if (g) out[c] = g;
        }
    }
}

// The Unicode mapping of a cmap table: the full-repertoire subtable where there is one,
// else the BMP one. Also hands back the variation-sequence subtable, kept as it is.
CharMap readCmap(const QByteArray& cmap, QByteArray* variations = nullptr)
{
    const quint16 n = u16(cmap, 2);
    qint64 full = -1, bmp = -1;
    for (int i = 0; i < n; ++i) {
        const quint16 platform = u16(cmap, 4 + 8 * i);
        const quint16 encoding = u16(cmap, 6 + 8 * i);
        const qint64 off = u32(cmap, 8 + 8 * i);
        const quint16 format = u16(cmap, off);
        const bool unicode = platform == 0 || (platform == 3 && (encoding == 1 || encoding == 10));
        if (!unicode) continue;
        if (format == 12)
            full = off;
        else if (format == 4 && bmp < 0)
            bmp = off;
        else if (format == 14 && variations)
            *variations = cmap.mid(off, u32(cmap, off + 2));
    }
    CharMap out;
    if (full >= 0)
        readFormat12(cmap, full, out);
    else if (bmp >= 0)
        readFormat4(cmap, bmp, out);
    else
        throw BadFont();
    return out;
}

// Format 4: one segment per run of consecutive characters, the glyphs by a delta where
// they run on too, else through the glyph array. Empty where it outgrows its 16-bit length.
QByteArray writeFormat4(const CharMap& map)
{
    struct Seg {
        quint16 first, last;
        quint16 delta = 0;
        bool direct = true;
    };
    std::vector<Seg> segs;
    for (auto it = map.begin(); it != map.end() && it->first < 0xFFFF; ++it) {
        const quint16 c = quint16(it->first);
        const quint16 delta = quint16(it->second - c);
        if (!segs.empty() && segs.back().last + 1 == c) {
            Seg& s = segs.back();
            s.last = c;
            if (s.delta != delta) s.direct = false;
        } else {
            segs.push_back({c, c, delta});
        }
    }
    segs.push_back({0xFFFF, 0xFFFF, 1});
    const int n = int(segs.size());
    QByteArray glyphs;
    std::vector<quint16> rangeOffsets(n, 0);
    for (int i = 0; i < n; ++i) {
        if (segs[i].direct) continue;
        rangeOffsets[i] = quint16(2 * (n - i) + glyphs.size());
        for (quint32 c = segs[i].first; c <= segs[i].last; ++c) put16(glyphs, map.at(c));
        segs[i].delta = 0;
    }
    const qint64 length = 16 + 8 * qint64(n) + glyphs.size();
    if (length > 0xFFFF) return {};
    int pow = 1, log = 0;
    while (pow * 2 <= n) pow *= 2, ++log;
    QByteArray t;
    put16(t, 4);
    put16(t, quint16(length));
    put16(t, 0);
    put16(t, quint16(2 * n));
    put16(t, quint16(2 * pow));
    put16(t, quint16(log));
    put16(t, quint16(2 * n - 2 * pow));
    for (const Seg& s : segs) put16(t, s.last);
    put16(t, 0);
    for (const Seg& s : segs) put16(t, s.first);
    for (const Seg& s : segs) put16(t, s.delta);
    for (quint16 r : rangeOffsets) put16(t, r);
    t += glyphs;
    return t;
}

QByteArray writeFormat12(const CharMap& map)
{
    QByteArray groups;
    quint32 count = 0, first = 0, last = 0, glyph = 0;
    auto flush = [&] {
        if (!count) return;
        put32(groups, first);
        put32(groups, last);
        put32(groups, glyph);
    };
    bool open = false;
    for (const auto& [c, g] : map) {
        if (open && c == last + 1 && g == glyph + (c - first)) {
            last = c;
            continue;
        }
        flush();
        first = last = c;
        glyph = g;
        open = true;
        ++count;
    }
    flush();
    QByteArray t;
    put16(t, 12);
    put16(t, 0);
    put32(t, quint32(16 + groups.size()));
    put32(t, 0);
    put32(t, count);
    return t + groups;
}

QByteArray writeCmap(const CharMap& map, const QByteArray& variations)
{
    const QByteArray f4 = writeFormat4(map);
    if (f4.isEmpty()) throw BadFont();
    const QByteArray f12 = writeFormat12(map);
    struct Rec {
        quint16 platform, encoding;
        const QByteArray* sub;
    };
    std::vector<Rec> recs = {{0, 3, &f4}};
    if (!variations.isEmpty()) recs.push_back({0, 5, &variations});
    recs.push_back({3, 1, &f4});
    recs.push_back({3, 10, &f12});
    QByteArray t;
    put16(t, 0);
    put16(t, quint16(recs.size()));
    const quint32 base = quint32(4 + 8 * recs.size());
    const quint32 at4 = base, at12 = at4 + quint32(f4.size()), at14 = at12 + quint32(f12.size());
    for (const Rec& r : recs) {
        put16(t, r.platform);
        put16(t, r.encoding);
        put32(t, r.sub == &f4 ? at4 : r.sub == &f12 ? at12 : at14);
    }
    t += f4;
    t += f12;
    t += variations;
    return t;
}

// A name table under the new family, keeping the original's copyright, version and
// licence texts (Windows, English).
QByteArray writeName(const QByteArray& original, const QString& family)
{
    std::map<quint16, QString> names;
    if (!original.isEmpty()) {
        const quint16 count = u16(original, 2);
        const qint64 strings = u16(original, 4);
        for (int i = 0; i < count; ++i) {
            const qint64 rec = 6 + 12 * i;
            const quint16 id = u16(original, rec + 6);
            if (u16(original, rec) != 3 || u16(original, rec + 2) != 1 || u16(original, rec + 4) != 0x409) continue;
            if (id != 0 && id != 5 && id != 13 && id != 14) continue;
            const qint64 len = u16(original, rec + 8);
            const qint64 off = strings + u16(original, rec + 10);
            if (off + len > original.size()) throw BadFont();
            QString s(len / 2, Qt::Uninitialized);
            for (qint64 k = 0; k < len / 2; ++k) s[k] = QChar(u16(original, off + 2 * k));
            names[id] = s;
        }
    }
    QString postscript = family;
    postscript.remove(u' ');
    names[1] = family;
    names[2] = QStringLiteral("Regular");
    names[3] = family;
    names[4] = family;
    names[6] = postscript;
    QByteArray records, strings;
    for (const auto& [id, text] : names) {
        put16(records, 3);
        put16(records, 1);
        put16(records, 0x409);
        put16(records, id);
        put16(records, quint16(text.size() * 2));
        put16(records, quint16(strings.size()));
        for (QChar c : text) put16(strings, c.unicode());
    }
    QByteArray t;
    put16(t, 0);
    put16(t, quint16(names.size()));
    put16(t, quint16(6 + records.size()));
    return t + records + strings;
}

quint32 checksum(const char* d, qint64 size)
{
    quint32 sum = 0;
    qint64 i = 0;
    for (; i + 4 <= size; i += 4) sum += qFromBigEndian<quint32>(d + i);
    quint32 word = 0;
    for (int k = 0; k < 4; ++k) word = word << 8 | (i + k < size ? quint8(d[i + k]) : 0);
    return size % 4 ? sum + word : sum;
}

QByteArray assemble(quint32 version, std::vector<Table> tables)
{
    std::sort(tables.begin(), tables.end(), [](const Table& a, const Table& b) { return a.tag < b.tag; });
    const int n = int(tables.size());
    int pow = 1, log = 0;
    while (pow * 2 <= n) pow *= 2, ++log;
    QByteArray font;
    qint64 total = 12 + 16 * n;
    for (const Table& t : tables) total += (t.data.size() + 3) / 4 * 4;
    font.reserve(total);
    put32(font, version);
    put16(font, quint16(n));
    put16(font, quint16(16 * pow));
    put16(font, quint16(log));
    put16(font, quint16(16 * n - 16 * pow));
    qint64 offset = 12 + 16 * n;
    qint64 headEntry = -1, headAt = -1;
    for (const Table& t : tables) {
        if (t.tag == tag("head")) {
            if (t.data.size() < 12) throw BadFont();
            headEntry = font.size();
            headAt = offset;
        }
        put32(font, t.tag);
        put32(font, checksum(t.data.constData(), t.data.size()));
        put32(font, quint32(offset));
        put32(font, quint32(t.data.size()));
        offset += (t.data.size() + 3) / 4 * 4;
    }
    for (const Table& t : tables) {
        font += t.data;
        while (font.size() % 4) font.append('\0');
    }
    if (headAt >= 0) {
        // head's own sum is taken with checkSumAdjustment at 0; the adjustment then
        // makes the whole file sum to the magic number.
        char* head = font.data() + headAt;
        qToBigEndian<quint32>(0, head + 8);
        qToBigEndian<quint32>(checksum(head, u32(font, headEntry + 12)), font.data() + headEntry + 4);
        qToBigEndian<quint32>(0xB1B0AFBA - checksum(font.constData(), font.size()), head + 8);
    }
    return font;
}

}  // namespace

bool isAliasOnly(char32_t c)
{
    return c == 0x00AD || (c >= 0x02B0 && c <= 0x036F) || (c >= 0x2000 && c <= 0x200A) ||
           (c >= 0x2E80 && c <= 0x2FDF) || c == 0x301C;
}

namespace {

// Takes out of map each alias whose glyph has a character of its own; returns them
// with that character (the lowest one).
QHash<char16_t, char16_t> dropAliases(CharMap& map)
{
    std::map<quint16, char32_t> owner;
    for (const auto& [c, g] : map)
        if (!isAliasOnly(c) && !owner.count(g)) owner[g] = c;
    QHash<char16_t, char16_t> aliases;
    for (auto it = map.begin(); it != map.end();) {
        const auto own = owner.find(it->second);
        if (!isAliasOnly(it->first) || own == owner.end()) {
            ++it;
            continue;
        }
        if (it->first <= 0xFFFF && own->second <= 0xFFFF) aliases.insert(char16_t(it->first), char16_t(own->second));
        it = map.erase(it);
    }
    return aliases;
}

}  // namespace

QHash<char32_t, quint16> unicodeMap(const QByteArray& font)
{
    QHash<char32_t, quint16> out;
    try {
        const std::vector<Table> tables = readTables(font);
        const QByteArray* cmap = findTable(tables, tag("cmap"));
        if (!cmap) return out;
        for (const auto& [c, g] : readCmap(*cmap)) out.insert(c, g);
    } catch (const BadFont&) {
        out.clear();
    }
    return out;
}

TrimmedFont trimCharacterMap(const QByteArray& font, const QString& family)
{
    TrimmedFont out;
    try {
        std::vector<Table> tables = readTables(font);
        const QByteArray* cmap = findTable(tables, tag("cmap"));
        if (!cmap) return out;
        QByteArray variations;
        CharMap map = readCmap(*cmap, &variations);
        out.aliases = dropAliases(map);
        const QByteArray* name = findTable(tables, tag("name"));
        const QByteArray newName = writeName(name ? *name : QByteArray(), family);
        const QByteArray newCmap = writeCmap(map, variations);
        std::vector<Table> kept;
        for (Table& t : tables) {
            if (t.tag == tag("DSIG")) continue;  // a signature of the old bytes
            if (t.tag == tag("cmap"))
                t.data = newCmap;
            else if (t.tag == tag("name"))
                t.data = newName;
            kept.push_back(std::move(t));
        }
        if (!name) kept.push_back({tag("name"), newName});
        out.data = assemble(u32(font, 0), std::move(kept));
    } catch (const BadFont&) {
        out = TrimmedFont();
    }
    return out;
}

QHash<char16_t, char16_t> characterAliases(const QString& fontPath)
{
    QFile file(fontPath);
    if (!file.open(QIODevice::ReadOnly)) return {};
    try {
        const QByteArray head = file.read(12);
        const QByteArray records = head + file.read(16 * qint64(u16(head, 4)));
        for (int i = 0; i < u16(head, 4); ++i) {
            const qint64 rec = 12 + 16 * i;
            if (u32(records, rec) != tag("cmap")) continue;
            if (!file.seek(u32(records, rec + 8))) return {};
            CharMap map = readCmap(file.read(u32(records, rec + 12)));
            return dropAliases(map);
        }
    } catch (const BadFont&) {
    }
    return {};
}

}  // namespace engine

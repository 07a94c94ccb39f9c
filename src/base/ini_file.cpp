#include "base/ini_file.h"

#include "base/files.h"
#include "base/text_codec.h"
#include "base/text_file.h"

#include <QFileInfo>

#include <optional>
#include <vector>

namespace base {

namespace {

// The file is taken apart as bytes, so that lines the program does not touch are
// written back exactly, whatever their encoding or oddities. '=', '[', blanks and
// line ends never occur inside a CP932 double-byte character; ']' and ';' can, so
// they are looked for on character boundaries only.

bool isBlank(char c) { return c == ' ' || c == '\t'; }

struct Range {
    qsizetype begin = 0;
    qsizetype end = 0;
    bool empty() const { return end <= begin; }
};

Range trimmed(const QByteArray& b, Range r)
{
    while (r.begin < r.end && isBlank(b[r.begin])) ++r.begin;
    while (r.end > r.begin && isBlank(b[r.end - 1])) --r.end;
    return r;
}

enum class LineKind { Blank, Section, Key, Other };

struct Line {
    qsizetype start = 0;       // first byte of the line
    qsizetype contentEnd = 0;  // end of the line without its CR LF
    qsizetype next = 0;        // first byte of the next line
    LineKind kind = LineKind::Blank;
    Range name;   // section name, or key name
    Range value;  // a key's value
};

// Offset of the last ']' that starts a character, or -1.
qsizetype lastCloseBracket(const QByteArray& b, Range r)
{
    qsizetype found = -1;
    qsizetype i = r.begin;
    while (i < r.end) {
        if (b[i] == ']') found = i;
        i += qMax(1, cp932CharBytes(static_cast<unsigned char>(b[i])));
    }
    return found;
}

Line classify(const QByteArray& b, qsizetype start, qsizetype contentEnd, qsizetype next)
{
    Line line;
    line.start = start;
    line.contentEnd = contentEnd;
    line.next = next;
    const Range all = trimmed(b, {start, contentEnd});
    if (all.empty()) return line;
    const char first = b[all.begin];
    if (first == '[') {
        const qsizetype close = lastCloseBracket(b, {all.begin + 1, all.end});
        if (close < 0) {
            line.kind = LineKind::Other;
            return line;
        }
        line.kind = LineKind::Section;
        line.name = trimmed(b, {all.begin + 1, close});
        return line;
    }
    if (first == ';') {
        line.kind = LineKind::Other;
        return line;
    }
    line.kind = LineKind::Key;
    const qsizetype eq = b.indexOf('=', all.begin);
    if (eq < 0 || eq >= all.end) {
        line.name = all;
        line.value = {all.end, all.end};
    } else {
        line.name = trimmed(b, {all.begin, eq});
        line.value = trimmed(b, {eq + 1, all.end});
    }
    return line;
}

std::vector<Line> parse(const QByteArray& b)
{
    std::vector<Line> lines;
    qsizetype start = 0;
    while (start < b.size()) {
        qsizetype lf = b.indexOf('\n', start);
        const qsizetype next = lf < 0 ? b.size() : lf + 1;
        qsizetype end = lf < 0 ? b.size() : lf;
        if (end > start && b[end - 1] == '\r') --end;
        lines.push_back(classify(b, start, end, next));
        start = next;
    }
    return lines;
}

// Blanks around a name the caller gives are ignored, as the system ignores them.
QString trimmedName(const QString& name)
{
    qsizetype a = 0, z = name.size();
    while (a < z && (name[a] == u' ' || name[a] == u'\t')) ++a;
    while (z > a && (name[z - 1] == u' ' || name[z - 1] == u'\t')) --z;
    return name.mid(a, z - a);
}

// Names compare with ASCII letters folded, everything else exactly.
bool sameName(const QString& a, const QString& b)
{
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        char16_t x = a[i].unicode(), y = b[i].unicode();
        if (x >= u'a' && x <= u'z') x -= 0x20;
        if (y >= u'a' && y <= u'z') y -= 0x20;
        if (x != y) return false;
    }
    return true;
}

QString decode(const QByteArray& b, Range r) { return fromCp932(QByteArrayView(b).sliced(r.begin, r.end - r.begin)); }

// Where a section and a key stand in a parsed file.
struct Place {
    std::optional<size_t> header;   // the first header with the section's name
    size_t lastContent = 0;         // last non-blank line of that section
    std::optional<size_t> keyLine;  // the first line of the key in that section
};

Place locate(const QByteArray& b, const std::vector<Line>& lines, const QString& section, const QString& key)
{
    Place p;
    const QString wantSection = trimmedName(section);
    const QString wantKey = trimmedName(key);
    for (size_t i = 0; i < lines.size(); ++i) {
        const Line& l = lines[i];
        if (!p.header) {
            if (l.kind == LineKind::Section && sameName(decode(b, l.name), wantSection)) {
                p.header = i;
                p.lastContent = i;
            }
            continue;
        }
        if (l.kind == LineKind::Section) break;
        if (l.kind != LineKind::Blank) p.lastContent = i;
        if (!p.keyLine && l.kind == LineKind::Key && sameName(decode(b, l.name), wantKey)) p.keyLine = i;
    }
    return p;
}

// The value's bytes as the system hands them over: one pair of matching quotes
// around it is dropped.
QByteArray valueBytes(const QByteArray& b, Range r)
{
    QByteArray v = b.mid(r.begin, r.end - r.begin);
    if (v.size() > 1 && (v[0] == '"' || v[0] == '\'') && v.back() == v[0]) v = v.mid(1, v.size() - 2);
    return v;
}

// The value of a key, or nothing when the file, the section or the key is missing.
std::optional<QByteArray> lookup(const QString& fileName, const QString& section, const QString& key)
{
    if (fileName.isEmpty()) return std::nullopt;
    const BytesRead raw = readFileBytes(fileName);
    if (!raw.ok) return std::nullopt;
    const std::vector<Line> lines = parse(raw.bytes);
    const Place p = locate(raw.bytes, lines, section, key);
    if (!p.keyLine) return std::nullopt;
    return valueBytes(raw.bytes, lines[*p.keyLine].value);
}

}  // namespace

QString csCutNull(const QString& text)
{
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? text : text.left(nul);
}

short clsOplIniFile::iInit(const QString& fileName)
{
    if (fileName.isEmpty()) {
        sErrMsg = QStringLiteral("Iniファイル名を指定してください。");
        return -1;
    }
    sFileName = fileName;
    if (!bFileExists(fileName)) {
        sErrMsg = QStringLiteral("指定されたIni（") + fileName + QStringLiteral("）ファイルが見つかりません。");
        return -1;
    }
    return 0;
}

qint32 clsOplIniFile::nGetProfileLong(const QString& section, const QString& key) const
{
    const std::optional<QByteArray> v = lookup(sFileName, section, key);
    if (!v) return 0;
    qsizetype i = 0;
    while (i < v->size() && isBlank((*v)[i])) ++i;
    bool negative = false;
    if (i < v->size() && ((*v)[i] == '-' || (*v)[i] == '+')) negative = (*v)[i++] == '-';
    // Digits accumulate with the 32-bit wrap of the system's conversion.
    quint32 n = 0;
    for (; i < v->size() && (*v)[i] >= '0' && (*v)[i] <= '9'; ++i) n = n * 10u + quint32((*v)[i] - '0');
    if (negative) n = 0u - n;
    return static_cast<qint32>(n);
}

QString clsOplIniFile::csGetProfileString(const QString& section, const QString& key) const
{
    QByteArray bytes = lookup(sFileName, section, key).value_or(QByteArray());
    bytes.truncate(cp932PrefixLength(bytes, kBufferChars - 1));
    QString buffer = fromCp932(bytes);
    buffer.append(QString(kBufferChars - bytes.size(), QChar(0)));
    // The buffer is right-trimmed of blanks only; the NULs at its end stay.
    qsizetype end = buffer.size();
    while (end > 0 && buffer[end - 1] == u' ') --end;
    buffer.truncate(end);
    return buffer;
}

short clsOplIniFile::iWriteProfileString(const QString& section, const QString& key, const QString& value)
{
    if (sFileName.isEmpty() || trimmedName(section).isEmpty() || trimmedName(key).isEmpty()) return 0;

    QByteArray bytes;
    if (QFileInfo::exists(nativePath(sFileName))) {
        BytesRead raw = readFileBytes(sFileName);
        if (!raw.ok) return 0;  // never replace what could not be read
        bytes = std::move(raw.bytes);
    }

    const QByteArray keyBytes = toCp932(trimmedName(key));
    const QByteArray newValue = toCp932(value);
    const std::vector<Line> lines = parse(bytes);
    const Place p = locate(bytes, lines, section, key);

    if (p.keyLine) {
        const Line& l = lines[*p.keyLine];
        // The key keeps its spelling and indentation in the file; only its value changes.
        const QByteArray line = bytes.mid(l.start, l.name.end - l.start) + '=' + newValue;
        bytes.replace(l.start, l.contentEnd - l.start, line);
    } else if (p.header) {
        const Line& last = lines[p.lastContent];
        QByteArray insert;
        if (bytes[last.next - 1] != '\n') insert += "\r\n";  // the file ended without a line end
        insert += keyBytes + '=' + newValue + "\r\n";
        bytes.insert(last.next, insert);
    } else {
        if (!bytes.isEmpty() && !bytes.endsWith('\n')) bytes += "\r\n";
        bytes += '[' + toCp932(trimmedName(section)) + "]\r\n" + keyBytes + '=' + newValue + "\r\n";
    }

    return writeFileBytes(sFileName, bytes).ok ? 1 : 0;
}

}  // namespace base

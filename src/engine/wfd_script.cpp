#include "engine/wfd_script.h"

#include "base/text_codec.h"
#include "engine/engine_error.h"
#include "engine/limits.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace engine {

namespace {

// What follows the closing quote of the file name on a SetDataText line. The joined
// print writes a separator, a quote character and a title flag in one fixed text.
struct Trailer {
    QStringView text;
    bool hasTitle;
};
constexpr Trailer kTrailers[] = {
    {u",\",\", \"\"\"\", True", true},
    {u",\",\", \"\"\"\", False", false},
    {u",,,1", false},
    {u"", true},
};

[[noreturn]] void fail(const QString& file, int line, const QString& msg) { throw EngineError(file, line, msg); }

// The text between the first and the last double quote of an argument list that holds
// one quoted value. Quotes inside the value are not escaped, so the last one closes.
QString singleQuoted(const QString& args, const QString& file, int line, const QString& kind)
{
    const QString a = args.trimmed();
    if (a.size() < 2 || !a.startsWith(u'"') || !a.endsWith(u'"'))
        fail(file, line, QStringLiteral("%1 の値は \"...\" で囲んでください: %2").arg(kind, args));
    return a.mid(1, a.size() - 2);
}

// Two quoted values: "a","b". The first ends at the first "," pair.
std::pair<QString, QString> twoQuoted(const QString& args, const QString& file, int line, const QString& kind)
{
    const QString a = args.trimmed();
    const qsizetype mid = a.indexOf(QStringLiteral("\",\""));
    if (!a.startsWith(u'"') || mid < 0 || !a.endsWith(u'"') || a.size() < mid + 4)
        fail(file, line, QStringLiteral("%1 には \"...\",\"...\" の二つの値が要ります: %2").arg(kind, args));
    return {a.mid(1, mid - 1), a.mid(mid + 3, a.size() - mid - 4)};
}

DataBinding dataBinding(const QString& args, const QString& file, int line)
{
    const QString a = args.trimmed();
    const qsizetype mid = a.indexOf(QStringLiteral("\",\""));
    if (!a.startsWith(u'"') || mid < 0)
        fail(file, line, QStringLiteral("SetDataText には \"データ名\",\"ファイル\" が要ります: %1").arg(args));
    const QString name = a.mid(1, mid - 1);
    const QString rest = a.mid(mid + 3);  // file, closing quote, trailer
    for (const Trailer& t : kTrailers) {
        const QString tail = QStringLiteral("\"") + t.text.toString();
        if (rest.size() >= tail.size() && rest.endsWith(tail)) {
            DataBinding b;
            b.name = name;
            b.file = rest.left(rest.size() - tail.size());
            b.hasTitle = t.hasTitle;
            b.line = line;
            if (b.file.isEmpty()) fail(file, line, QStringLiteral("SetDataText のファイル名が空です。"));
            return b;
        }
    }
    fail(file, line, QStringLiteral("SetDataText の末尾が読めません: %1").arg(args));
}

int number(const QString& args, const QString& file, int line, const QString& kind)
{
    bool ok = false;
    const int v = args.trimmed().toInt(&ok);
    if (!ok) fail(file, line, QStringLiteral("%1 の値は整数で書いてください: %2").arg(kind, args.trimmed()));
    return v;
}

// A number the engine computes with: held within its limits before any use.
int number(const QString& args, const QString& file, int line, const QString& kind, int low, int high)
{
    const int v = number(args, file, line, kind);
    if (v < low || v > high)
        fail(file, line,
             QStringLiteral("%1 の値は %2 から %3 までの整数で書いてください: %4").arg(kind).arg(low).arg(high).arg(v));
    return v;
}

void addBinding(QList<DataBinding>& list, DataBinding b)
{
    // A doubled line (paper -1 repeats the last line written) binds nothing new.
    for (const DataBinding& d : list)
        if (d.name == b.name && d.file == b.file && d.hasTitle == b.hasTitle) return;
    list.append(std::move(b));
}

// True for text that is well-formed UTF-8 and not plain ASCII. Japanese CP932 text is
// practically never well-formed UTF-8: its lead bytes 0x81-0x9F are UTF-8 trail bytes.
bool isUtf8WithNonAscii(const QByteArray& bytes)
{
    bool nonAscii = false;
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n;) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        int len = 0;
        if (b < 0x80)
            len = 1;
        else if (b >= 0xC2 && b <= 0xDF)
            len = 2;
        else if (b >= 0xE0 && b <= 0xEF)
            len = 3;
        else if (b >= 0xF0 && b <= 0xF4)
            len = 4;
        else
            return false;
        if (len > 1) {
            nonAscii = true;
            if (i + len > n) return false;
            for (int k = 1; k < len; ++k)
                if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80) return false;
        }
        i += len;
    }
    return nonAscii;
}

}  // namespace

WfdScript parseWfdScript(const QString& text, const QString& fileName)
{
    WfdScript s;
    s.path = fileName;
    const QStringList lines = base::splitLines(text);
    JoinedReport pending;  // data lines of the joined report being built
    bool pendingData = false;
    for (int i = 0; i < lines.size(); ++i) {
        const int ln = i + 1;
        const QString line = lines[i];
        if (line.trimmed().isEmpty()) continue;
        const qsizetype comma = line.indexOf(u',');
        const QString kind = (comma < 0 ? line : line.left(comma)).trimmed();
        const QString args = comma < 0 ? QString() : line.mid(comma + 1);
        auto is = [&](const char16_t* k) { return kind.compare(QStringView(k), Qt::CaseInsensitive) == 0; };

        if (is(u"FileName")) {
            s.formFile = singleQuoted(args, fileName, ln, kind);
            s.formLine = ln;
        } else if (is(u"Title")) {
            s.title = singleQuoted(args, fileName, ln, kind);
        } else if (is(u"setTitle")) {
            s.title = singleQuoted(args, fileName, ln, kind);
            s.joined = true;
        } else if (is(u"SetDataText")) {
            DataBinding b = dataBinding(args, fileName, ln);
            if (s.joined) {
                addBinding(pending.data, b);
                pendingData = true;
            } else {
                addBinding(s.data, std::move(b));
            }
        } else if (is(u"setreport")) {
            if (!s.joined) fail(fileName, ln, QStringLiteral("setreport の前に setTitle が要ります。"));
            pending.form = singleQuoted(args, fileName, ln, kind);
            pending.line = ln;
            s.reports.append(pending);
            pending = JoinedReport();
            pendingData = false;
        } else if (is(u"AddReport")) {
            if (!s.joined) fail(fileName, ln, QStringLiteral("AddReport の前に setTitle が要ります。"));
        } else if (is(u"PrintOffsetX")) {
            s.offsetX = number(args, fileName, ln, kind, -limits::kOffsetTenths, limits::kOffsetTenths);
        } else if (is(u"PrintOffsetY")) {
            s.offsetY = number(args, fileName, ln, kind, -limits::kOffsetTenths, limits::kOffsetTenths);
        } else if (is(u"PrintZoom")) {
            s.zoom = number(args, fileName, ln, kind, -limits::kZoomPercent, limits::kZoomPercent);
        } else if (is(u"SectionRepeatStart")) {
            // The form says how many cells a sheet has; no sheet has more than this.
            s.repeatStart = number(args, fileName, ln, kind, 0, limits::kSlotsPerPage);
            s.repeatStartLine = ln;
        } else if (is(u"PrintPaper")) {
            const QString p = args.trimmed().toUpper();
            if (p == u"A4")
                s.paper = Paper::A4;
            else if (p == u"A5")
                s.paper = Paper::A5;
            else if (p == u"B5")
                s.paper = Paper::B5;
            else
                fail(fileName, ln, QStringLiteral("知らない用紙です: %1").arg(args.trimmed()));
        } else if (is(u"SetItemValue")) {
            auto [path, value] = twoQuoted(args, fileName, ln, kind);
            s.items.append({path, value, ln});
        } else if (is(u"ShowWindow")) {
            number(args, fileName, ln, kind);
            s.mode = OutputMode::Preview;
        } else if (is(u"PrintOut")) {
            s.mode = OutputMode::PrintOut;
        } else if (is(u"PrintOutFromDialog")) {
            s.mode = OutputMode::PrintDialog;
        } else {
            fail(fileName, ln, QStringLiteral("知らない命令です: %1").arg(kind));
        }
    }
    if (pendingData) fail(fileName, lines.size(), QStringLiteral("SetDataText の後に setreport がありません。"));
    if (!s.joined && s.formFile.isEmpty()) fail(fileName, 0, QStringLiteral("FileName の行がありません。"));
    return s;
}

QString readCp932File(const QString& path, const QString& what)
{
    QFile f(base::nativePath(path));
    if (!f.exists()) throw EngineError(path, 0, QStringLiteral("%1が見つかりません。").arg(what));
    if (!f.open(QIODevice::ReadOnly))
        throw EngineError(path, 0, QStringLiteral("%1を開けません: %2").arg(what, f.errorString()));
    const QByteArray bytes = f.readAll();

    // Text saved as UTF-8 by an editor would pass as nonsense CP932; say so plainly.
    if (isUtf8WithNonAscii(bytes))
        throw EngineError(
            path, 0, QStringLiteral("%1が UTF-8 で書かれています。CP932 (Shift_JIS) で保存してください。").arg(what));

    bool bad = false;
    QString text = base::fromCp932(bytes, &bad);
    if (bad) {
        // Each bad byte reads as U+FFFD, which no CP932 character decodes to, and CP932
        // trail bytes are never LF: the line of the first mark is the bad line.
        const qsizetype mark = text.indexOf(QChar(0xFFFD));
        const int line = mark < 0 ? 0 : 1 + int(QStringView(text).first(mark).count(u'\n'));
        throw EngineError(path, line, QStringLiteral("CP932 (Shift_JIS) として読めない文字があります。"));
    }
    return text;
}

WfdScript readWfdScript(const QString& path)
{
    const QString text = readCp932File(path, QStringLiteral("スクリプトファイル"));
    WfdScript s = parseWfdScript(text, path);
    s.path = path;
    return s;
}

}  // namespace engine

#include "base/text_codec.h"

#include <QDir>
#include <QStringDecoder>
#include <QStringEncoder>

namespace base {

int cp932CharBytes(unsigned char b)
{
    if (b < 0x80) return 1;
    if (b >= 0xA1 && b <= 0xDF) return 1;  // half-width katakana
    if ((b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC)) return 2;
    return 0;
}

qsizetype cp932PrefixLength(QByteArrayView bytes, qsizetype maxBytes)
{
    qsizetype i = 0;
    while (i < bytes.size()) {
        // A byte that cannot lead stands alone, as the decoder shows it alone.
        const int len = qMax(1, cp932CharBytes(static_cast<unsigned char>(bytes[i])));
        const qsizetype next = qMin(i + len, bytes.size());
        if (next > maxBytes) break;
        i = next;
    }
    return i;
}

namespace {

bool isTrailByte(unsigned char b) { return b >= 0x40 && b <= 0xFC && b != 0x7F; }

// Bytes of the well-formed character at i: 1 or 2, or 0 where no character can start
// (a byte that cannot lead, or a lead byte without its trail byte).
int wellFormedAt(QByteArrayView bytes, qsizetype i)
{
    const int len = cp932CharBytes(static_cast<unsigned char>(bytes[i]));
    if (len == 2 && (i + 1 >= bytes.size() || !isTrailByte(static_cast<unsigned char>(bytes[i + 1])))) return 0;
    return len;
}

}  // namespace

QString fromCp932(QByteArrayView bytes, bool* hadInvalid)
{
    QStringDecoder decoder("CP932", QStringConverter::Flag::Stateless);
    QString out = decoder.decode(bytes);
    const bool bad = decoder.hasError();
    if (hadInvalid) *hadInvalid = bad;
    if (!bad) return out;

    // The converter drops what it cannot read; here each bad byte leaves a visible mark
    // in its place instead. A run of well-formed characters goes through a decoder
    // whole, and only a run that still fails (a pair CP932 leaves unassigned) is taken
    // a character at a time, so a bad byte at the end of a long file costs one more
    // pass, not a decoder per character. (A decoder is made per run: one that has
    // failed keeps saying so after resetState().)
    out.clear();
    out.reserve(bytes.size());
    auto decodeRun = [&out](QByteArrayView run) {
        QStringDecoder whole("CP932", QStringConverter::Flag::Stateless);
        const QString text = whole.decode(run);
        if (!whole.hasError()) {
            out += text;
            return;
        }
        for (qsizetype i = 0; i < run.size();) {
            const int len = wellFormedAt(run, i);
            QStringDecoder one("CP932", QStringConverter::Flag::Stateless);
            const QString ch = one.decode(run.sliced(i, len));
            if (len > 0 && !one.hasError() && !ch.isEmpty()) {
                out += ch;
                i += len;
            } else {
                out += QChar(0xFFFD);
                ++i;  // the trail byte may begin a character of its own
            }
        }
    };
    qsizetype runStart = 0;
    qsizetype i = 0;
    while (i < bytes.size()) {
        const int len = wellFormedAt(bytes, i);
        if (len > 0) {
            i += len;
            continue;
        }
        if (i > runStart) decodeRun(bytes.sliced(runStart, i - runStart));
        out += QChar(0xFFFD);
        runStart = ++i;
    }
    if (i > runStart) decodeRun(bytes.sliced(runStart, i - runStart));
    return out;
}

QByteArray toCp932(QStringView text, bool* lossy)
{
    QStringEncoder encoder("CP932", QStringConverter::Flag::Stateless);
    QByteArray out = encoder.encode(text);
    const bool bad = encoder.hasError();
    if (lossy) *lossy = bad;
    if (!bad) return out;

    out.clear();
    for (qsizetype i = 0; i < text.size(); ++i) {
        qsizetype n = (text[i].isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
        QStringEncoder one("CP932", QStringConverter::Flag::Stateless);
        QByteArray b = one.encode(text.sliced(i, n));
        out += (one.hasError() || b.isEmpty()) ? QByteArray("?") : b;
        i += n - 1;
    }
    return out;
}

QStringList splitLines(const QString& text)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c == u'\r' || c == u'\n') {
            lines.append(text.mid(start, i - start));
            if (c == u'\r' && i + 1 < n && text[i + 1] == u'\n') ++i;
            start = i + 1;
        }
    }
    if (start < n) lines.append(text.mid(start));
    return lines;
}

QString nativePath(const QString& path)
{
    QString p = path;
    p.replace(u'\\', u'/');
    return QDir::toNativeSeparators(p);
}

}  // namespace base

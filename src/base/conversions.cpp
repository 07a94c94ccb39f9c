#include "base/conversions.h"

#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QDate>
#include <QDateTime>
#include <QStringEncoder>

#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace base {

namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

int hexValue(QChar c)
{
    if (isDigit(c)) return c.unicode() - u'0';
    if (c >= u'a' && c <= u'f') return c.unicode() - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c.unicode() - u'A' + 10;
    return -1;
}

// Reads "&H.." or "&O.." at pos (which stands on "&"); returns nullopt when no digit
// follows the prefix. pos moves past what was read. Such numbers are Integer while
// they fit into 16 bits (four hex digits) and Long up to 32 bits, so "&HFFFF" is -1
// and "&H10000" is 65536; beyond that they overflow.
std::optional<double> scanRadix(QStringView t, qsizetype& pos)
{
    if (pos + 1 >= t.size()) return std::nullopt;
    const QChar kind = t[pos + 1].toUpper();
    const int radix = kind == u'H' ? 16 : kind == u'O' ? 8 : 0;
    if (!radix) return std::nullopt;
    qsizetype i = pos + 2;
    quint64 raw = 0;
    int digits = 0;
    for (; i < t.size(); ++i, ++digits) {
        const int d = hexValue(t[i]);
        if (d < 0 || d >= radix) break;
        raw = raw * radix + d;
        if (raw > 0xFFFFFFFFull) throw VbError::overflow();
    }
    if (!digits) return std::nullopt;
    pos = i;
    const bool integer = radix == 16 ? digits <= 4 : raw <= 0xFFFFu;
    if (integer) return static_cast<qint16>(static_cast<quint16>(raw));
    return static_cast<qint32>(static_cast<quint32>(raw));
}

double toDouble(const QByteArray& ascii)
{
    bool ok = false;
    const double d = ascii.toDouble(&ok);
    if (!ok || !std::isfinite(d)) throw VbError::overflow();
    return d;
}

// The number of a whole text as IsNumeric and the conversions accept it.
std::optional<double> parseWhole(QStringView t)
{
    qsizetype a = 0, z = t.size();
    while (a < z && (t[a] == u' ' || t[a] == u'\t')) ++a;
    while (z > a && (t[z - 1] == u' ' || t[z - 1] == u'\t')) --z;
    t = t.sliced(a, z - a);
    if (t.isEmpty()) return std::nullopt;

    if (t[0] == u'&') {
        qsizetype pos = 0;
        std::optional<double> v = scanRadix(t, pos);
        if (!v || pos != t.size()) return std::nullopt;
        return v;
    }

    QByteArray ascii;
    qsizetype i = 0;
    if (t[i] == u'+' || t[i] == u'-') ascii += char(t[i++].unicode());
    int digits = 0;
    for (; i < t.size(); ++i) {
        if (isDigit(t[i])) {
            ascii += char(t[i].unicode());
            ++digits;
        } else if (t[i] == u',' && digits > 0) {
            continue;  // grouping
        } else {
            break;
        }
    }
    if (i < t.size() && t[i] == u'.') {
        ascii += '.';
        for (++i; i < t.size() && isDigit(t[i]); ++i) {
            ascii += char(t[i].unicode());
            ++digits;
        }
    }
    if (!digits) return std::nullopt;
    if (i < t.size() && (t[i].toUpper() == u'E' || t[i].toUpper() == u'D')) {
        ascii += 'e';
        ++i;
        if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) ascii += char(t[i++].unicode());
        const qsizetype first = i;
        for (; i < t.size() && isDigit(t[i]); ++i) ascii += char(t[i].unicode());
        if (i == first) return std::nullopt;
    }
    if (i != t.size()) return std::nullopt;
    return toDouble(ascii);
}

double roundHalfEven(double v)
{
    // nearbyint follows the current rounding mode, which is to-nearest-even unless
    // someone changed it; do it by hand so the rule never depends on that.
    const double fl = std::floor(v);
    const double diff = v - fl;
    if (diff < 0.5) return fl;
    if (diff > 0.5) return fl + 1.0;
    return std::fmod(fl, 2.0) == 0.0 ? fl : fl + 1.0;
}

}  // namespace

double Val(QStringView text)
{
    QString t;
    t.reserve(text.size());
    for (QChar c : text)
        if (c != u' ' && c != u'\t' && c != u'\n') t += c;

    if (!t.isEmpty() && t[0] == u'&') {
        qsizetype pos = 0;
        return scanRadix(t, pos).value_or(0.0);
    }

    QByteArray ascii;
    qsizetype i = 0;
    if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) ascii += char(t[i++].unicode());
    int digits = 0;
    for (; i < t.size() && isDigit(t[i]); ++i, ++digits) ascii += char(t[i].unicode());
    if (i < t.size() && t[i] == u'.') {
        ascii += '.';
        for (++i; i < t.size() && isDigit(t[i]); ++i, ++digits) ascii += char(t[i].unicode());
    }
    if (!digits) return 0.0;
    if (i < t.size() && (t[i].toUpper() == u'E' || t[i].toUpper() == u'D')) {
        qsizetype j = i + 1;
        QByteArray exp = "e";
        if (j < t.size() && (t[j] == u'+' || t[j] == u'-')) exp += char(t[j++].unicode());
        const qsizetype first = j;
        for (; j < t.size() && isDigit(t[j]); ++j) exp += char(t[j].unicode());
        if (j > first) ascii += exp;  // an "E" without digits is not part of the number
    }
    return toDouble(ascii);
}

bool IsNumeric(QStringView text)
{
    try {
        return parseWhole(text).has_value();
    } catch (const VbError&) {
        return true;  // a number too large to hold is still a number
    }
}

double CDbl(QStringView text)
{
    const std::optional<double> v = parseWhole(text);
    if (!v) throw VbError::typeMismatch();
    return *v;
}

short CInt(double value)
{
    if (std::isnan(value)) throw VbError::overflow();
    const double r = roundHalfEven(value);
    if (r < std::numeric_limits<qint16>::min() || r > std::numeric_limits<qint16>::max()) throw VbError::overflow();
    return static_cast<short>(r);
}

short CInt(QStringView text) { return CInt(CDbl(text)); }

qint32 CLng(double value)
{
    if (std::isnan(value)) throw VbError::overflow();
    const double r = roundHalfEven(value);
    if (r < std::numeric_limits<qint32>::min() || r > std::numeric_limits<qint32>::max()) throw VbError::overflow();
    return static_cast<qint32>(r);
}

qint32 CLng(QStringView text) { return CLng(CDbl(text)); }

double Fix(double value) { return std::trunc(value); }

double Int(double value) { return std::floor(value); }

QString CStr(double value)
{
    if (value == 0.0) return QStringLiteral("0");
    QString s = QString::number(value, 'g', 15);
    s.replace(u'e', u'E');
    return s;
}

QString Trim(QStringView text) { return LTrim(RTrim(text)); }

QString LTrim(QStringView text)
{
    qsizetype a = 0;
    while (a < text.size() && text[a] == u' ') ++a;
    return text.sliced(a).toString();
}

QString RTrim(QStringView text)
{
    qsizetype z = text.size();
    while (z > 0 && text[z - 1] == u' ') --z;
    return text.first(z).toString();
}

QString Mid(QStringView text, qsizetype start, qsizetype length)
{
    if (start < 1 || length < -1) throw VbError::invalidProcedureCall();
    if (start > text.size()) return QString();
    const qsizetype from = start - 1;
    const qsizetype avail = text.size() - from;
    return text.sliced(from, length < 0 ? avail : qMin(length, avail)).toString();
}

QString Left(QStringView text, qsizetype length)
{
    if (length < 0) throw VbError::invalidProcedureCall();
    return text.first(qMin(length, text.size())).toString();
}

QString Right(QStringView text, qsizetype length)
{
    if (length < 0) throw VbError::invalidProcedureCall();
    return text.last(qMin(length, text.size())).toString();
}

qsizetype LenB(QStringView text) { return toCp932(text).size(); }

QString LeftB(QStringView text, qsizetype bytes)
{
    if (bytes < 0) throw VbError::invalidProcedureCall();
    qsizetype used = 0;
    qsizetype i = 0;
    while (i < text.size()) {
        const qsizetype n = (text[i].isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
        const qsizetype b = text[i].unicode() < 0x80 ? 1 : toCp932(text.sliced(i, n)).size();
        if (used + b > bytes) break;
        used += b;
        i += n;
    }
    return text.first(i).toString();
}

QString FixedText(QStringView text, qsizetype length)
{
    QString s = text.first(qMin(length, text.size())).toString();
    if (s.size() < length) s.append(QString(length - s.size(), u' '));
    return s;
}

QString csReplaceAll(const QString& text, const QString& del)
{
    if (del.isEmpty()) return text;
    QString s = text;
    for (qsizetype pos = s.indexOf(del); pos >= 0; pos = s.indexOf(del)) s.remove(pos, del.size());
    return s;
}

bool IsNull(const QVariant& value) { return !value.isValid() || value.isNull(); }

QString CStr(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::SChar:
        return QString::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UChar:
        return QString::number(value.toULongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return CStr(value.toDouble());
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("yyyy/MM/dd"));
    case QMetaType::QDateTime: {
        const QDateTime dt = value.toDateTime();
        const QString d = dt.date().toString(QStringLiteral("yyyy/MM/dd"));
        if (dt.time() == QTime(0, 0)) return d;
        return d + u' ' + dt.time().toString(QStringLiteral("H:mm:ss"));
    }
    case QMetaType::QByteArray:
        return fromCp932(value.toByteArray());
    default:
        return value.toString();
    }
}

QString numberText(qint64 n)
{
    static const std::array<QString, 64> small = [] {
        std::array<QString, 64> texts;
        for (int i = 0; i < 64; ++i) texts[size_t(i)] = QString::number(i);
        return texts;
    }();
    return (n >= 0 && n < 64) ? small[size_t(n)] : QString::number(n);
}

QString csNull2Str(const QVariant& value) { return IsNull(value) ? QString() : CStr(value); }

QString csRTrimNull(const QVariant& value) { return IsNull(value) ? QString() : RTrim(CStr(value)); }

qint32 nNull2Long(const QVariant& value)
{
    if (IsNull(value)) return 0;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? -1 : 0;
    case QMetaType::QString:
        return CLng(value.toString());
    case QMetaType::QByteArray:
        return CLng(fromCp932(value.toByteArray()));
    case QMetaType::QDate:
        return CLng(static_cast<double>(QDate(1899, 12, 30).daysTo(value.toDate())));
    case QMetaType::QDateTime:
        return CLng(static_cast<double>(QDate(1899, 12, 30).daysTo(value.toDateTime().date())));
    default: {
        bool ok = false;
        const double d = value.toDouble(&ok);
        if (!ok) throw VbError::typeMismatch();
        return CLng(d);
    }
    }
}

}  // namespace base

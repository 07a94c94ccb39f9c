#include "base/dates.h"

#include "base/vb_error.h"

#include <QRegularExpression>

#include <optional>

namespace base {

namespace {

QString twoDigits(int n) { return QString::number(n).rightJustified(2, u'0'); }

// Runs of the same pattern letter, taken in the widest piece the runtime knows.
qsizetype runLength(QStringView p, qsizetype i)
{
    const QChar c = p[i].toLower();
    qsizetype j = i;
    while (j < p.size() && p[j].toLower() == c) ++j;
    return j - i;
}

QString formatImpl(const QDate& date, const QTime& time, QStringView p)
{
    if (!date.isValid()) return QString();
    QString out;
    bool afterHour = false;  // "m" right after an hour means minutes
    qsizetype i = 0;
    while (i < p.size()) {
        const QChar c = p[i];
        const QChar lc = c.toLower();
        if (c == u'\\') {
            if (i + 1 < p.size()) out += p[i + 1];
            i += 2;
            continue;
        }
        if (c == u'"') {
            const qsizetype close = p.indexOf(u'"', i + 1);
            const qsizetype end = close < 0 ? p.size() : close;
            out += p.sliced(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        const qsizetype run = runLength(p, i);
        if (lc == u'y') {
            if (run >= 4) {
                out += QString::number(date.year()).rightJustified(4, u'0');
                i += 4;
            } else if (run >= 2) {
                out += twoDigits(date.year() % 100);
                i += 2;
            } else {
                out += QString::number(date.dayOfYear());
                i += 1;
            }
            afterHour = false;
        } else if (lc == u'm') {
            const qsizetype n = qMin<qsizetype>(run, 2);
            const int v = afterHour ? time.minute() : date.month();
            out += n == 2 ? twoDigits(v) : QString::number(v);
            i += n;
            afterHour = false;
        } else if (lc == u'd') {
            const qsizetype n = qMin<qsizetype>(run, 2);
            out += n == 2 ? twoDigits(date.day()) : QString::number(date.day());
            i += n;
            afterHour = false;
        } else if (lc == u'h') {
            const qsizetype n = qMin<qsizetype>(run, 2);
            out += n == 2 ? twoDigits(time.hour()) : QString::number(time.hour());
            i += n;
            afterHour = true;
        } else if (lc == u'n' || lc == u's') {
            const qsizetype n = qMin<qsizetype>(run, 2);
            const int v = lc == u'n' ? time.minute() : time.second();
            out += n == 2 ? twoDigits(v) : QString::number(v);
            i += n;
            afterHour = false;
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

void checkRange(const QDate& d)
{
    if (!d.isValid() || d.year() < 100 || d.year() > 9999) throw VbError::invalidProcedureCall();
}

int expandYear(const QString& digits)
{
    const int y = digits.toInt();
    if (digits.size() > 2) return y;
    return y < 30 ? 2000 + y : 1900 + y;  // the runtime's two-digit year window
}

std::optional<QDate> parseDate(QStringView text)
{
    static const QRegularExpression numeric(
        QStringLiteral(R"(^ *(\d{1,4})([/-])(\d{1,2})(?:\2(\d{1,2}))?(?: +(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?)? *$)"));
    static const QRegularExpression kanji(
        QStringLiteral(R"(^ *(\d{1,4})年(\d{1,2})月(?:(\d{1,2})日)?(?: *(\d{1,2}):(\d{1,2})(?::(\d{1,2}))?)? *$)"));

    const QString t = text.toString();
    QRegularExpressionMatch m = numeric.match(t);
    int year = 0, month = 0, day = 1, timeAt = 0;
    if (m.hasMatch()) {
        year = expandYear(m.captured(1));
        month = m.captured(3).toInt();
        if (m.hasCaptured(4) && !m.captured(4).isEmpty()) day = m.captured(4).toInt();
        timeAt = 5;
    } else {
        m = kanji.match(t);
        if (!m.hasMatch()) return std::nullopt;
        year = expandYear(m.captured(1));
        month = m.captured(2).toInt();
        if (!m.captured(3).isEmpty()) day = m.captured(3).toInt();
        timeAt = 4;
    }
    if (!m.captured(timeAt).isEmpty()) {
        const int h = m.captured(timeAt).toInt();
        const int n = m.captured(timeAt + 1).toInt();
        const int s = m.captured(timeAt + 2).isEmpty() ? 0 : m.captured(timeAt + 2).toInt();
        if (h > 23 || n > 59 || s > 59) return std::nullopt;
    }
    const QDate d(year, month, day);
    if (!d.isValid() || year < 100) return std::nullopt;
    return d;
}

}  // namespace

QString shortDate(const QDate& date)
{
    return date.isValid() ? date.toString(QStringLiteral("yyyy/MM/dd")) : QString();
}

QString Format(const QDate& date, QStringView pattern) { return formatImpl(date, QTime(0, 0), pattern); }

QString Format(const QDateTime& dateTime, QStringView pattern)
{
    return formatImpl(dateTime.date(), dateTime.time(), pattern);
}

QDate DateAdd(QStringView interval, int number, const QDate& date)
{
    if (!date.isValid()) throw VbError::typeMismatch();
    const QString iv = interval.toString().toLower();
    QDate r;
    if (iv == u"yyyy")
        r = date.addYears(number);
    else if (iv == u"q")
        r = date.addMonths(3 * number);
    else if (iv == u"m")
        r = date.addMonths(number);
    else if (iv == u"ww")
        r = date.addDays(7LL * number);
    else if (iv == u"d" || iv == u"y" || iv == u"w")
        r = date.addDays(number);
    else
        throw VbError::invalidProcedureCall();
    checkRange(r);
    return r;
}

bool IsDate(QStringView text) { return parseDate(text).has_value(); }

QDate CDate(QStringView text)
{
    const std::optional<QDate> d = parseDate(text);
    if (!d) throw VbError::typeMismatch();
    return *d;
}

QString csMonthEnd(const QDate& date, int months)
{
    if (!date.isValid()) throw VbError::typeMismatch();
    if (Format(date, u"dd") == u"01") return shortDate(DateAdd(u"d", -1, DateAdd(u"m", months, date)));
    return shortDate(DateAdd(u"m", months, DateAdd(u"d", -1, date)));
}

}  // namespace base

#include "data/ado/driver.h"

#include <QDateTime>

namespace data::ado {

namespace {

int digits(QStringView text, qsizetype from, qsizetype count, bool& ok)
{
    int value = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9') {
            ok = false;
            return 0;
        }
        value = value * 10 + (c - u'0');
    }
    return value;
}

}  // namespace

QVariant parseStoredDateTime(QStringView text)
{
    if (text.size() < 10)
        return {};
    const QChar sep = text[4];
    if ((sep != u'/' && sep != u'-') || text[7] != sep)
        return {};
    bool ok = true;
    const int year = digits(text, 0, 4, ok);
    const int month = digits(text, 5, 2, ok);
    const int day = digits(text, 8, 2, ok);
    if (!ok)
        return {};
    const QDate date(year, month, day);
    if (!date.isValid())
        return {};
    int hour = 0, minute = 0, second = 0, msec = 0;
    if (text.size() > 10) {
        if (text.size() < 19 || (text[10] != u' ' && text[10] != u'T') || text[13] != u':' || text[16] != u':')
            return {};
        hour = digits(text, 11, 2, ok);
        minute = digits(text, 14, 2, ok);
        second = digits(text, 17, 2, ok);
        if (text.size() > 19) {
            if (text[19] != u'.')
                return {};
            const QStringView fraction = text.mid(20, 3);
            msec = digits(fraction, 0, fraction.size(), ok);
            for (qsizetype k = fraction.size(); k < 3; ++k)
                msec *= 10;
            if (!ok || digits(text, 23, text.size() - 23, ok) < 0 || !ok)
                return {};
        }
        if (!ok)
            return {};
    }
    const QTime time(hour, minute, second, msec);
    if (!time.isValid())
        return {};
    return QDateTime(date, time);
}

}  // namespace data::ado

#pragma once
// Readable failure output for the Qt values tests compare: texts as UTF-8, bytes as
// their CP932 text with CR and LF shown and, for short ones, their hex, dates as ISO.

#include "base/text_codec.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

inline void PrintTo(const QByteArray& b, std::ostream* os)
{
    QString text = base::fromCp932(b);
    text.replace(u'\r', QStringLiteral("\\r")).replace(u'\n', QStringLiteral("\\n\n"));
    *os << "bytes[" << b.size() << "]\n" << text.toStdString();
    if (b.size() <= 64) *os << "\nhex " << b.toHex(' ').toStdString();
}

inline void PrintTo(const QDate& d, std::ostream* os) { *os << d.toString(Qt::ISODate).toStdString(); }

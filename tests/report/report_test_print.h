#pragma once
// Readable failure output for the texts and bytes the report drivers produce: texts as
// UTF-8, script and CSV bytes decoded from CP932 with CR and LF shown.

#include "base/text_codec.h"

#include <QByteArray>
#include <QString>

#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

inline void PrintTo(const QByteArray& b, std::ostream* os)
{
    QString text = base::fromCp932(b);
    text.replace(u'\r', QStringLiteral("\\r")).replace(u'\n', QStringLiteral("\\n\n"));
    *os << "bytes[" << b.size() << "]\n" << text.toStdString();
}

#pragma once
// Raw byte access for tests that check files byte for byte, the runtime fault a call
// raises, and readable failure output for Qt strings.

#include <QByteArray>
#include <QFile>
#include <QString>

#include "base/vb_error.h"

#include <functional>
#include <ostream>
#include <stdexcept>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

inline void PrintTo(const QByteArray& b, std::ostream* os)
{
    *os << "bytes[" << b.size() << "] " << b.toHex(' ').toStdString();
}

namespace testing_files {

inline void putBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write fixture");
    f.write(bytes);
}

inline QByteArray getBytes(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return QByteArray("<missing>");
    return f.readAll();
}

// The runtime error number a call raises, or 0 when it raises none.
inline int faultOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const base::VbError& e) {
        return e.number();
    }
    return 0;
}

}  // namespace testing_files

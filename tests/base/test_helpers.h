#pragma once
// Raw byte access for tests that check files byte for byte, and readable failure
// output for Qt strings.

#include <QByteArray>
#include <QFile>
#include <QString>

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

}  // namespace testing_files

#pragma once
// Files as tests write and read them: raw bytes, CP932 lines ending in CR LF, and the
// runtime fault a call raises.

#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <functional>
#include <stdexcept>

namespace sealtest {

inline void putBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write fixture");
    f.write(bytes);
}

// The file's bytes, or "<missing>" so that a comparison shows the file was never written.
inline QByteArray fileBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// The lines as the original writes its text files: CP932, each ended by CR LF.
inline QByteArray crlf(const QStringList& lines)
{
    QByteArray out;
    for (const QString& l : lines) out += base::toCp932(l) + "\r\n";
    return out;
}

inline void writeCrlf(const QString& path, const QStringList& lines) { putBytes(path, crlf(lines)); }

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

}  // namespace sealtest

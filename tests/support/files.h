#pragma once
// Files as tests write and read them: raw bytes, CP932 lines ending in CR LF, file
// rights through Qt, and the runtime fault a call raises.

#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <functional>
#include <stdexcept>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

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

// A file's rights as the octal mode the system shows (0600); -1 if it is not there.
inline int fileMode(const QString& path)
{
    if (!QFile::exists(path)) return -1;
    const int p = int(QFile::permissions(path));
    return ((p >> 12) & 7) << 6 | ((p >> 4) & 7) << 3 | (p & 7);
}

// Sets a file's rights from an octal mode (0644).
inline bool setFileMode(const QString& path, int mode)
{
    const int p = ((mode >> 6) & 7) << 12 | ((mode >> 6) & 7) << 8 | ((mode >> 3) & 7) << 4 | (mode & 7);
    return QFile::setPermissions(path, QFileDevice::Permissions(p));
}

// True where file rights do not bind this process (the superuser): tests of refused
// writes skip there.
inline bool rightsDoNotBind()
{
#ifdef Q_OS_UNIX
    return ::geteuid() == 0;
#else
    return false;
#endif
}

}  // namespace sealtest

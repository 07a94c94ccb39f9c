#pragma once
// File rights in tests, through Qt: the octal mode a file shows, setting one, and
// whether rights bind this process at all.

#include <QFile>
#include <QString>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace testing_files {

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

}  // namespace testing_files

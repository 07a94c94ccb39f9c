#include "base/files.h"

#include "base/text_codec.h"
#include "base/vb_error.h"

#include <QDir>
#include <QFileInfo>

namespace base {

bool bFileExists(const QString& path)
{
    if (path.isEmpty()) return false;
    const QFileInfo info(nativePath(path));
    const QString name = info.fileName();
    if (!name.contains(u'*') && !name.contains(u'?')) return info.exists() && !info.isDir();
    const QDir dir = info.dir();
    return !dir.entryList({name}, QDir::Files | QDir::System).isEmpty();
}

QString csChangeToDir(const QString& dir)
{
    if (!QDir::setCurrent(nativePath(dir))) throw VbError::pathNotFound();
    return QDir::toNativeSeparators(QDir::currentPath());
}

}  // namespace base

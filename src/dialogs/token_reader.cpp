#include "dialogs/token_reader.h"

#include "base/text_codec.h"
#include "base/text_file.h"

#include <QDir>
#include <QFileInfo>

namespace dialogs {

Tokens readTokens(const QString& path)
{
    const base::TextFileRead file = base::readTextFile(findFileAnyCase(path));
    Tokens t;
    if (!file.ok) return t;
    t.ok = true;
    for (const QString& line : file.lines)
        for (const QString& token : line.split(u',')) t.tokens << token;
    return t;
}

QString findFileAnyCase(const QString& path)
{
    const QFileInfo fi(base::nativePath(path));
    if (fi.exists()) return path;
    const QDir dir = fi.dir();
    const QStringList names = dir.entryList(QDir::Files);
    for (const QString& name : names)
        if (name.compare(fi.fileName(), Qt::CaseInsensitive) == 0) return dir.filePath(name);
    return path;
}

}  // namespace dialogs

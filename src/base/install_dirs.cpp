#include "base/install_dirs.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace base {

QStringList dataFolders(const QString& programDir, const QString& sub)
{
    if (programDir.isEmpty()) return {};
    const QDir dir(programDir);
    return {QDir::cleanPath(dir.filePath(sub)),
            QDir::cleanPath(dir.filePath(QStringLiteral("../share/sealprint/") + sub))};
}

QString findDataFolder(const QString& programDir, const QString& sub)
{
    for (const QString& folder : dataFolders(programDir, sub))
        if (QFileInfo(folder).isDir()) return folder;
    return {};
}

QStringList fontFolders(const QString& programDir)
{
    QStringList dirs;
    const QString env = qEnvironmentVariable("SEAL_FONT_DIR");
    if (!env.isEmpty()) dirs.append(env);
    dirs += dataFolders(programDir, QStringLiteral("fonts"));
    for (const char* d : {"/usr/share/fonts/opentype/ipaexfont-gothic", "/usr/share/fonts/opentype/ipaexfont-mincho",
                          "/usr/share/fonts/truetype/ipaexfont-gothic", "/usr/share/fonts/truetype/ipaexfont-mincho"})
        dirs.append(QString::fromLatin1(d));
    dirs += QStandardPaths::standardLocations(QStandardPaths::FontsLocation);
    return dirs;
}

QString findFontFile(const QString& programDir, const QString& fileName)
{
    for (const QString& dir : fontFolders(programDir)) {
        const QString path = QDir(dir).filePath(fileName);
        if (QFileInfo(path).isFile()) return path;
    }
    return {};
}

QString installationFolder(const QString& programDir)
{
    const QString settings = QStringLiteral("Tavrine.ini");
    if (QFileInfo::exists(QDir(programDir).filePath(settings))) return programDir;
    const QString office =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/sealprint/office");
    if (QFileInfo::exists(QDir(office).filePath(settings))) return office;
    return programDir;
}

}  // namespace base

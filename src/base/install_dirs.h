#pragma once
// Where the program's own files lie: the report forms and the fonts. A build and a
// Windows installation keep them beside the programs; an installation under a prefix
// (/usr, /usr/local) keeps them in PREFIX/share/sealprint.

#include <QString>
#include <QStringList>

namespace base {

// The folders named `sub` ("forms", "fonts") for programs in programDir, in the order
// they are looked in: beside the programs, then PREFIX/share/sealprint.
QStringList dataFolders(const QString& programDir, const QString& sub);

// The first of dataFolders that exists; empty if none.
QString findDataFolder(const QString& programDir, const QString& sub);

// The folders a font file is looked for in: SEAL_FONT_DIR, the installed "fonts"
// folders, then the system's (IPAex as Debian installs it, and the system font folder).
QStringList fontFolders(const QString& programDir);

// The first fontFolders entry that holds fileName ("ipaexg.ttf"); empty if none.
QString findFontFile(const QString& programDir, const QString& fileName);

// The office's installation folder when no --app-dir names it: the program's own
// folder if it holds Tavrine.ini (a Windows installation), else
// "<user's data folder>/sealprint/office" if that holds one (the program installed
// under a prefix), else the program's own folder, where the missing settings file is
// then reported as usual.
QString installationFolder(const QString& programDir);

}  // namespace base

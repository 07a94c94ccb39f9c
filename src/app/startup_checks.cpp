#include "app/startup_checks.h"

#include "base/install_dirs.h"

#include <QDir>
#include <QStringEncoder>

namespace app {

bool cp932Available()
{
    QStringEncoder encoder("CP932");
    if (!encoder.isValid()) return false;
    const QByteArray bytes = encoder.encode(QStringLiteral("日本"));
    return !encoder.hasError() && bytes == QByteArray("\x93\xfa\x96\x7b");
}

QList<StartupProblem> startupChecks(const QString& programDir)
{
    QList<StartupProblem> problems;
    if (!cp932Available())
        problems.append({true, QStringLiteral("this Qt cannot encode CP932 (Shift_JIS): it was built without ICU, "
                                              "and every Japanese text in the settings files and labels would "
                                              "become \"?\". Install a Qt with ICU (Debian's qt6-base).")});
    if (base::findDataFolder(programDir, QStringLiteral("forms")).isEmpty())
        problems.append(
            {false, QStringLiteral("no forms folder in %1: the engine finds only the forms in the "
                                   "installation's SYS folder")
                        .arg(QDir::toNativeSeparators(
                            base::dataFolders(programDir, QStringLiteral("forms")).join(QStringLiteral(" or "))))});
    const struct {
        const char* file;
        const char* family;
    } fonts[] = {{"ipaexg.ttf", "IPAex Gothic"}, {"ipaexm.ttf", "IPAex Mincho"}};
    for (const auto& f : fonts) {
        if (!base::findFontFile(programDir, QString::fromLatin1(f.file)).isEmpty()) continue;
        problems.append({false, QStringLiteral("font %1 (%2) not found in the installed fonts folder or the system's: "
                                               "labels are printed in a stand-in font")
                                    .arg(QString::fromLatin1(f.family), QString::fromLatin1(f.file))});
    }
    return problems;
}

}  // namespace app

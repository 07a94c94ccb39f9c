#include "app/program_start.h"

#include "base/text_codec.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace app {

ProgramCommand parseCommandLine(const QString& commandLine)
{
    const QString line = commandLine.trimmed();
    ProgramCommand cmd;
    const qsizetype exe = line.indexOf(QLatin1String(".exe"), 0, Qt::CaseInsensitive);
    qsizetype end = exe >= 0 ? exe + 4 : line.indexOf(u' ');
    if (end < 0) end = line.size();
    cmd.program = line.left(end);
    cmd.arguments = line.mid(end).split(u' ', Qt::SkipEmptyParts);
    return cmd;
}

QString findProgram(const QString& program, const QString& appDir)
{
    const QString native = base::nativePath(program);
    const QFileInfo given(native);
    QString bare = given.fileName();
    if (bare.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive)) bare.chop(4);
    const QStringList names{bare, bare + QStringLiteral(".exe")};

    const bool hasFolder = native.contains(u'/');
    const QString folder = hasFolder ? given.path() : base::nativePath(appDir);
    for (const QString& name : names) {
        const QFileInfo fi(folder + u'/' + name);
        if (fi.isFile() && fi.isExecutable()) return fi.absoluteFilePath();
    }
    if (hasFolder) return {};
    for (const QString& name : names) {
        const QString found = QStandardPaths::findExecutable(name);
        if (!found.isEmpty()) return found;
    }
    return {};
}

bool startDetached(const QString& commandLine, const QString& appDir, QString* error)
{
    const ProgramCommand cmd = parseCommandLine(commandLine);
    const QString path = findProgram(cmd.program, appDir);
    if (path.isEmpty()) {
        if (error) *error = QStringLiteral("ファイルが見つかりません。(%1)").arg(cmd.program);
        return false;
    }
    if (!QProcess::startDetached(path, cmd.arguments, base::nativePath(appDir))) {
        if (error) *error = QStringLiteral("プログラムを起動できません。(%1)").arg(path);
        return false;
    }
    return true;
}

bool runToEnd(const QString& commandLine, const QString& appDir, QString* error)
{
    const ProgramCommand cmd = parseCommandLine(commandLine);
    const QString path = findProgram(cmd.program, appDir);
    if (path.isEmpty()) {
        if (error) *error = QStringLiteral("ファイルが見つかりません。(%1)").arg(cmd.program);
        return false;
    }
    QProcess process;
    process.setProgram(path);
    process.setArguments(cmd.arguments);
    process.setWorkingDirectory(base::nativePath(appDir));
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start();
    if (!process.waitForStarted() || !process.waitForFinished(-1)) {
        if (error) *error = QStringLiteral("プログラムを起動できません。(%1)").arg(path);
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        if (error) *error = QStringLiteral("%1 が終了コード %2 で終わりました。").arg(path).arg(process.exitCode());
        return false;
    }
    return true;
}

}  // namespace app

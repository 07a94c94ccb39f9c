#include "app/program_start.h"

#include "base/log.h"
#include "base/text_codec.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace app {

namespace {

bool isBlank(QChar c) { return c == u' ' || c == u'\t'; }

// Where the program's name ends: after a closing quote, after ".exe" followed by a
// blank or the end, or at the first blank.
qsizetype programEnd(QStringView line, QString* program)
{
    if (line.startsWith(u'"')) {
        const qsizetype close = line.indexOf(u'"', 1);
        const qsizetype end = close < 0 ? line.size() : close;
        *program = line.mid(1, end - 1).toString();
        return close < 0 ? line.size() : close + 1;
    }
    for (qsizetype from = 0;;) {
        const qsizetype exe = line.indexOf(QLatin1String(".exe"), from, Qt::CaseInsensitive);
        if (exe < 0) break;
        const qsizetype end = exe + 4;
        if (end == line.size() || isBlank(line[end])) {
            *program = line.left(end).toString();
            return end;
        }
        from = end;
    }
    qsizetype end = 0;
    while (end < line.size() && !isBlank(line[end])) ++end;
    *program = line.left(end).toString();
    return end;
}

QString findIn(const QString& folder, const QStringList& names)
{
    for (const QString& name : names) {
        const QFileInfo fi(folder + u'/' + name);
        if (fi.isFile() && fi.isExecutable()) return fi.absoluteFilePath();
    }
    return {};
}

QString notFound(const QString& program) { return QStringLiteral("ファイルが見つかりません。(%1)").arg(program); }

}  // namespace

QStringList splitWindowsArguments(QStringView s)
{
    QStringList args;
    qsizetype i = 0;
    const qsizetype n = s.size();
    while (true) {
        while (i < n && isBlank(s[i])) ++i;
        if (i >= n) break;
        QString arg;
        bool quoted = false;
        while (i < n && (quoted || !isBlank(s[i]))) {
            const QChar c = s[i];
            if (c == u'\\') {
                qsizetype j = i;
                while (j < n && s[j] == u'\\') ++j;
                const qsizetype count = j - i;
                if (j < n && s[j] == u'"') {
                    arg += QString(count / 2, u'\\');
                    if (count % 2) {
                        arg += u'"';
                        ++j;
                    }
                } else {
                    arg += QString(count, u'\\');
                }
                i = j;
            } else if (c == u'"') {
                if (quoted && i + 1 < n && s[i + 1] == u'"') {
                    arg += u'"';
                    i += 2;
                } else {
                    quoted = !quoted;
                    ++i;
                }
            } else {
                arg += c;
                ++i;
            }
        }
        args.append(arg);
    }
    return args;
}

ProgramCommand parseCommandLine(const QString& commandLine)
{
    const QStringView line = QStringView(commandLine).trimmed();
    ProgramCommand cmd;
    const qsizetype end = programEnd(line, &cmd.program);
    cmd.arguments = splitWindowsArguments(line.mid(end));
    return cmd;
}

QString runningProgramDir()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
}

QString findProgram(const QString& program, const QString& appDir, const QString& ownDir)
{
    const QFileInfo given(base::nativePath(program));
    QString bare = given.fileName();
    if (bare.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive)) bare.chop(4);
    const QStringList names{bare, bare + QStringLiteral(".exe")};

    // Asked on the name as written: after the change to native separators a Windows
    // path holds no '/'.
    if (program.contains(u'/') || program.contains(u'\\')) return findIn(given.path(), names);
    for (const QString& folder : {appDir, ownDir}) {
        if (folder.isEmpty()) continue;
        const QString found = findIn(base::nativePath(folder), names);
        if (!found.isEmpty()) return found;
    }
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
    QString fault;
    if (path.isEmpty())
        fault = notFound(cmd.program);
    else if (!QProcess::startDetached(path, cmd.arguments, base::nativePath(appDir)))
        fault = QStringLiteral("プログラムを起動できません。(%1)").arg(path);
    if (!fault.isEmpty()) {
        qCWarning(base::lcApp).noquote() << "program start failed:" << fault;
        if (error) *error = fault;
        return false;
    }
    qCInfo(base::lcApp).noquote() << "started" << path << cmd.arguments.join(u' ');
    return true;
}

bool runToEnd(const QString& commandLine, const QString& appDir, QString* error)
{
    const ProgramCommand cmd = parseCommandLine(commandLine);
    const QString path = findProgram(cmd.program, appDir);
    QString fault;
    if (path.isEmpty()) {
        fault = notFound(cmd.program);
    } else {
        qCInfo(base::lcApp).noquote() << "running" << path << cmd.arguments.join(u' ');
        QProcess process;
        process.setProgram(path);
        process.setArguments(cmd.arguments);
        process.setWorkingDirectory(base::nativePath(appDir));
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start();
        if (!process.waitForStarted() || !process.waitForFinished(-1))
            fault = QStringLiteral("プログラムを起動できません。(%1)").arg(path);
        else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            fault = QStringLiteral("%1 が終了コード %2 で終わりました。").arg(path).arg(process.exitCode());
    }
    if (!fault.isEmpty()) {
        qCWarning(base::lcApp).noquote() << "program run failed:" << fault;
        if (error) *error = fault;
        return false;
    }
    qCInfo(base::lcApp).noquote() << "program ended normally:" << path;
    return true;
}

}  // namespace app

// The program's own options as a user types them: help and version, a clear message
// and exit code 2 for a wrong option, the run mode still read from the one argument,
// and a program that runs on when its log cannot be written.

#include "base/text_codec.h"
#include "support/files.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString kProgram = QStringLiteral(SEAL_BINARY_DIR "/src/main/sealprint");

struct ProgramRun {
    int code = -1;
    QString out;
    QString err;
};

class CommandLine : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFileInfo::exists(kProgram)) GTEST_SKIP() << "sealprint is not built";
        logDir = dir.filePath(QStringLiteral("log"));
        // An installation whose settings file has what the background window reads.
        sealtest::writeCrlf(dir.filePath(QStringLiteral("Tavrine.ini")),
                            {QStringLiteral("SYSTEM_ICON=\\ICON"), QStringLiteral("WALLPAPER=wall.png"),
                             QStringLiteral("BASEID=0102")});
    }

    ProgramRun run(const QStringList& args)
    {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.insert(QStringLiteral("SEAL_LOG_DIR"), logDir);
        p.setProcessEnvironment(env);
        p.start(kProgram, args);
        if (!p.waitForFinished(60000)) return {};
        return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2,
                QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    }

    QTemporaryDir dir;
    QString logDir;
};

TEST_F(CommandLine, HelpNamesTheOptionsAndVersionTheProgram)
{
    const ProgramRun help = run({QStringLiteral("--help")});
    EXPECT_EQ(help.code, 0);
    for (const char* option : {"--app-dir", "--script", "--start-programs", "--log-level", "RUNMODE"})
        EXPECT_TRUE(help.out.contains(QLatin1String(option))) << option << help.out.toStdString();
    const ProgramRun version = run({QStringLiteral("--version")});
    EXPECT_EQ(version.code, 0);
    EXPECT_TRUE(version.out.startsWith(QStringLiteral("sealprint "))) << version.out.toStdString();
}

TEST_F(CommandLine, AWrongOptionIsNamedAndEndsWithTwo)
{
    struct Case {
        QStringList args;
        const char* named;
    };
    const Case cases[] = {
        {{QStringLiteral("--colour"), QStringLiteral("1")}, "colour"},
        {{QStringLiteral("1"), QStringLiteral("--script")}, "--script"},  // a bare --script is no run mode
        {{QStringLiteral("--log-level"), QStringLiteral("verbose"), QStringLiteral("1")}, "verbose"},
        {{QStringLiteral("--start-programs"), QStringLiteral("1")}, "--script"},
    };
    for (const Case& c : cases) {
        const ProgramRun r = run(c.args);
        EXPECT_EQ(r.code, 2) << c.args.join(u' ').toStdString();
        EXPECT_TRUE(r.err.contains(QLatin1String(c.named))) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("--help"))) << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    }
}

TEST_F(CommandLine, NoRunModeShowsTheStartBoxesAndANegativeModeIsNoOption)
{
    const ProgramRun none = run({QStringLiteral("--app-dir"), dir.path()});
    EXPECT_TRUE(none.out.contains(QStringLiteral("処理モードが設定されていません。"))) << none.out.toStdString();
    // "-5" is read as the original reads its command line: a run mode, so the start
    // goes past the check for an empty command line.
    const ProgramRun negative = run({QStringLiteral("--app-dir"), dir.path(), QStringLiteral("-5")});
    EXPECT_NE(negative.code, 2) << negative.err.toStdString();
    EXPECT_FALSE(negative.out.contains(QStringLiteral("処理モードが設定されていません。")))
        << negative.out.toStdString();
}

TEST_F(CommandLine, TheStartIsLoggedAndAnUnwritableLogFolderDoesNotStopTheProgram)
{
    ProgramRun r = run({QStringLiteral("--app-dir"), dir.path()});
    QFile log(logDir + QStringLiteral("/sealprint.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly)) << r.err.toStdString();
    EXPECT_TRUE(log.readAll().contains("sealprint.app: sealprint"));

    // A file where the log folder should be.
    logDir = dir.filePath(QStringLiteral("Tavrine.ini"));
    r = run({QStringLiteral("--app-dir"), dir.path()});
    EXPECT_TRUE(r.err.contains(QStringLiteral("no log file"))) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("処理モードが設定されていません。"))) << r.out.toStdString();
}

}  // namespace

TEST_F(CommandLine, AProgramTheRunCannotStartIsReportedOnce)
{
    // Without a database setting the seal screen closes at once and starts the main
    // menu, which this installation does not have.
    const QString script = dir.filePath(QStringLiteral("start.txt"));
    sealtest::writeCrlf(script, {QStringLiteral("start 1")});
    const ProgramRun r = run({QStringLiteral("--script"), script, QStringLiteral("--app-dir"), dir.path(),
                              QStringLiteral("--start-programs")});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("Main.exe 2"))) << r.out.toStdString();
    EXPECT_EQ(r.err.count(QStringLiteral("ファイルが見つかりません。")), 1) << r.err.toStdString();
}

// The program.
//
//   sealprint [--app-dir DIR] RUNMODE
//       the seal screen on the desktop; without a display, the run is printed as a
//       transcript (every box and program start).
//   sealprint --script FILE --app-dir DIR [--start-programs]
//       the scenario runner: drives the screens with no display and prints a
//       transcript; with --start-programs the programs the run starts (the report
//       engine) are run for real too, each to its end.
//   sealprint --help | --version

#include "app/process.h"
#include "app/scenario_runner.h"
#include "app/startup_checks.h"
#include "base/install_dirs.h"
#include "base/log.h"
#include "base/text_codec.h"
#include "controls/recording_platform.h"
#include "gui/desktop.h"
#include "seal/seal_screen.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cstdio>
#include <memory>
#include <optional>

namespace {

constexpr int kBadCommandLine = 2;  // as the scenario runner ends on a wrong script line

struct Arguments {
    QString script;
    QString appDir;
    QString commandLine;  // the original's command line: the run mode
    bool startPrograms = false;
    QtMsgType logLevel = QtInfoMsg;
    bool logLevelGiven = false;
};

void printLine(FILE* f, const QString& line)
{
    std::fputs(line.toUtf8().constData(), f);
    std::fputc('\n', f);
    std::fflush(f);
}

// What parsing asks of main: go on, or end at once with this code (after --help,
// --version or a bad command line).
struct Parsed {
    Arguments args;
    std::optional<int> exitNow;
};

Parsed parse(int argc, char** argv)
{
    QStringList list;
    for (int i = 0; i < argc; ++i) list << QString::fromLocal8Bit(argv[i]);
    // The run mode is read as the original reads its command line, so "-5" is a run
    // mode, not an option: everything from it on is the command line.
    static const QRegularExpression negativeNumber(QStringLiteral("^-[0-9.]"));
    for (qsizetype i = 1; i < list.size(); ++i) {
        if (list[i] == u"--") break;
        if (negativeNumber.match(list[i]).hasMatch()) {
            list.insert(i, QStringLiteral("--"));
            break;
        }
    }

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Labels and envelopes for home-visit clinics."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption appDir(QStringLiteral("app-dir"),
                                    QStringLiteral("The installation folder (Tavrine.ini, adodb.ini, SYS, TMP, DATA); "
                                                   "by default the program's own folder."),
                                    QStringLiteral("DIR"));
    const QCommandLineOption script(QStringLiteral("script"),
                                    QStringLiteral("Run the scenario FILE without a display and print a transcript."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption startPrograms(QStringLiteral("start-programs"),
                                           QStringLiteral("With --script: run the programs the scenario starts "
                                                          "(the report engine) for real."));
    const QCommandLineOption logLevel(QStringLiteral("log-level"),
                                      QStringLiteral("Log from LEVEL up: debug, info (default), warning, critical. "
                                                     "debug also logs names and texts of boxes."),
                                      QStringLiteral("LEVEL"));
    parser.addOptions({appDir, script, startPrograms, logLevel});
    parser.addPositionalArgument(QStringLiteral("RUNMODE"),
                                 QStringLiteral("The run mode the menu starts the program with; 1000 starts it "
                                                "without the menu to return to."),
                                 QStringLiteral("[RUNMODE]"));

    Parsed p;
    auto fail = [&](const QString& text) {
        printLine(stderr, QStringLiteral("sealprint: %1\nTry 'sealprint --help' for the options.").arg(text));
        p.exitNow = kBadCommandLine;
        return p;
    };
    if (!parser.parse(list)) return fail(parser.errorText());
    if (parser.isSet(help) || parser.isSet(version)) {
        // The texts need the application object; nothing else runs after them.
        QCoreApplication app(argc, argv);
        printLine(stdout, parser.isSet(help)
                              ? parser.helpText().trimmed()
                              : QStringLiteral("sealprint %1").arg(QCoreApplication::applicationVersion()));
        p.exitNow = 0;
        return p;
    }
    Arguments& a = p.args;
    a.appDir = parser.value(appDir);
    a.script = parser.value(script);
    a.startPrograms = parser.isSet(startPrograms);
    a.commandLine = parser.positionalArguments().join(u' ');
    if (parser.isSet(appDir) && a.appDir.isEmpty()) return fail(QStringLiteral("--app-dir needs a folder."));
    if (parser.isSet(script) && a.script.isEmpty()) return fail(QStringLiteral("--script needs a file."));
    if (a.startPrograms && a.script.isEmpty())
        return fail(QStringLiteral("--start-programs works with --script only."));
    if (parser.isSet(logLevel)) {
        const std::optional<QtMsgType> level = base::logLevelFromName(parser.value(logLevel));
        if (!level) return fail(QStringLiteral("unknown log level '%1'.").arg(parser.value(logLevel)));
        a.logLevel = *level;
        a.logLevelGiven = true;
    }
    return p;
}

std::unique_ptr<base::LogFile> openLog(const Arguments& a)
{
    base::setLogLevel(a.logLevel);
    base::LogOptions options;
    options.fileName = QStringLiteral("sealprint.log");
    if (a.logLevelGiven) options.consoleLevel = a.logLevel;
    auto log = std::make_unique<base::LogFile>(options);
    // Without a log file the program still runs; the console is told once.
    if (!log->writing()) printLine(stderr, QStringLiteral("sealprint: no log file: %1").arg(log->problem()));
    qCInfo(base::lcApp).noquote() << "sealprint" << QCoreApplication::applicationVersion() << "started; run mode"
                                  << a.commandLine << "app dir" << a.appDir << "script" << a.script;
    return log;
}

// Says what the start-up checks found; false if the program cannot work.
bool checkStart(const QString& programDir)
{
    bool ok = true;
    for (const app::StartupProblem& p : app::startupChecks(programDir)) {
        if (p.fatal)
            qCCritical(base::lcApp).noquote() << p.message;
        else
            qCWarning(base::lcApp).noquote() << p.message;
        ok = ok && !p.fatal;
    }
    return ok;
}

int runScript(const Arguments& a)
{
    QFile file(a.script);
    if (!file.open(QIODevice::ReadOnly)) {
        printLine(stderr, QStringLiteral("sealprint: cannot read the script %1: %2").arg(a.script, file.errorString()));
        return 2;
    }
    const QStringList lines = base::splitLines(QString::fromUtf8(file.readAll()));
    app::ScenarioRunner runner(lines, a.appDir, seal::makeSealScreen);
    if (a.startPrograms) runner.startProgramsForReal();
    return runner.run([](const QString& l) { printLine(stdout, l); }, [](const QString& l) { printLine(stderr, l); });
}

// The program's folder before Qt's application exists: a bare name was found on the
// search path.
QString folderOf(const char* argv0)
{
    QString path = QString::fromLocal8Bit(argv0);
    if (!path.contains(u'/') && !path.contains(u'\\')) {
        const QString found = QStandardPaths::findExecutable(path);
        if (!found.isEmpty()) path = found;
    }
    return QFileInfo(path).absolutePath();
}

QString programDir(const Arguments& a)
{
    if (!a.appDir.isEmpty()) return a.appDir;
    return base::installationFolder(QCoreApplication::applicationDirPath());
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("sealprint"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SEAL_VERSION));
    const Parsed parsed = parse(argc, argv);
    if (parsed.exitNow) return *parsed.exitNow;
    const Arguments& a = parsed.args;
    const std::unique_ptr<base::LogFile> log = openLog(a);
    if (!app::cp932Available()) {
        checkStart(QString());
        return 1;
    }
    if (gui::displayAvailable() && a.script.isEmpty()) {
        // Qt knows the program's folder only once the desktop's application exists.
        checkStart(folderOf(argv[0]));
        // Without --app-dir the installation folder is found once Qt knows it.
        return gui::runDesktop(argc, argv, {a.commandLine, a.appDir, seal::makeSealScreen});
    }
    QCoreApplication qapp(argc, argv);
    checkStart(QCoreApplication::applicationDirPath());
    if (!a.script.isEmpty()) return runScript(a);
    printLine(stderr, QStringLiteral("sealprint: no display; the run is printed instead of shown"));
    controls::RecordingPlatform platform;
    platform.onLine = [](const QString& l) { printLine(stdout, l); };
    return app::runProcess({a.commandLine, programDir(a), seal::makeSealScreen}, platform);
}

// The program.
//
//   sealprint [--app-dir DIR] RUNMODE
//       the seal screen on the desktop; without a display, the run is printed as a
//       transcript (every box and program start).
//   sealprint --script FILE --app-dir DIR [--start-programs]
//       the scenario runner: drives the screens with no display and prints a
//       transcript; with --start-programs the programs the run starts (the report
//       engine) are run for real too, each to its end.

#include "app/process.h"
#include "app/scenario_runner.h"
#include "base/text_codec.h"
#include "controls/recording_platform.h"
#include "gui/desktop.h"
#include "seal/seal_screen.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

namespace {

struct Arguments {
    QString script;
    QString appDir;
    QString commandLine;
    bool startPrograms = false;
};

Arguments parse(int argc, char** argv)
{
    Arguments a;
    QStringList rest;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--script") && i + 1 < argc) a.script = QString::fromLocal8Bit(argv[++i]);
        else if (arg == QLatin1String("--app-dir") && i + 1 < argc) a.appDir = QString::fromLocal8Bit(argv[++i]);
        else if (arg == QLatin1String("--start-programs")) a.startPrograms = true;
        else rest << arg;
    }
    a.commandLine = rest.join(u' ');
    return a;
}

void printLine(FILE* f, const QString& line)
{
    std::fputs(line.toUtf8().constData(), f);
    std::fputc('\n', f);
    std::fflush(f);
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

QString programDir(const Arguments& a, const char* argv0)
{
    if (!a.appDir.isEmpty()) return a.appDir;
    return QCoreApplication::applicationDirPath().isEmpty() ? QString::fromLocal8Bit(argv0) : QCoreApplication::applicationDirPath();
}

}  // namespace

int main(int argc, char** argv)
{
    const Arguments a = parse(argc, argv);
    if (gui::displayAvailable() && a.script.isEmpty()) {
        // Without --app-dir the program's own folder is taken once Qt knows it.
        return gui::runDesktop(argc, argv, {a.commandLine, a.appDir, seal::makeSealScreen});
    }
    QCoreApplication qapp(argc, argv);
    if (!a.script.isEmpty()) return runScript(a);
    printLine(stderr, QStringLiteral("sealprint: no display; the run is printed instead of shown"));
    controls::RecordingPlatform platform;
    platform.onLine = [](const QString& l) { printLine(stdout, l); };
    return app::runProcess({a.commandLine, programDir(a, argv[0]), seal::makeSealScreen}, platform);
}

// The program. With --script FILE it is the scenario runner: it drives the screens
// with no display and prints a transcript.
//
//   sealprint [--app-dir DIR] RUNMODE   (no display yet: prints what the run does)
//   sealprint --script FILE --app-dir DIR

#include "app/process.h"
#include "app/scenario_runner.h"
#include "base/text_codec.h"
#include "controls/recording_platform.h"
#include "seal/seal_screen.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

namespace {

struct Arguments {
    QString script;
    QString appDir;
    QString commandLine;
};

Arguments parse(const QStringList& args)
{
    Arguments a;
    QStringList rest;
    for (qsizetype i = 1; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--script") && i + 1 < args.size()) a.script = args[++i];
        else if (args[i] == QLatin1String("--app-dir") && i + 1 < args.size()) a.appDir = args[++i];
        else rest << args[i];
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
    return runner.run([](const QString& l) { printLine(stdout, l); }, [](const QString& l) { printLine(stderr, l); });
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication qapp(argc, argv);
    const Arguments a = parse(QCoreApplication::arguments());
    if (!a.script.isEmpty()) return runScript(a);
    // Without a display of its own the program runs on the recording platform: the
    // screen loads, is shown and closed, and every box and program start is printed.
    controls::RecordingPlatform platform;
    platform.onLine = [](const QString& l) { printLine(stdout, l); };
    const QString appDir = a.appDir.isEmpty() ? QCoreApplication::applicationDirPath() : a.appDir;
    return app::runProcess({a.commandLine, appDir, seal::makeSealScreen}, platform);
}

// Medians of the seal screen's daily work on demo installations of 10,000 and 100,000
// patients: the search (patient query and fill), a kana index fill, and a change of
// kind to doctors once they are held in memory; and the peak memory of the process.
//
//   bench_seal_search [--sealdemo PATH] [--runs N] [--patients N] [--app-dir DIR]
//
// The installations are written by the demo generator into a temporary folder, unless
// --app-dir names one already written (of the --patients given), which is then reused.

#include "app/globals.h"
#include "controls/recording_platform.h"
#include "seal/seal_screen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <ctime>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

double cpuMs()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) * 1e3 + double(ts.tv_nsec) / 1e6;
}

// Medians of the wall time and of the process's CPU time: on a shared machine the
// second says more about the code.
struct Median {
    double wall;
    double cpu;
};

Median medianMs(int runs, const std::function<void()>& work)
{
    std::vector<double> wall;
    std::vector<double> cpu;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        const double c0 = cpuMs();
        t.start();
        work();
        wall.push_back(double(t.nsecsElapsed()) / 1e6);
        cpu.push_back(cpuMs() - c0);
    }
    std::sort(wall.begin(), wall.end());
    std::sort(cpu.begin(), cpu.end());
    return {wall[wall.size() / 2], cpu[cpu.size() / 2]};
}

// The peak resident memory of this process in MB.
double peakMb()
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    return -1;
}

bool makeDemo(const QString& sealdemo, const QString& dir, int patients)
{
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(sealdemo,
            {QStringLiteral("--out"), dir, QStringLiteral("--patients"), QString::number(patients),
             QStringLiteral("--seed"), QStringLiteral("7"), QStringLiteral("--today"), QStringLiteral("2026/11/21")});
    return p.waitForFinished(-1) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

void line(const char* what, int patients, Median m, const char* target)
{
    std::printf("%-30s %7d patients  median %8.1f ms wall %8.1f ms cpu  (target %s)\n", what, patients, m.wall, m.cpu,
                target);
    std::fflush(stdout);
}

void measure(const QString& dir, int patients, int runs)
{
    controls::RecordingPlatform platform;
    platform.setToday(QDate(2026, 11, 21));
    app::setPlatform(&platform);
    app::gsAppPath = dir;
    app::gnRunMode = 5;

    seal::frmPrintシール screen(platform);
    screen.load();
    if (!platform.transcript().isEmpty())
        std::printf("  the start said: %s\n", platform.transcript().join(QStringLiteral(" / ")).toUtf8().constData());
    std::printf("  rows of this office in the list: %d\n", screen.fpSpread02.MaxRows());

    const bool small = patients <= 10000;
    line("search (query and fill)", patients, medianMs(runs, [&] { screen.btnDisp_Click(); }),
         small ? "<= 80 ms" : "<= 800 ms");
    // Where the time of a search goes.
    line("  of which the patient query", patients, medianMs(runs, [&] { screen.RiyoushaMemorySet(); }), "-");
    line("  of which the fill", patients, medianMs(runs, [&] { screen.fillList(); }), "-");
    line("kana index fill", patients, medianMs(runs, [&] { screen.cmdAnk_Click(1); }), small ? "<= 10 ms" : "none");
    screen.optMst[1].setValue(true);  // the first read of the doctors
    line("change of kind to doctors", patients,
         medianMs(runs,
                  [&] {
                      screen.optMst[0].setValue(true);
                      screen.optMst[1].setValue(true);
                  }),
         "none (two changes, to patients and back; each queries the patients too)");
    screen.optMst[0].setValue(true);
    std::printf("  peak memory so far: %.0f MB%s\n", peakMb(), small ? "" : " (target <= 250 MB)");
    app::setPlatform(nullptr);
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication qapp(argc, argv);
    QString sealdemo = QCoreApplication::applicationDirPath() + QStringLiteral("/../tools/demo/sealdemo");
    int runs = 7;
    QList<int> sizes{10000, 100000};
    QString appDir;
    const QStringList args = QCoreApplication::arguments();
    for (qsizetype i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == QLatin1String("--sealdemo"))
            sealdemo = args[++i];
        else if (args[i] == QLatin1String("--runs"))
            runs = std::max(1, args[++i].toInt());
        else if (args[i] == QLatin1String("--patients"))
            sizes = {args[++i].toInt()};
        else if (args[i] == QLatin1String("--app-dir"))
            appDir = args[++i];
    }
    if (!appDir.isEmpty()) {
        measure(appDir, sizes.first(), runs);
        return 0;
    }
    QTemporaryDir tmp;
    for (int patients : sizes) {
        const QString dir = tmp.path() + QStringLiteral("/demo") + QString::number(patients);
        std::printf("demo installation of %d patients ...\n", patients);
        std::fflush(stdout);
        if (!makeDemo(sealdemo, dir, patients)) {
            std::fprintf(stderr, "bench_seal_search: the demo generator %s failed\n", sealdemo.toUtf8().constData());
            return 1;
        }
        measure(dir, patients, runs);
    }
    return 0;
}

// A print of 10,000 ticked patients: the label records read back from the working
// grid, the label CSV and the engine's script, through the list walk (labels in the
// order of lstCheck) and through the grid walk. Prints the median of each.

#include "app/globals.h"
#include "base/text_codec.h"
#include "controls/grid.h"
#include "controls/recording_platform.h"
#include "controls/static_controls.h"
#include "extract/label_csv.h"
#include "extract/label_records.h"
#include "extract/print_step.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

constexpr int kPatients = 10000;
constexpr int kRuns = 15;

void fillGrid(controls::Grid& g)
{
    g.setReDraw(false);
    for (int row = 1; row <= kPatients; ++row) {
        const QString id = QString::number(100000 + row);
        const QString n = QString::number(row);
        g.setText(1, row, QStringLiteral("1"));
        g.setText(2, row, id);
        g.setText(3, row, id);
        g.setText(4, row, QStringLiteral("山田 太郎") + n + QStringLiteral(" 様"));
        g.setText(5, row, QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"));
        g.setText(8, row, QStringLiteral("100-0001"));
        g.setText(9, row, QStringLiteral("東京都千代田区千代田1-") + n);
        g.setText(10, row, QStringLiteral("メゾン千代田") + n + QStringLiteral("号室"));
        g.setText(11, row, QStringLiteral("03-1234-5678"));
        g.setText(14, row, QStringLiteral("0"));
        g.setText(15, row, QStringLiteral("様"));
        g.setText(16, row, QStringLiteral("0"));
        g.setText(26, row, QStringLiteral("東京都港区芝1-1"));
        g.setText(30, row, QStringLiteral("2"));
        g.setText(32, row, QStringLiteral("領収 花子 様"));
        g.setText(33, row, QStringLiteral("連絡 次郎 様"));
    }
    g.setReDraw(true);
}

// The processor time of this process, which other work on the machine does not swell.
double cpuMs()
{
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return ts.tv_sec * 1000.0 + ts.tv_nsec / 1e6;
}

double medianMs(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace

int main()
{
    QTemporaryDir dir;
    if (!dir.isValid() || !QDir(dir.path()).mkdir(QStringLiteral("TMP"))) return 1;
    QFile ini(dir.path() + QStringLiteral("/Tavrine.ini"));
    if (!ini.open(QIODevice::WriteOnly)) return 1;
    ini.write(base::toCp932(QStringLiteral("SYSTEM_SYS=\\SYS\r\nSYSTEM_TMP=\\TMP\r\n")));
    ini.close();
    app::gsAppPath = dir.path();
    controls::RecordingPlatform platform;
    app::setPlatform(&platform);

    controls::Grid grid(QStringLiteral("fpSpread02"), 33, kPatients);
    grid.setCheckBoxColumn(1);
    fillGrid(grid);
    // The list in an order other than the grid's: every second patient first.
    std::vector<extract::OrderLine> list;
    list.reserve(kPatients);
    for (int pass = 0; pass < 2; ++pass)
        for (int row = 1 + pass; row <= kPatients; row += 2)
            list.push_back({QString::number(100000 + row) + QStringLiteral("     山田 太郎 "), 100000 + row});

    controls::StatusBar status(QStringLiteral("Status"));
    const QString tmp = dir.path() + QStringLiteral("\\TMP\\");
    const QString sys = dir.path() + QStringLiteral("\\SYS\\");

    for (const bool followList : {true, false}) {
        extract::LabelChoices c;
        c.bEnterAdd = followList;
        c.nCheckCount = kPatients;
        c.nStartPos = 3;
        c.office = {QStringLiteral("ひかり鍼灸院"), QStringLiteral("105-0014"), QStringLiteral("港区芝1-1"),
                    QStringLiteral("03-0000-1111"), QStringLiteral("03-0000-2222")};
        c.footnote = QStringLiteral("同意書在中");
        std::vector<double> times;
        std::vector<double> cpu;
        for (int run = 0; run < kRuns; ++run) {
            platform.clearTranscript();
            const double cpuStart = cpuMs();
            const auto start = std::chrono::steady_clock::now();
            const short made = extract::makeLabelRows(tmp + extract::kSealCsvName, grid, list, c,
                                                      [&](const QString& t) { status.setText(t); });
            const extract::PrintSealResult printed = extract::printSeal(0, extract::sealForm(false, 0, 0), sys);
            const auto end = std::chrono::steady_clock::now();
            if (made != 0 || printed.status != 0 || !printed.sErrMsg.isEmpty()) {
                std::fprintf(stderr, "the print failed: %s\n", qPrintable(printed.sErrMsg));
                return 1;
            }
            times.push_back(std::chrono::duration<double, std::milli>(end - start).count());
            cpu.push_back(cpuMs() - cpuStart);
        }
        std::printf("print of %d patients, %s walk: median %.1f ms wall, %.1f ms processor (%d runs)\n", kPatients,
                    followList ? "list" : "grid", medianMs(times), medianMs(cpu), kRuns);
    }
    app::setPlatform(nullptr);
    return 0;
}

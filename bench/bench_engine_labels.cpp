// Label rendering speed: シール.wfd to PDF through wfrfv10 for 100, 1,000 and 10,000
// labels, and the same 2 x 5 sheet through gLabels' batch renderer where it is
// installed (Debian package glabels; skipped without it). Each run is a whole process, as the program starts the
// engine; prints the median wall time and the largest peak memory of the runs.
//
//   bench_engine_labels [--wfrfv10 PATH] [--forms DIR]   (or $SEAL_FORMS_DIR)

#include "base/text_codec.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include <QProcess>

// Peak memory and processor time come from the system's process accounting where
// there is one; elsewhere the runs are timed by the wall clock alone.
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Sample {
    double seconds = 0;
    double cpu = 0;  // user and system time: steadier than wall time on a busy machine
    long peakKb = 0;
    bool ok = false;
};

// Runs a program with its output thrown away; wall time and peak resident memory.
#ifdef Q_OS_UNIX
Sample runOnce(const QString& program, const QStringList& args)
{
    std::vector<QByteArray> store;
    store.push_back(QFile::encodeName(program));
    for (const QString& a : args) store.push_back(QFile::encodeName(a));
    std::vector<char*> argv;
    for (QByteArray& b : store) argv.push_back(b.data());
    argv.push_back(nullptr);

    QElapsedTimer timer;
    timer.start();
    const pid_t pid = fork();
    if (pid == 0) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, 1);
        dup2(null, 2);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    Sample s;
    s.seconds = timer.nsecsElapsed() / 1e9;
    s.peakKb = usage.ru_maxrss;
    s.cpu = usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    s.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return s;
}
#else
Sample runOnce(const QString& program, const QStringList& args)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    p.setStandardOutputFile(QProcess::nullDevice());
    p.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    p.start(program, args);
    const bool finished = p.waitForFinished(-1);
    Sample s;
    s.seconds = timer.nsecsElapsed() / 1e9;
    s.cpu = s.seconds;
    s.ok = finished && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    return s;
}
#endif

struct Result {
    double median = 0;
    double cpuMedian = 0;
    long peakKb = 0;
    bool ok = true;
};

Result measure(const QString& program, const QStringList& args, int runs)
{
    std::vector<double> times;
    std::vector<double> cpu;
    Result r;
    for (int i = 0; i < runs; ++i) {
        const Sample s = runOnce(program, args);
        r.ok = r.ok && s.ok;
        times.push_back(s.seconds);
        cpu.push_back(s.cpu);
        r.peakKb = std::max(r.peakKb, s.peakKb);
    }
    std::sort(times.begin(), times.end());
    std::sort(cpu.begin(), cpu.end());
    r.median = times[times.size() / 2];
    r.cpuMedian = cpu[cpu.size() / 2];
    return r;
}

const char16_t* const kFamily[] = {u"佐藤", u"鈴木", u"高橋", u"田中", u"伊藤",
                                   u"渡辺", u"山本", u"中村", u"小林", u"加藤"};
const char16_t* const kGiven[] = {u"太郎", u"花子", u"一郎", u"美咲", u"健太",
                                  u"由美", u"大輔", u"幸子", u"誠",   u"直美"};
const char16_t* const kTown[] = {u"東京都新宿区西新宿",         u"大阪府大阪市北区梅田",
                                 u"神奈川県横浜市中区山下町",   u"愛知県名古屋市中村区名駅",
                                 u"福岡県福岡市博多区博多駅前", u"北海道札幌市中央区北一条西"};

// The program's label CSV: title line, then one line per label.
QStringList labelLines(int n)
{
    QStringList lines{QStringLiteral("cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,"
                                     "cMst,cKeisho,nRoomNo,nTantouID,拠点名, 送付先郵便番号,送付先住所,拠点電話番号,"
                                     "拠点FAX番号,脚注")};
    for (int i = 0; i < n; ++i) {
        const QString name = QString::fromUtf16(kFamily[i % 10]) + u' ' + QString::fromUtf16(kGiven[(i / 10) % 10]) +
                             QStringLiteral(" 様");
        const QString address = QStringLiteral("%1%2丁目%3番%4号 %5ハイツ%6")
                                    .arg(QString::fromUtf16(kTown[i % 6]))
                                    .arg(i % 5 + 1)
                                    .arg(i % 20 + 1)
                                    .arg(i % 9 + 1)
                                    .arg(i % 3 ? QStringLiteral("グリーン") : QStringLiteral("サンシャイン"))
                                    .arg(100 + i % 400);
        const QString kikan = i % 4 == 0 ? QStringLiteral("医療法人社団さくら会 さくら在宅クリニック") : QString();
        const QStringList fields = {
            name,
            QStringLiteral("サトウ タロウ"),
            kikan,
            QString(),
            QStringLiteral("〒 %1-%2").arg(100 + i % 900).arg(i % 10000, 4, 10, QLatin1Char('0')),
            address,
            QStringLiteral("03-1234-5678"),
            QString(),
            QString(),
            QStringLiteral("0"),
            QStringLiteral("様"),
            QString(),
            QString(),
            QStringLiteral("本店"),
            QStringLiteral("100-0001"),
            QStringLiteral("東京都千代田区丸の内1-1"),
            QStringLiteral("03-0000-0000"),
            QStringLiteral("03-0000-0001"),
            QStringLiteral("同意書在中")};
        QString line = QString::number(i + 1);
        for (const QString& f : fields) line += QStringLiteral(",\"") + f + u'"';
        lines.append(line);
    }
    return lines;
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
}

QByteArray cp932Lines(const QStringList& lines)
{
    QByteArray out;
    for (const QString& l : lines) out += base::toCp932(l) + "\r\n";
    return out;
}

// A gLabels document of the same sheet: 2 x 5 cells of 86.4 x 50.8 mm from
// (18.6, 21.5), the same fields in the same places, merged from a UTF-8 CSV.
QByteArray glabelsDocument(const QString& csv)
{
    struct T {
        double x, y, w, h;
        const char* field;
        double size;
        const char* justify;
    };
    const T fields[] = {{6, 4, 45, 5, "cYubinNo", 10.5, "Left"},  {6, 9.5, 75, 11, "cAddress1", 10.5, "Left"},
                        {6, 21, 75, 5, "cKikan", 10, "Left"},     {6, 26, 75, 5, "cDaihyo", 10, "Left"},
                        {6, 31.5, 75, 10, "cName", 15, "Center"}, {6, 43, 40, 5, "脚注", 9, "Center"}};
    QByteArray objects;
    for (const T& t : fields)
        objects +=
            QStringLiteral("  <Object-text x=\"%1mm\" y=\"%2mm\" w=\"%3mm\" h=\"%4mm\" justify=\"%5\" valign=\"Top\" "
                           "auto_shrink=\"True\" a0=\"1\" a1=\"0\" a2=\"0\" a3=\"1\" a4=\"0\" a5=\"0\">\n"
                           "   <Span font_family=\"IPAexGothic\" font_size=\"%6\" font_weight=\"Regular\" "
                           "font_italic=\"False\" color=\"0x000000ff\" line_spacing=\"1\"><Field name=\"%7\"/></Span>\n"
                           "  </Object-text>\n")
                .arg(t.x)
                .arg(t.y)
                .arg(t.w)
                .arg(t.h)
                .arg(QString::fromLatin1(t.justify))
                .arg(t.size)
                .arg(QString::fromUtf8(t.field))
                .toUtf8();
    return QByteArray("<?xml version=\"1.0\"?>\n<Glabels-document xmlns=\"http://glabels.org/xmlns/3.0/\">\n"
                      " <Template brand=\"Sealprint\" part=\"S10\" size=\"A4\" description=\"2 x 5\">\n"
                      "  <Meta category=\"label\"/>\n"
                      "  <Label-rectangle id=\"0\" width=\"86.4mm\" height=\"50.8mm\" round=\"0mm\" x_waste=\"0mm\" "
                      "y_waste=\"0mm\">\n   <Markup-margin size=\"0mm\"/>\n"
                      "   <Layout nx=\"2\" ny=\"5\" x0=\"18.6mm\" y0=\"21.5mm\" dx=\"86.4mm\" dy=\"50.8mm\"/>\n"
                      "  </Label-rectangle>\n </Template>\n <Objects id=\"0\" rotate=\"False\">\n") +
           objects + " </Objects>\n <Merge type=\"Text/Comma/Line1Keys\" src=\"" + csv.toUtf8() +
           "\"/>\n</Glabels-document>\n";
}

void report(const char* what, int n, const Result& r)
{
    std::printf("%-10s %6d labels  median %7.3f s wall  %7.3f s cpu  peak %7.1f MB%s\n", what, n, r.median, r.cpuMedian,
                r.peakKb / 1024.0, r.ok ? "" : "  (FAILED)");
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QString viewer = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../src/main/wfrfv10"));
    // The forms: --forms, $SEAL_FORMS_DIR, or the source tree's forms/ beside a build
    // folder inside it.
    QString forms = qEnvironmentVariable("SEAL_FORMS_DIR");
    if (forms.isEmpty()) forms = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../../forms"));
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == u"--wfrfv10")
            viewer = args[++i];
        else if (args[i] == u"--forms")
            forms = args[++i];
    }
    if (!QFile::exists(QDir(forms).filePath(QStringLiteral("シール.wfd")))) {
        std::fprintf(stderr, "シール.wfd not found in %s (give --forms)\n", qPrintable(forms));
        return 1;
    }
    forms = QDir(forms).absolutePath();
    if (!QFile::exists(viewer)) {
        std::fprintf(stderr, "wfrfv10 not found at %s (build it, or give --wfrfv10)\n", qPrintable(viewer));
        return 1;
    }
    QTemporaryDir dir;
    const QString glabels = QStandardPaths::findExecutable(QStringLiteral("glabels-3-batch"));
    std::printf("engine: %s\ngLabels: %s\n", qPrintable(viewer),
                glabels.isEmpty() ? "not installed, skipped" : qPrintable(glabels));

    for (int n : {100, 1000, 10000}) {
        const QStringList lines = labelLines(n);
        const QString csv = dir.filePath(QStringLiteral("シール%1.csv").arg(n));
        writeFile(csv, cp932Lines(lines));
        const QString script = dir.filePath(QStringLiteral("WfdCom%1.dat").arg(n));
        writeFile(script, cp932Lines({QStringLiteral("FileName,\"%1/シール.wfd\"").arg(forms),
                                      QStringLiteral("Title,\"シール\""),
                                      QStringLiteral("SetDataText,\"シール\",\"%1\"").arg(csv),
                                      QStringLiteral("PrintPaper, A4"), QStringLiteral("ShowWindow,2")}));
        const QString pdf = dir.filePath(QStringLiteral("engine%1.pdf").arg(n));
        report("wfrfv10", n,
               measure(viewer, {QStringLiteral("/c"), script, QStringLiteral("--pdf"), pdf}, n >= 10000 ? 5 : 7));

        if (!glabels.isEmpty() && n <= 1000) {
            const QString gcsv = dir.filePath(QStringLiteral("glabels%1.csv").arg(n));
            writeFile(gcsv, lines.join(u'\n').toUtf8() + '\n');
            const QString doc = dir.filePath(QStringLiteral("sheet%1.glabels").arg(n));
            writeFile(doc, glabelsDocument(gcsv));
            const QString gpdf = dir.filePath(QStringLiteral("glabels%1.pdf").arg(n));
            report("gLabels", n, measure(glabels, {QStringLiteral("-o"), gpdf, doc}, 3));
        }
    }
    return 0;
}

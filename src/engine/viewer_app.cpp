#include "engine/viewer_app.h"

#include "base/log.h"
#include "base/text_codec.h"
#include "engine/calibration.h"
#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/form.h"
#include "engine/page_output.h"
#include "engine/preview_window.h"
#include "engine/wfd_script.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace engine {

namespace {

enum Exit { kOk = 0, kBadInput = 1, kUsage = 2, kOutputFailed = 3 };

bool displayAvailable()
{
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    return true;
#else
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") || platform.startsWith("minimal")) return false;
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#endif
}

// Chooses the platform before the application exists. With a display the system's
// platform is tried first and the offscreen one stands behind it, so that a display
// that cannot be reached falls back to working headless instead of aborting.
void choosePlatform(bool gui)
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    if (gui) return;
#endif
    if (!gui)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "wayland;xcb;offscreen");
    else
        qputenv("QT_QPA_PLATFORM", "xcb;offscreen");
}

bool onOffscreen() { return QGuiApplication::platformName() == u"offscreen"; }

void printErr(const QString& text) { std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData()); }
void printOut(const QString& text)
{
    std::fprintf(stdout, "%s\n", text.toLocal8Bit().constData());
    std::fflush(stdout);
}

// Says what went wrong where the operator will see it: a box with a display, standard
// error without.
class Reporter {
public:
    explicit Reporter(bool boxes) : boxes_(boxes) {}
    int fail(const QString& text, int code) const
    {
        qCWarning(base::lcEngine).noquote() << "failed with exit code" << code << "-" << text;
        if (boxes_)
            QMessageBox::critical(nullptr, QStringLiteral("印刷エンジン"), text);
        else
            printErr(text);
        return code;
    }

private:
    bool boxes_;
};

// The engine's own log file beside the program's, named after the engine's program.
base::LogFile engineLog(const char* programName)
{
    base::LogOptions options;
    options.fileName = QString::fromLatin1(programName) + QStringLiteral(".log");
    options.consoleLevel = QtCriticalMsg;  // the engine says its faults itself, in a box or on stderr
    return base::LogFile(options);
}

QStringList argList(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i) args.append(QString::fromLocal8Bit(argv[i]));
    return args;
}

int printDirect(Document& doc, const Reporter& report)
{
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return report.fail(QStringLiteral("既定のプリンターがありません。"), kOutputFailed);
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(doc.title());
    doc.setCalibration(Calibration().offset(printer.printerName()));
    printDocument(doc, printer);
    return kOk;
}

int printWithDialog(Document& doc, const Reporter& report)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(doc.title());
    QPrintDialog dialog(&printer);
    dialog.setWindowTitle(doc.title().isEmpty() ? QStringLiteral("印刷") : doc.title());
    dialog.setMinMax(1, doc.nPages());
    if (dialog.exec() != QDialog::Accepted) return kOk;
    doc.setCalibration(Calibration().offset(printer.printerName()));
    const bool range = printer.printRange() == QPrinter::PageRange;
    printDocument(doc, printer, range ? printer.fromPage() : 0, range ? printer.toPage() : 0);
    return kOk;
}

// The joined print starts the joiner and the viewer together; the joiner's form may
// not be there yet when the viewer reads its script.
void waitForJoinedForm(const WfdScript& script)
{
    constexpr int kWaitMs = 5000;
    const QString form = resolvePath(script.formFile);
    if (!form.endsWith(QStringLiteral("tmp.wfd"), Qt::CaseInsensitive)) return;
    QElapsedTimer timer;
    timer.start();
    while (!QFileInfo::exists(form) && timer.elapsed() < kWaitMs) QThread::msleep(100);
}

bool isScriptSwitch(const QString& a) { return a.compare(u"/c", Qt::CaseInsensitive) == 0 || a == u"-c"; }
bool isOwnOption(const QString& a) { return isScriptSwitch(a) || a.startsWith(u"--"); }

// The program writes the script's path unquoted behind "/c", so a folder with a blank
// ("C:\Program Files\...") arrives in pieces: every word up to the engine's next own
// option belongs to the path.
QString pathFrom(const QStringList& args, int& i)
{
    QStringList words;
    while (i + 1 < args.size() && !isOwnOption(args[i + 1])) words.append(args[++i]);
    return words.join(u' ');
}

}  // namespace

std::optional<ViewerArgs> parseViewerArgs(const QStringList& args, QString* error)
{
    ViewerArgs v;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        auto next = [&](QString& into) {
            if (i + 1 >= args.size() || isOwnOption(args[i + 1])) return false;
            into = args[++i];
            return true;
        };
        bool ok = true;
        if (isScriptSwitch(a))
            ok = !(v.script = pathFrom(args, i)).isEmpty();
        else if (a == u"--pdf")
            ok = next(v.pdf);
        else if (a == u"--png")
            ok = next(v.png);
        else {
            if (error) *error = QStringLiteral("知らない引数です: %1").arg(a);
            return std::nullopt;
        }
        if (!ok) {
            if (error) *error = QStringLiteral("%1 の後に値がありません。").arg(a);
            return std::nullopt;
        }
    }
    if (v.script.isEmpty()) {
        if (error) *error = QStringLiteral("使い方: wfrfv10 /c スクリプト [--pdf ファイル] [--png フォルダー]");
        return std::nullopt;
    }
    return v;
}

std::optional<JoinArgs> parseJoinArgs(const QStringList& args, QString* error)
{
    // "OUTPUT.wfd /c SCRIPT", both written unquoted: the words before "/c" are the output.
    const qsizetype sw = std::find_if(args.begin(), args.end(), isScriptSwitch) - args.begin();
    if (sw > 0 && sw + 1 < args.size()) return JoinArgs{args.mid(0, sw).join(u' '), args.mid(sw + 1).join(u' ')};
    if (error) *error = QStringLiteral("使い方: wfrimg10 出力.wfd /c スクリプト");
    return std::nullopt;
}

void joinReports(const QString& scriptPath, const QString& outputPath)
{
    const WfdScript s = readWfdScript(scriptPath);
    if (!s.joined)
        throw EngineError(scriptPath, 0,
                          QStringLiteral("結合印刷のスクリプト (setTitle, setreport) ではありません。"
                                         "スクリプトが読まれる前に書き換えられた可能性があります。"));
    if (s.reports.isEmpty())
        throw EngineError(scriptPath, 0, QStringLiteral("結合する帳票 (setreport) がありません。"));
    JoinedForm joined;
    joined.title = s.title;
    for (const JoinedReport& r : s.reports) {
        if (!QFileInfo::exists(resolvePath(r.form)))
            throw EngineError(scriptPath, r.line, QStringLiteral("フォームファイルが見つかりません: %1").arg(r.form));
        // Check the form now, so that the error names the script line.
        loadForm(resolvePath(r.form));
        if (r.data.isEmpty())
            throw EngineError(scriptPath, r.line,
                              QStringLiteral("この帳票のデータファイル (SetDataText) がありません。"));
        JoinedForm::Report rep;
        rep.form = resolvePath(r.form);
        for (const DataBinding& d : r.data) {
            if (!QFileInfo::exists(resolvePath(d.file)))
                throw EngineError(scriptPath, d.line, QStringLiteral("データファイルが見つかりません: %1").arg(d.file));
            rep.data.append({resolvePath(d.file), d.hasTitle});
        }
        joined.reports.append(rep);
    }
    QSaveFile out(resolvePath(outputPath));
    if (!out.open(QIODevice::WriteOnly) || out.write(joinedFormJson(joined)) < 0 || !out.commit())
        throw EngineError(outputPath, 0, QStringLiteral("結合フォームを書けません。"));
}

int runViewer(int argc, char** argv, const char* programName)
{
    const QStringList args = argList(argc, argv);
    QString usage;
    const std::optional<ViewerArgs> va = parseViewerArgs(args, &usage);
    const bool exportOnly = va && (!va->pdf.isEmpty() || !va->png.isEmpty());
    bool gui = displayAvailable() && !exportOnly;
    choosePlatform(gui);

    std::unique_ptr<QGuiApplication> app;
    if (gui)
        app = std::make_unique<QApplication>(argc, argv);
    else
        app = std::make_unique<QGuiApplication>(argc, argv);
    app->setApplicationName(QString::fromLatin1(programName));
    if (onOffscreen()) gui = false;
    const base::LogFile log = engineLog(programName);
    qCInfo(base::lcEngine).noquote() << programName << "started:" << args.join(u' ');
    const Reporter report(gui);
    if (!va) return report.fail(usage, kUsage);

    std::unique_ptr<Document> doc;
    try {
        const WfdScript script = readWfdScript(resolvePath(va->script));
        if (script.mode == OutputMode::None && !exportOnly)
            throw EngineError(va->script, 0,
                              QStringLiteral("出力の指定 (ShowWindow, PrintOut, PrintOutFromDialog) がありません。"));
        waitForJoinedForm(script);
        doc = std::make_unique<Document>(script, QCoreApplication::applicationDirPath());
    } catch (const EngineError& e) {
        return report.fail(e.text(), kBadInput);
    }

    try {
        if (exportOnly) {
            if (!va->pdf.isEmpty()) writePdf(*doc, va->pdf);
            if (!va->png.isEmpty()) writePngs(*doc, va->png);
            qCInfo(base::lcEngine).noquote() << "exported" << doc->nPages() << "pages";
            return kOk;
        }
        if (!gui) {
            const QString pdf = doc->defaultPdfPath();
            writePdf(*doc, pdf);
            qCInfo(base::lcEngine).noquote() << "wrote" << pdf << "with" << doc->nPages() << "pages";
            printOut(QStringLiteral("PDF を保存しました: %1").arg(QDir::toNativeSeparators(pdf)));
            return kOk;
        }
        switch (doc->mode()) {
        case OutputMode::PrintOut:
            return printDirect(*doc, report);
        case OutputMode::PrintDialog:
            return printWithDialog(*doc, report);
        case OutputMode::Preview:
        case OutputMode::None:
            break;
        }
        PreviewWindow window(*doc, Calibration());
        // The second viewer opens maximised, as the program asks for it.
        if (qstrcmp(programName, "WrVb6Viewer") == 0)
            window.showMaximized();
        else
            window.show();
        return app->exec();
    } catch (const EngineError& e) {
        return report.fail(e.text(), kOutputFailed);
    }
}

int runJoiner(int argc, char** argv)
{
    // The program rewrites the script right after starting us: read it before anything
    // slow, such as bringing up the GUI.
    const QStringList args = argList(argc, argv);
    const base::LogFile log = engineLog("wfrimg10");
    qCInfo(base::lcEngine).noquote() << "wfrimg10 started:" << args.join(u' ');
    QString problem;
    int code = kOk;
    if (const auto ja = parseJoinArgs(args, &problem)) {
        try {
            joinReports(ja->script, ja->output);
        } catch (const EngineError& e) {
            problem = e.text();
            code = kBadInput;
        }
    } else {
        code = kUsage;
    }
    if (code == kOk) {
        qCInfo(base::lcEngine) << "joined form written";
        return kOk;
    }
    if (!displayAvailable()) {
        qCWarning(base::lcEngine).noquote() << "failed with exit code" << code << "-" << problem;
        printErr(problem);
        return code;
    }
    choosePlatform(true);
    QApplication app(argc, argv);
    return Reporter(!onOffscreen()).fail(problem, code);
}

}  // namespace engine

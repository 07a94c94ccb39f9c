#include "engine/wfd_document_impl.h"

#include "base/vb_error.h"
#include "engine/calibration.h"
#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/page_output.h"
#include "engine/preview_window.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace engine {

namespace {

// The number an automation object gives a failure of its own (E_FAIL).
constexpr int kEngineFault = -2147467259;

[[noreturn]] void fail(const QString& text) { throw base::VbError(kEngineFault, text); }

// Runs a step of the engine and turns its error into the object's fault.
template <class Step>
auto trapped(Step&& step) -> decltype(step())
{
    try {
        return step();
    } catch (const EngineError& e) {
        fail(e.text());
    }
}

}  // namespace

WfdDocumentImpl::WfdDocumentImpl(QString appDir) : appDir_(std::move(appDir)) {}

WfdDocumentImpl::~WfdDocumentImpl() = default;

void WfdDocumentImpl::setTitle(const QString& title)
{
    job_.title = title;
    changed_ = true;
}

void WfdDocumentImpl::SetDataText(const QString& dataName, const QString& fileName, const QString& separator,
                                  const QString& quote, int16_t noTitle)
{
    // The engine reads the program's CSV: commas and double quotes only.
    if (!separator.isEmpty() && separator != u",")
        fail(QStringLiteral("区切り文字「%1」のデータは読めません。カンマ区切りだけです。").arg(separator));
    if (!quote.isEmpty() && quote != u"\"")
        fail(QStringLiteral("囲み文字「%1」のデータは読めません。二重引用符だけです。").arg(quote));
    DataBinding b;
    b.name = dataName;
    b.file = fileName;
    b.hasTitle = noTitle == 0;
    job_.data.append(b);
    changed_ = true;
}

void WfdDocumentImpl::setWindowStyle(int16_t style) { windowStyle_ = style; }

void WfdDocumentImpl::Open(const QString& formFile)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        fail(QStringLiteral("帳票を描くには画面のアプリケーション (QGuiApplication) が要ります。"));
    job_.formFile = formFile;
    // Messages name the form: there is no script file behind an in-process job.
    job_.path = formFile;
    opened_ = false;
    doc_.reset();
    read();
    opened_ = true;
}

void WfdDocumentImpl::read()
{
    doc_ = trapped([&] { return std::make_shared<Document>(job_, appDir_); });
    changed_ = false;
}

Document& WfdDocumentImpl::current()
{
    if (!opened_) fail(QStringLiteral("フォームファイルが開かれていません (Open)。"));
    if (changed_) read();
    return *doc_;
}

bool WfdDocumentImpl::headless()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return true;  // no widgets to show
    const QString platform = QGuiApplication::platformName();
    return platform == u"offscreen" || platform == u"minimal";
}

void WfdDocumentImpl::writeHeadless()
{
    Document& doc = current();
    const QFileInfo data(resolvePath(job_.data.front().file));
    const QString pdf = data.dir().filePath(data.completeBaseName() + QStringLiteral(".pdf"));
    trapped([&] { writePdf(doc, pdf); });
    lastPdf_ = pdf;
}

void WfdDocumentImpl::setShowWindow(int16_t show)
{
    if (show == 0) return;
    if (headless()) {
        writeHeadless();
        return;
    }
    current();
    // The window lives on after this object is dropped, as the engine's own window
    // does; it keeps the document with it until it is closed.
    auto* window = new PreviewWindow(*doc_, Calibration());
    window->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(window, &QObject::destroyed, [keep = doc_] {});
    switch (windowStyle_) {
    case 2:
    case 6:
        window->showMinimized();
        break;
    case 3:
        window->showMaximized();
        break;
    case 4:
        window->setAttribute(Qt::WA_ShowWithoutActivating);
        window->show();
        break;
    default:
        window->show();
        break;
    }
}

void WfdDocumentImpl::PrintOutBk(const QString& printerName, int16_t fromPage, int16_t toPage)
{
    if (headless()) {
        writeHeadless();
        return;
    }
    Document& doc = current();
    const QPrinterInfo info =
        printerName.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(printerName);
    if (info.isNull())
        fail(printerName.isEmpty() ? QStringLiteral("既定のプリンターがありません。")
                                   : QStringLiteral("プリンターが見つかりません: %1").arg(printerName));
    if (fromPage < 0 || toPage < 0 || (toPage > 0 && fromPage > toPage))
        fail(QStringLiteral("印刷するページの範囲が正しくありません: %1 から %2").arg(fromPage).arg(toPage));
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(doc.title());
    doc.setCalibration(Calibration().offset(printer.printerName()));
    trapped([&] { printDocument(doc, printer, fromPage, toPage); });
}

void WfdDocumentImpl::PrintOutFromDialog()
{
    if (headless()) {
        writeHeadless();
        return;
    }
    Document& doc = current();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(doc.title());
    QPrintDialog dialog(&printer);
    dialog.setWindowTitle(doc.title().isEmpty() ? QStringLiteral("印刷") : doc.title());
    dialog.setMinMax(1, doc.nPages());
    if (dialog.exec() != QDialog::Accepted) return;  // the operator cancelled: nothing to report
    doc.setCalibration(Calibration().offset(printer.printerName()));
    const bool range = printer.printRange() == QPrinter::PageRange;
    trapped([&] { printDocument(doc, printer, range ? printer.fromPage() : 0, range ? printer.toPage() : 0); });
}

std::unique_ptr<report::WfdDocument> makeWfdDocument()
{
    return std::make_unique<WfdDocumentImpl>(QCoreApplication::applicationDirPath());
}

}  // namespace engine

#include "engine/preview_window.h"

#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/page_output.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>
#include <QToolBar>
#include <QWheelEvent>

namespace engine {

PreviewWindow::PreviewWindow(Document& doc, Calibration calibration, QWidget* parent)
        : QMainWindow(parent), doc_(doc), calibration_(std::move(calibration)),
          printer_(std::make_unique<QPrinter>(QPrinter::HighResolution))
{
    setWindowTitle(doc_.title().isEmpty() ? QStringLiteral("印刷プレビュー")
                                          : doc_.title() + QStringLiteral(" - 印刷プレビュー"));
    doc_.setCalibration(calibration_.offset(printer_->printerName()));

    view_ = new QPrintPreviewWidget(printer_.get(), this);
    setCentralWidget(view_);
    connect(view_, &QPrintPreviewWidget::paintRequested, this, &PreviewWindow::paintPages);
    connect(view_, &QPrintPreviewWidget::previewChanged, this, &PreviewWindow::updatePageLabel);

    QToolBar* bar = addToolBar(QStringLiteral("操作"));
    bar->setMovable(false);
    bar->addAction(QStringLiteral("印刷..."), this, &PreviewWindow::print)->setShortcut(QKeySequence::Print);
    bar->addAction(QStringLiteral("PDF保存..."), this, &PreviewWindow::savePdf);
    bar->addSeparator();
    bar->addAction(QStringLiteral("|<"), view_, [this] { view_->setCurrentPage(1); });
    bar->addAction(QStringLiteral("<"), view_, [this] { view_->setCurrentPage(view_->currentPage() - 1); });
    pageLabel_ = new QLabel(this);
    bar->addWidget(pageLabel_);
    bar->addAction(QStringLiteral(">"), view_, [this] { view_->setCurrentPage(view_->currentPage() + 1); });
    bar->addAction(QStringLiteral(">|"), view_, [this] { view_->setCurrentPage(view_->pageCount()); });
    bar->addSeparator();
    bar->addAction(QStringLiteral("拡大"), view_, [this] { view_->zoomIn(); })
        ->setShortcuts({QKeySequence(Qt::Key_Plus), QKeySequence::ZoomIn});
    bar->addAction(QStringLiteral("縮小"), view_, [this] { view_->zoomOut(); })
        ->setShortcuts({QKeySequence(Qt::Key_Minus), QKeySequence::ZoomOut});
    bar->addAction(QStringLiteral("幅に合わせる"), view_, &QPrintPreviewWidget::fitToWidth);
    bar->addAction(QStringLiteral("全体"), view_, &QPrintPreviewWidget::fitInView);
    bar->addAction(QStringLiteral("100%"), view_, [this] {
        view_->setZoomMode(QPrintPreviewWidget::CustomZoom);
        view_->setZoomFactor(1.0);
    });
    bar->addSeparator();
    bar->addAction(QStringLiteral("印刷位置の調整..."), this, &PreviewWindow::calibrate);
    bar->addSeparator();
    bar->addAction(QStringLiteral("閉じる"), this, &QWidget::close)->setShortcut(QKeySequence(Qt::Key_Escape));

    // Ctrl and the wheel zoom, as in every viewer; the wheel alone scrolls.
    for (QGraphicsView* pages : view_->findChildren<QGraphicsView*>()) pages->viewport()->installEventFilter(this);

    applyZoom(doc_.zoom());
    // A page upright wants a tall window, but never taller than the screen: office
    // screens are 768 or 800 pixels high, and the frame and task bar take their share.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize room = screen ? screen->availableGeometry().size() - QSize(16, 48) : QSize(900, 1000);
    resize(QSize(900, 1000).boundedTo(room));
}

PreviewWindow::~PreviewWindow() = default;

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers() & Qt::ControlModifier) {
            const int steps = wheel->angleDelta().y();
            if (steps > 0)
                view_->zoomIn();
            else if (steps < 0)
                view_->zoomOut();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

// PrintZoom: 0 fits the width, 1 is actual size, 2 (the default) shows the whole page,
// 10 and above is a percentage.
void PreviewWindow::applyZoom(int zoom)
{
    if (zoom == 0) {
        view_->fitToWidth();
    } else if (zoom == 1 || zoom >= 10) {
        view_->setZoomMode(QPrintPreviewWidget::CustomZoom);
        view_->setZoomFactor(zoom == 1 ? 1.0 : zoom / 100.0);
    } else {
        view_->fitInView();
    }
}

void PreviewWindow::paintPages(QPrinter* printer)
{
    try {
        printDocument(doc_, *printer);
    } catch (const EngineError& e) {
        QMessageBox::critical(this, windowTitle(), e.text());
    }
}

void PreviewWindow::updatePageLabel()
{
    pageLabel_->setText(QStringLiteral(" %1 / %2 ページ ").arg(view_->currentPage()).arg(view_->pageCount()));
}

void PreviewWindow::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPrinterName(printer_->printerName());
    printer.setDocName(doc_.title());
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, doc_.nPages());
    if (dialog.exec() != QDialog::Accepted) return;
    const QPointF shown = doc_.calibration();
    doc_.setCalibration(calibration_.offset(printer.printerName()));
    try {
        const bool range = printer.printRange() == QPrinter::PageRange;
        printDocument(doc_, printer, range ? printer.fromPage() : 0, range ? printer.toPage() : 0);
    } catch (const EngineError& e) {
        QMessageBox::critical(this, windowTitle(), e.text());
    }
    doc_.setCalibration(shown);
}

void PreviewWindow::savePdf()
{
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("PDF保存"), doc_.defaultPdfPath(),
                                                      QStringLiteral("PDF (*.pdf)"));
    if (path.isEmpty()) return;
    // A PDF goes to no printer, so no printer's correction belongs in it.
    const QPointF shown = doc_.calibration();
    doc_.setCalibration({});
    try {
        writePdf(doc_, path);
    } catch (const EngineError& e) {
        QMessageBox::critical(this, windowTitle(), e.text());
    }
    doc_.setCalibration(shown);
}

void PreviewWindow::calibrate()
{
    const QString name =
        printer_->printerName().isEmpty() ? QPrinterInfo::defaultPrinterName() : printer_->printerName();
    QDialog dialog(this);
    dialog.setWindowTitle(QStringLiteral("印刷位置の調整"));
    auto* form = new QFormLayout(&dialog);
    form->addRow(new QLabel(QStringLiteral("プリンター: %1").arg(name.isEmpty() ? QStringLiteral("(既定)") : name)));
    const QPointF now = calibration_.offset(name);
    auto spin = [&](double value) {
        auto* s = new QDoubleSpinBox(&dialog);
        s->setRange(-30.0, 30.0);
        s->setDecimals(1);
        s->setSingleStep(0.5);
        s->setSuffix(QStringLiteral(" mm"));
        s->setValue(value);
        return s;
    };
    QDoubleSpinBox* x = spin(now.x());
    QDoubleSpinBox* y = spin(now.y());
    form->addRow(QStringLiteral("右へ (左は -)"), x);
    form->addRow(QStringLiteral("下へ (上は -)"), y);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted) return;
    try {
        calibration_.setOffset(name, QPointF(x->value(), y->value()));
    } catch (const EngineError& e) {
        QMessageBox::critical(this, windowTitle(), e.text());
        return;
    }
    doc_.setCalibration(QPointF(x->value(), y->value()));
    view_->updatePreview();
}

}  // namespace engine

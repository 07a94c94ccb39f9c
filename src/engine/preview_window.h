#pragma once
// The preview: the pages as they will print, page by page or zoomed, with printing,
// saving as PDF, and the printer's position calibration.

#include "engine/calibration.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QPrinter;
class QPrintPreviewWidget;

namespace engine {

class Document;

class PreviewWindow : public QMainWindow {
public:
    PreviewWindow(Document& doc, Calibration calibration, QWidget* parent = nullptr);
    ~PreviewWindow() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void paintPages(QPrinter* printer);
    void updatePageLabel();
    void print();
    void savePdf();
    void calibrate();
    void applyZoom(int zoom);

    Document& doc_;
    Calibration calibration_;
    std::unique_ptr<QPrinter> printer_;
    QPrintPreviewWidget* view_ = nullptr;
    QLabel* pageLabel_ = nullptr;
};

}  // namespace engine

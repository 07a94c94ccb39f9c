#pragma once
// The engine's document object for the in-process driver (report::cls_WfdPrint): the
// members set up one job as the lines of WfdCom.dat do, Open reads the form and data
// into a Document, and the outputs preview or print it in this process.
//
// Where the process has no display (the offscreen platform) or no widgets, every
// output writes the pages to a PDF beside the first data file, named after it, as the
// viewer program does without a display.

#include "engine/wfd_script.h"
#include "report/wfd_document.h"

#include <QString>

#include <memory>

namespace engine {

class Document;

class WfdDocumentImpl : public report::WfdDocument {
public:
    // appDir: where the "forms" folder is looked for when a form is not where the
    // caller says.
    explicit WfdDocumentImpl(QString appDir);
    ~WfdDocumentImpl() override;

    void setTitle(const QString& title) override;
    void SetDataText(const QString& dataName, const QString& fileName, const QString& separator, const QString& quote,
                     int16_t noTitle) override;
    void setWindowStyle(int16_t style) override;
    void Open(const QString& formFile) override;
    void setShowWindow(int16_t show) override;
    void PrintOutBk(const QString& printerName, int16_t fromPage, int16_t toPage) override;
    void PrintOutFromDialog() override;

    // The job as read by the last Open; none before.
    const Document* document() const { return doc_.get(); }
    // The PDF the last output wrote where there is no display; empty otherwise.
    const QString& lastPdf() const { return lastPdf_; }

private:
    // The document for an output: read again when the job changed after Open.
    Document& current();
    void read();
    // True where no window can be shown: no display, or no widgets in this process.
    static bool headless();
    // Writes the pages to the PDF named after the first data file, beside it.
    void writeHeadless();

    QString appDir_;
    WfdScript job_;
    int16_t windowStyle_ = 1;
    bool opened_ = false;
    bool changed_ = false;
    std::shared_ptr<Document> doc_;  // shared with an open preview window
    QString lastPdf_;
};

// The maker the program registers with report::registerWfdDocument: forms are looked
// for beside the running program.
std::unique_ptr<report::WfdDocument> makeWfdDocument();

}  // namespace engine

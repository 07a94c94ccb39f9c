#pragma once
// The report engine's document object, "wfrfv.Document.1", as cls_WfdPrint drives it in
// the program's own process: the same commands as the lines of WfdCom.dat, given as
// properties and methods. The core library only declares it; the engine library
// implements it, and the program registers that implementation at start. Where nothing
// is registered (the scenario runner, tests of the core) the object cannot be created,
// as on a machine without the engine.
//
// Every member reports its fault as base::VbError, as an automation object raises one.

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

namespace report {

inline const QString kWfdDocumentProgId = QStringLiteral("wfrfv.Document.1");

class WfdDocument {
public:
    virtual ~WfdDocument() = default;

    // Property Title: the job's name, shown by the preview and given to the printer.
    virtual void setTitle(const QString& title) = 0;
    // Binds a CSV data file to the form under a data name. An empty separator and quote
    // mean the comma and the double quote; noTitle 1 says the file has no title line,
    // so its columns bind by position.
    virtual void SetDataText(const QString& dataName, const QString& fileName, const QString& separator,
                             const QString& quote, int16_t noTitle) = 0;
    // Property WindowStyle: how the preview window comes up (the program-start styles:
    // 2 minimised, 3 maximised, others normal).
    virtual void setWindowStyle(int16_t style) = 0;
    // Opens the form file and reads the data bound so far against it.
    virtual void Open(const QString& formFile) = 0;
    // Property ShowWindow: a value other than 0 shows the preview.
    virtual void setShowWindow(int16_t show) = 0;
    // Prints without a dialog on the named printer (empty: the default one), pages
    // fromPage to toPage (0: from the first, to the last).
    virtual void PrintOutBk(const QString& printerName, int16_t fromPage, int16_t toPage) = 0;
    // Prints after the operator has chosen printer and pages in the print dialog.
    virtual void PrintOutFromDialog() = 0;
};

using WfdDocumentMaker = std::function<std::unique_ptr<WfdDocument>()>;

// Registers the maker of the document object; an empty maker takes it away again.
void registerWfdDocument(WfdDocumentMaker maker);

// Creates the object named progId: a fault (429) when no maker is registered under
// that name, as the system raises it for an automation object that is not installed.
std::unique_ptr<WfdDocument> createWfdDocument(const QString& progId);

}  // namespace report

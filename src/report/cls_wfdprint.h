#pragma once
// Printing through the engine's document object in this process, instead of a command
// script and a started program (cls_WfdPrintExe). One object serves one print job:
// iInit, iSetDataText once per data file, iOpen with the form file, then one of
// iPreview, iPrintBk, iPrintDialog.
//
// Faults of the document object are trapped and kept in sErrMsg as "(", the number,
// ")" and the description. Only iInit says so in its result; the other operations
// return nothing a caller can use, so a caller reads sErrMsg.

#include "report/wfd_document.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace report {

class cls_WfdPrint {
public:
    QString sErrMsg;

    // Creates the document object "wfrfv.Document.1" and sets its Title when title is
    // not empty. 0, or -1 when the object cannot be made or refuses the title.
    int16_t iInit(const QString& title);
    // Binds a data file with a title line; always 0.
    int16_t iSetDataText(const QString& dataName, const QString& fileName);
    // Binds a data file without a title line; always 0.
    int16_t iSetDataTextNoTitle(const QString& dataName, const QString& fileName);
    // WindowStyle 4, then Open with the form file.
    void iOpen(const QString& wfdFile);
    // ShowWindow 2: the preview.
    void iPreview();
    // Direct print on the default printer: PrintOutBk("", 0, 0).
    void iPrintBk();
    void iPrintDialog();

    // The document object, from iInit until this object is dropped.
    WfdDocument* objDocument() const { return objDocument_.get(); }

private:
    // Runs one call on the document object; its fault goes to sErrMsg. False after a
    // fault.
    template <class Call>
    bool call(Call&& c);

    std::unique_ptr<WfdDocument> objDocument_;
};

}  // namespace report

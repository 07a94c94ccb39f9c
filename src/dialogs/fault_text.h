#pragma once
// The side screens and pickers word a caught fault in three lines: the routine's own
// text, the fault's number and its description, each on a line of its own. Routines
// with a status keep the text; handlers show it in a critical box.

#include "base/vb_error.h"

#include <QString>

namespace dialogs {

// routine, CR LF, number, CR LF, description.
QString faultLines(const QString& routine, const base::VbError& fault);

// Shows faultLines in a critical box with the platform's own title.
void showFault(const QString& routine, const base::VbError& fault);
// Shows a text in a critical box with the platform's own title.
void showText(const QString& text);

// Runs a handler body; a fault shows its box under the handler's routine name and the
// rest of the body is skipped.
template <class Body>
void guarded(const QString& routine, Body&& body)
{
    try {
        body();
    } catch (const base::VbError& fault) {
        showFault(routine, fault);
    }
}

// As guarded, for a handler whose box words the fault its own way.
template <class Wording, class Body>
void guardedWith(Wording&& wording, Body&& body)
{
    try {
        body();
    } catch (const base::VbError& fault) {
        showText(wording(fault));
    }
}

// Runs a routine with a status; a fault leaves faultLines in sErrMsg and gives -1.
template <class Body>
short guardedStatus(const QString& routine, QString& sErrMsg, Body&& body)
{
    try {
        return body();
    } catch (const base::VbError& fault) {
        sErrMsg = faultLines(routine, fault);
        return -1;
    }
}

}  // namespace dialogs

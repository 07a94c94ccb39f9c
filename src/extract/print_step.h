#pragma once
// The print step: the form of the chosen sheet or envelope, and the calls on the
// report viewer driver that write WfdCom.dat and start the engine on the label CSV.

#include <QString>

namespace extract {

// The form, title and data of one print: the form file lies in the system folder,
// the data file in the temporary folder.
struct SealForm {
    QString wfdFile;
    QString title;
    QString dataName;
    QString dataFile;
};

// The form by print mode: labels by the row of cmbSealType, envelopes by the row of
// cmbHutou (any row but 0, 2 and 3 gives the 角形2号 form).
SealForm sealForm(bool envelope, int sealTypeIndex, int hutouIndex);

// What printSeal did, for the caller and for tests: the status (1 until the engine
// was called, then 0) and the driver's fault text, which nothing shows.
struct PrintSealResult {
    short status = 1;
    QString sErrMsg;
};

// printSeal: iInit with sysPath + the form and its title; if that worked, slot 1 gets
// the data name and file; mode 1 previews in the second viewer, any other mode prints
// through the engine's print dialog on paper 0.
PrintSealResult printSeal(short mode, const SealForm& form, const QString& sysPath);

}  // namespace extract

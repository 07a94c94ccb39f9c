#pragma once
// The addressees of progress reports over a month range: doctors, care managers or
// facilities of the patients with reports, or the medical institutions behind the
// consents whose need of treatment ends in the range.

#include "data/ct_adodb.h"
#include "selection/consent_row.h"

namespace selection {

// iKeikaMode: 0 doctors, 1 care managers, 2 medical institutions, 3 facilities.
struct KeikaCondition {
    short iKeikaMode = 0;
    QString sFromMonth;  // "yyyy/mm"
    QString sToMonth;
    qint32 nStaffNo = 0;
    QDate tFrom;  // first of the first month
    QDate tTo;    // last of the last month
};

QString sqlKeikaData(const KeikaCondition& c);

// Runs the query with a time-out of 120 seconds: 0 with rows replaced; 1 no rows
// (modes 0, 2, 3), 2 no rows (mode 1), -1 failure; sErrMsg holds the text to show.
qint32 iGetKeikaData(data::cT_ADODB& db, const KeikaCondition& c, ConsentRows& rows, QString& sErrMsg);

}  // namespace selection

#pragma once
// Which consents run out in an output month, and the dates the ledger and the seal
// screen work from. A consent holds to the end of a month that depends on the half of
// the month it was signed in, so the consents ending in one month are those signed in
// one range starting on a 16th (deformity correction: one calendar month).

#include "data/ct_adodb.h"
#include "selection/consent_row.h"

namespace selection {

// The months of a period choice: index 0 three, 1 six, 2 one.
short nKikanMonthsOf(short iKikan);

struct DateRange {
    QDate tFrom;  // inclusive
    QDate tTo;    // exclusive
};
// The range of consent dates for an output month (its day is ignored).
DateRange consentDateRange(const QDate& outputMonth, short iSejutsu, short nKikanMonths);

// The extraction statement; staffNo 0 or below: every staff member.
QString sqlKanjaData(const DouiCondition& c, qint32 staffNo);

// Calendar months from one date to another: years times twelve plus months.
int monthsBetween(const QDate& from, const QDate& to);

// The dates of one row. First pass: from the base text by the base kind; second pass:
// by the kind of treatment, from the consent date.
struct ConsentDates {
    QString DouiKigen;
    QString ShinDouiDay;
    short nKeika = 0;
};
// syoryoDay: the first treatment day, null (invalid) when unset.
ConsentDates firstDatePass(const QString& baseText, short iKijun, short nKikanMonths, const QDate& syoryoDay);
// Applies the second pass to dates; kijunDay null (invalid) leaves massage dates as
// the first pass made them.
void secondDatePass(ConsentDates& dates, short iSejutsu, const QDate& kijunDay);

// A doctor's name or institution as the telephone lookup compares it: trimmed, made
// full-width, every blank of either width removed.
QString normaliseDoctorText(const QString& text);

// The telephone number of the first DOCTOR row whose name and institution match, or
// empty text. A failed read leaves the wrapper's text in sErrMsg; a fault leaves its
// three lines there. Neither stops the caller.
QString csGetIsiTel(data::cT_ADODB& db, const QString& name, const QString& kikan, QString& sErrMsg);

// Runs the extraction on db: 0 with rows replaced, 1 no rows (ledger), 2 no rows
// (seal), -1 failure; on any status but 0 sErrMsg holds the text to show and rows
// stay as they were.
qint32 iGetKanjaData(data::cT_ADODB& db, const DouiCondition& c, qint32 staffNo, ConsentRows& rows, QString& sErrMsg);

}  // namespace selection

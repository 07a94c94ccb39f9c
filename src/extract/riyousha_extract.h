#pragma once
// The patients of this office with every address a label may want and the count of
// their services in one month: the statement, the read into memory, and the routine
// the search calls.

#include <QDate>
#include <QString>

#include <vector>

namespace extract {

// One patient as the seal screen holds it. Fixed-width fields keep their blank
// padding; the fill trims them. Dates that were null stay at day 0 (1899/12/30).
struct RiyoushaSealRow {
    qint32 nIDNo = 0;
    QString cName;
    QString cNameKana;
    QDate tBirthday = QDate(1899, 12, 30);
    QString cYubinNo = QString(8, u' ');
    QString cAdress1;
    QString cAdress2;
    QString cTelNo = QString(14, u' ');
    QString cFaxNo = QString(14, u' ');
    QString cMobNo = QString(14, u' ');
    QDate tExpireDay = QDate(1899, 12, 30);
    qint32 nRoomNo = 0;
    QString cAdress3;
    QString cYubinNo2 = QString(8, u' ');
    QString cYubinNo3 = QString(8, u' ');
    // The application form's recipient: no statement selects it, so it stays empty.
    QString cYubinNoS0Sinsei;
    QString cJusyo1S0Sinsei;
    QString cJusyo2S0Sinsei;
    QString cYubinNoS0Ryosyu;
    QString cJusyo1S0Ryosyu;
    QString cJusyo2S0Ryosyu;
    QString cYubinNoS0Renraku;
    QString cJusyo1S0Renraku;
    QString cJusyo2S0Renraku;
    QString jisseki_ct;  // empty when the patient had no service in the month
    QString cAtenaS0Ryosyu;
    QString cAtenaS0Renraku;
};

// The patients in memory. The array holds one element more than there are patients:
// the upper bound (size() - 1) is the count, and the last element stays empty.
using RiyoushaArray = std::vector<RiyoushaSealRow>;

// The patient statement for one office and branch, with the month span around
// tMonthStart (the first of the month) and the collection filter of cmbKaisyu's list
// index (1 and 2 narrow, anything else adds nothing).
QString csRiyoushaSql(short office, short branch, const QDate& tMonthStart, int kaisyuIndex);

// What the extraction reads from the screen.
struct RiyoushaChoice {
    bool jissekiTicked = false;  // chkJisseki
    QDate jissekiYm;             // imJissekiYm; invalid when the control is empty
    int kaisyuIndex = -1;        // cmbKaisyu's list index
};

// Runs sSQL on the database of adodb.ini and replaces aRiyousha with its rows.
// -1 on success, 0 on failure (connection text missing: no message; connection or
// query failure: the box "getRiyoushaData_SEAL() でエラー" with the reason).
short getRiyoushaData_SEAL(const QString& sSQL, RiyoushaArray& aRiyousha);

// The search's patient extraction. -1 unless nothing could be extracted for a reason
// the operator must correct (no month while chkJisseki is ticked) or a fault; a failed
// read shows its box, sets nCloseState to 1 and still answers -1, so that the search
// goes on with the rows it holds.
short RiyoushaMemorySet(const RiyoushaChoice& choice, RiyoushaArray& aRiyousha, short& nCloseState);

// The connection text of adodb.ini in the program's folder, cut at NUL and
// right-trimmed; empty when the file or the key is missing.
QString csConnectionText();

}  // namespace extract

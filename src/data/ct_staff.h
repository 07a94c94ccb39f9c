#pragma once
// Practitioners and other staff (STAFF): cD_STAFF holds one row, cT_STAFF reads rows
// of this office (or of every office) into an array and writes single rows back.

#include "data/entity_support.h"

#include <QString>

namespace data {

class cD_STAFF {
public:
    QString cAdress1;
    QString cAdress2;
    QString cFaxNo;
    QString cKaiNo;
    QString cKaiNo2;
    QString cKaiNo3;
    QString cMobNo;
    QString cName;
    QString cNameKana;
    QString cNameRyaku;
    QString cRken;
    QString cRno;
    QString cTelNo;
    QString cYubinNo;
    // 0 (the default) reads only current staff.
    short iChusiFlg = 0;
    short iSexKubun = 0;
    short iShikakuKubun = 0;
    short iSyokushuKubun = 0;
    short iYaku = 0;
    qint32 nIDNo = 0;
    // From here on the long form of the grid read (see cT_STAFF::iInit).
    QString cEmail;
    short iTecAbi = 0;
    short iSpeechAbi = 0;
    QString cPhysical;
    short iClaimRate = 0;
    QString cSikaku;
    QString cTourokuNo;
    QString cSmileCd;
    // The date columns tBirthday, tKousinDay, tNyusyaDay, tKisanDay, tRday and
    // tTourokuDay, as text.
    QString sBirthday;
    QString sKousinDay;
    QString sNyusyaDay;
    QString sKisanDay;
    QString sRday;
    QString sTourokuDay;
    QString cPcName;
    QString tUpDateTime;
    QString cTourokuNo2;
    short iVehicleType = 0;
    QString cVehicleNumber;
    QString cVehicleComment;
    QString cEmployeeNumber;
    short iLookAllRiyousya = 0;
    short iWebLicense = 0;
    short iLookCharge = 0;
    short iStaffHokenTouroku = 0;
    QString cShikaiNo;
    QString cShikaiNo_Josei;
    short iContractType = 0;
    double nLat = 0;
    double nLon = 0;
    QString cIninTourokuNo;
    short iIninTourokuChk = 0;
    short iKanriSekininFlg = 0;

    // The office of the row and its name: filled by the read over all offices only.
    short iKyotenCd = 0;
    short iKyotenEb = 0;
    QString cKyotenName;
};

class cT_STAFF : public entity::TableClass<cT_STAFF, cD_STAFF> {
public:
    cD_STAFF& clsSTAFF(qint32 index) { return table_.at(index); }
    // Keeps the database object, empties the array, and switches the grid reads to
    // their long form: the columns from cEmail on.
    short iInit(cT_ADODB& db);
    // This office's staff: current ones when the filter's iChusiFlg is 0, nIDNo where
    // above 0, names containing cName and cNameKana where set; by nIDNo.
    short iDataReadGrid(const cD_STAFF& filter);
    // iDataRead (TableClass): The full row of nIDNo (-1 or below: any) of this office, and of the name cName
    // where set.
    // iDataReadChk (TableClass): As iDataRead, but every row except the filter's nIDNo: the duplicate check.
    // iDataReadGrid_Jouken (TableClass): This office's staff by nIDNo above 0 and names containing cName and cNameKana.
    // How many staff other than the row's nIDNo carry its cName, over every office.
    short iChkStaffName(const cD_STAFF& row, qint32& nCnt);
    // The full row of the filter's nIDNo in this office.
    short iDataIdentChk(const cD_STAFF& filter);
    // The grid read over every office, with each office's name, ordered by office
    // and nIDNo.
    short iDataReadGrid_AllKyoten(const cD_STAFF& filter);

    // iDataInsert, iDataUpdate and iData削除 (TableClass) write one row of this office: in a transaction of its own
    // when bTrans, else in the caller's. An absent row fails with "STAFFが無効です。". A delete also logs the row in
    // STAFF_DELETE_LOG, with the login id of "loginuser.cid", in the same transaction. With the suite's map switch on,
    // an insert or update also keeps the row's map entry.

    bool bLongForm() const { return bLongForm_; }

    static QString sqlDataReadGrid(const cD_STAFF& filter, bool bLongForm);
    static QString sqlDataRead(const cD_STAFF& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_STAFF& filter);
    static QString sqlChkStaffName(const cD_STAFF& row);
    static QString sqlDataIdentChk(const cD_STAFF& filter);
    static QString sqlDataReadGrid_AllKyoten(const cD_STAFF& filter, bool bLongForm);

    static const std::vector<entity::Column<cD_STAFF>>& columns();
    static const entity::TableSpec<cD_STAFF>& tableSpec();
    // The columns before cEmail, and those from cEmail on.
    static const QStringList& shortColumns();
    static const QStringList& longColumns();

private:
    QStringList gridNames() const;

    bool bLongForm_ = false;
};

}  // namespace data

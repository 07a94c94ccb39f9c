#pragma once
// Application form layouts (SHINSEISYO): cD_SHINSEISYO holds one row, cT_SHINSEISYO
// reads this office's rows into an array and writes single rows back.

#include "data/entity_support.h"

#include <QString>

namespace data {

class cD_SHINSEISYO {
public:
    qint32 nIDNo = 0;
    QString cFileName;
    QString cDispName;
    short iSejutsuKubun = 0;
    short iHokenType = 0;
    short iDelFlg = 0;
    short iSinseiTP = 0;
    short iSoufushoTP = 0;
    short iDuplexFlg = 0;
    short iStateNo = 0;
    short iRiyouHokenKbn = 0;
    QString tUpDateTime;
    short iPrintType = 0;
    short iKubun = 0;
    short iKanagawaStaffPrint = 0;
    short iJoseiFutanKiriage = 0;
    short iTekiyouStaff = 0;
};

class cT_SHINSEISYO : public entity::TableClass<cT_SHINSEISYO, cD_SHINSEISYO> {
public:
    cD_SHINSEISYO& clsSHINSEISYO(qint32 index) { return table_.at(index); }
    // This office's layouts not deleted: of iPrintType and iStateNo where above 0;
    // by nIDNo.
    short iDataReadGrid(const cD_SHINSEISYO& filter);
    // iDataRead (TableClass): This office's rows of nIDNo (-1 or below: any).
    // iDataReadChk (TableClass): As iDataRead, but every row except the filter's nIDNo: the duplicate check.
    // iDataReadGrid_Jouken (TableClass): This office's rows by nIDNo above 0 and display names containing cDispName.

    // iDataInsert, iDataUpdate and iData削除 (TableClass) write one row of this office: in a transaction of its own
    // when bTrans, else in the caller's. An absent row fails with "SHINSEISYOが無効です。".

    static QString sqlDataReadGrid(const cD_SHINSEISYO& filter);
    static QString sqlDataRead(const cD_SHINSEISYO& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_SHINSEISYO& filter);

    static const std::vector<entity::Column<cD_SHINSEISYO>>& columns();
    static const entity::TableSpec<cD_SHINSEISYO>& tableSpec();
};

}  // namespace data

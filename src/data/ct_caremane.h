#pragma once
// Care managers (CAREMANE): cD_CAREMANE holds one row with the facility and the office
// it belongs to, taken from two joins on SISETSU; cT_CAREMANE reads rows into an array
// and writes single rows back. Care managers are read over every office: only the
// search with conditions and the highest number are bound to this office.

#include "data/entity_support.h"

#include <QString>

namespace data {

class cD_CAREMANE {
public:
    QString cAdress1;
    QString cAdress2;
    QString cAdressKana;
    QString cFaxNo;
    QString cMobNo;
    QString cMail;
    QString cName;
    QString cNameKana;
    QString cTelNo;
    QString cYubinNo;
    qint32 nIDNo = 0;
    qint32 iSisetsuCode = 0;
    QString cPcName;
    QString tUpDateTime;
    // 0 (the default) reads only care managers still at work.
    short iChusiFlg = 0;
    // The date column tBirthday, as text.
    QString sBirthday;
    short iSexKubun = 0;
    qint32 iJigyosyoCode = 0;

    // From the facility (SISETSU by iSisetsuCode) and the office (SISETSU by
    // iJigyosyoCode); empty where none matches.
    QString SISETSUSHAMEI;
    QString SISETSUSHURUI;
    QString JIGYOSYOSHAMEI;
    QString JIGYOSYOSHURUI;
    QString JIGYOSYOADD1;
    QString JIGYOSYOADD2;
};

class cT_CAREMANE : public entity::TableClass<cT_CAREMANE, cD_CAREMANE> {
public:
    cD_CAREMANE& clsCAREMANE(qint32 index) { return table_.at(index); }
    // Every office's care managers: those at work when the filter's iChusiFlg is 0;
    // nIDNo, iSisetsuCode, iJigyosyoCode where above 0; names containing cName and
    // cNameKana where set.
    short iDataReadGrid(const cD_CAREMANE& filter);
    // iDataRead (TableClass): The one care manager of the filter's nIDNo.
    // iDataReadChk (TableClass): Every care manager but the filter's nIDNo: the duplicate check.
    // iDataReadGrid_Jouken (TableClass): This office's care managers by nIDNo above 0 and names containing cName and
    // cNameKana where set.

    // iDataInsert, iDataUpdate and iData削除 (TableClass) write one row of this office: in a transaction of its own
    // when bTrans, else in the caller's. An absent row fails with "CAREMANEが無効です。". After a change of the care
    // manager: the name, telephone and facility that this office's patients' RIYOUSHA_SUB rows copy from it, then those
    // patients' time stamp, as one write.
    short iDataUpdate_ToRiyousha(const cD_CAREMANE* row, bool bTrans);

    static QString sqlDataReadGrid(const cD_CAREMANE& filter);
    static QString sqlDataRead(const cD_CAREMANE& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_CAREMANE& filter);
    static QString sqlUpdateRiyoushaSub(const cD_CAREMANE& row);
    static QString sqlStampRiyousha(const cD_CAREMANE& row);

    static const std::vector<entity::Column<cD_CAREMANE>>& columns();
    static const entity::TableSpec<cD_CAREMANE>& tableSpec();
};

}  // namespace data

#pragma once
// Facilities and medical institutions (SISETSU, written "Sisetsu" in the statements):
// cD_SISETSU holds one row, cT_SISETSU reads rows into an array and writes single
// rows back. The grid read spans every office; the kind of institution tells
// facilities (iKikanShubetsu 1) from medical institutions (2).

#include "data/entity_support.h"

#include <QString>

namespace data {

class cD_SISETSU {
public:
    QString cAddress1;
    QString cAddress2;
    QString cAddressKana;
    QString cDaihyo;
    QString cDaihyoKana;
    QString cFaxNo;
    QString cShamei1;
    QString cShamei2;
    QString cShameiKana1;
    QString cShameiKana2;
    QString cTelNo;
    QString cYubinNo;
    QString cSisetsuType;
    qint32 nIDNo = 0;
    double nLat = 0;
    double nLon = 0;
    QString cPcName;
    QString tUpDateTime;
    short iKikanShubetsu = 0;
    QString cDouiIrai;
    QString cComment;
    qint32 nColorCode = 0;
    short iColorIndex = 0;
    QString cShamei1Ryaku;
    short iPaymentType = 0;
};

class cT_SISETSU : public entity::TableClass<cT_SISETSU, cD_SISETSU> {
public:
    cD_SISETSU& clsSisetsu(qint32 index) { return table_.at(index); }
    // Every office's rows: nIDNo and iKikanShubetsu where above 0, names containing
    // cShamei1 and cShameiKana1, kinds containing cSisetsuType where set; by nIDNo.
    short iDataReadGrid(const cD_SISETSU& filter);
    // iDataRead (TableClass): This office's rows of nIDNo (-1 or below: any) and of cSisetsuType where set.
    // iDataReadChk (TableClass): As iDataRead, but every row except the filter's nIDNo: the duplicate check.
    // iDataReadGrid_Jouken (TableClass): This office's rows by nIDNo above 0 and names containing cShamei1 and
    // cShameiKana1.

    // iDataInsert, iDataUpdate and iData削除 (TableClass) write one row of this office: in a transaction of its own
    // when bTrans, else in the caller's. An absent row fails with "Sisetsuが無効です。". A delete also logs the row in
    // SISETSU_DELETE_LOG, with the login id of "loginuser.cid", in the same transaction. With the suite's map switch
    // on, an insert or update also keeps the row's map entry.

    // After a change of the facility, the copies of its data elsewhere, each as one
    // write; an absent row fails with "SISETUが無効です。".
    // The referral telephone in this office's RIYOUSHA_SUB rows, and those patients'
    // time stamp.
    short iDataUpdate_ToRiyousha(const cD_SISETSU* row, bool bTrans);
    // The address block of the facility's care managers, their telephone in the
    // patients' RIYOUSHA_SUB rows, and those patients' time stamp.
    short iDataUpdate_ToCareMane(const cD_SISETSU* row, bool bTrans);
    // The institution's name and address in SOUDAN, and its time stamp.
    short iDataUpdate_ToSoudan(const cD_SISETSU* row, bool bTrans);
    // The institution's name and address in DOCTOR, then the consent doctor's
    // institution and address of the patients whose first or second doctor works there.
    short iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU* row, bool bTrans);

    static QString sqlDataReadGrid(const cD_SISETSU& filter);
    static QString sqlDataRead(const cD_SISETSU& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_SISETSU& filter);
    // The statements of the cascades, in the order they run.
    static QStringList sqlToRiyousha(const cD_SISETSU& row);
    static QStringList sqlToCareMane(const cD_SISETSU& row);
    static QStringList sqlToSoudan(const cD_SISETSU& row);
    static QStringList sqlToRiyousha_Iryou(const cD_SISETSU& row);

    static const std::vector<entity::Column<cD_SISETSU>>& columns();
    static const entity::TableSpec<cD_SISETSU>& tableSpec();
};

}  // namespace data

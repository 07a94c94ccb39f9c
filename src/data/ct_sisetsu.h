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

class cT_SISETSU {
public:
    const QString& sErrMsg() const { return table_.sErrMsg(); }
    cD_SISETSU& clsSisetsu(qint32 index) { return table_.at(index); }
    qint32 nデータ数() const { return table_.count(); }

    short iGetComputerName(QString& csName) { return entity::iGetComputerName(csName); }
    short iInit(cT_ADODB& db) { return table_.iInit(db); }
    // The highest nIDNo of this office, 0 when it has none.
    short iGetMaxIDNo(qint32& nMaxID);
    // Every office's rows: nIDNo and iKikanShubetsu where above 0, names containing
    // cShamei1 and cShameiKana1, kinds containing cSisetsuType where set; by nIDNo.
    short iDataReadGrid(const cD_SISETSU& filter);
    // This office's rows of nIDNo (-1 or below: any) and of cSisetsuType where set.
    short iDataRead(const cD_SISETSU& filter);
    // As iDataRead, but every row except the filter's nIDNo: the duplicate check.
    short iDataReadChk(const cD_SISETSU& filter);
    // This office's rows by nIDNo above 0 and names containing cShamei1 and
    // cShameiKana1.
    short iDataReadGrid_Jouken(const cD_SISETSU& filter);

    static QString sqlGetMaxIDNo();
    static QString sqlDataReadGrid(const cD_SISETSU& filter);
    static QString sqlDataRead(const cD_SISETSU& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_SISETSU& filter);

    static const std::vector<entity::Column<cD_SISETSU>>& columns();

private:
    entity::RowTable<cD_SISETSU> table_;
};

}  // namespace data

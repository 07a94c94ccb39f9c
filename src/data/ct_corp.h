#pragma once
// The clinic's own offices (CORP): cD_CORP holds one row, cT_CORP reads rows of this
// office into an array and writes single rows back. cT_CORP does not connect by
// itself: the caller connects a cT_ADODB and hands it to iInit.

#include "data/entity_support.h"

#include <QString>

namespace data {

class cD_CORP {
public:
    QString cHokenTourokuKubetsu;
    QString cJigyousyoNo2;
    QString cJigyouReceiptName;
    QString cKinyuNo;
    QString cKinyuSitenNo;
    QString cJigyousyoNo;
    QString cAddress1;
    QString cAddress2;
    QString cAddressKana;
    QString cDaihyo;
    QString cDaihyoKana;
    QString cFaxNo;
    QString cKinyuName;
    QString cKinyuSiten;
    QString cKozaBangou;
    QString cKozaKana;
    QString cKozaMeigi1;
    QString cKozaMeigi2;
    QString cShamei1;
    QString cShamei2;
    QString cShameiKana1;
    QString cShameiKana2;
    QString cTelNo;
    QString cYubinNo;
    short iKinSiten = 0;
    short iKinSyubetsu = 0;
    short iKozaKubun = 0;
    short iKozaType = 0;
    // Also a filter of iDataRead: -1 or below leaves the column free.
    short iType = 0;
    // Also a filter of iDataRead: -1 or below leaves the column free.
    qint32 nIDNo = 0;
    double nLat = 0;
    double nLon = 0;
    QString cPcName;
    QString tUpDateTime;
    QString cMailDestination;
    QString cMailDestinationZipNo;
    QString cPersonalNumberCorp;
    short iKyotenToshiNo = 0;
    QString cKokuhoTourokuNo;
    QString cEmail;

    // 0 "本社（往療基点）", 1 and 2 "受領代理人", 3 "団体請求", else empty.
    QString sType() const;
    // 1 to 4: "銀行", "金庫", "農協", "郵便局"; else empty.
    QString sKinSyubetsu() const;
    // 1 to 5: "本店", "支店", "本所", "支所", "出張所"; else empty.
    QString sKinSiten() const;
    // 1 to 4: "普通", "当座", "通知", "別段"; else empty.
    QString sKozaType() const;
};

class cT_CORP : public entity::TableClass<cT_CORP, cD_CORP> {
public:
    // The row at index from 0; a fault (9) beyond the rows read.
    cD_CORP& clsCORP(qint32 index) { return table_.at(index); }
    // The short column list of every row of this office, by nIDNo.
    short iDataReadGrid();
    // iDataRead (TableClass): The full column list of the rows matching nIDNo and iType (-1: no condition).
    // iDataReadChk (TableClass): As iDataRead, but every row except the filter's nIDNo: the duplicate check.
    // iDataReadGrid_Jouken (TableClass): The short list with search conditions: nIDNo above 0, and names containing
    // cShamei1 and cShameiKana1 where set.

    // Write one row: in a transaction of its own when bTrans, else in the caller's.
    // An absent row fails with "CORPが無効です。". With the suite's map switch on,
    // an insert or update also keeps the row's map entry.

    // The statements, as they go to the server.
    static QString sqlDataReadGrid();
    static QString sqlDataRead(const cD_CORP& filter, bool bExclude = false);
    static QString sqlDataReadGrid_Jouken(const cD_CORP& filter);

    // Every column of the row, in the row's order.
    static const std::vector<entity::Column<cD_CORP>>& columns();
    static const entity::TableSpec<cD_CORP>& tableSpec();
    // The columns of the grid reads.
    static const QStringList& gridColumns();
    // The columns a write sets, in the table's order.
    static const QStringList& writeColumns();
};

}  // namespace data

#include "data/corp_info.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "data/ct_adodb.h"
#include "data/ct_corp.h"

namespace data {

namespace {

const QString kRoutineFailed = QStringLiteral("\r\nloadInitCorp でエラー");

void showFailure(const QString& text) { app::msgBox(text, controls::BoxStyle::Critical); }

void copyRow(const cD_CORP& row, CorpInfo& info)
{
    info.cName = base::FixedText(row.cShamei1 + row.cShamei2, 50);
    info.cJigyousyoNo = row.cJigyousyoNo;
    info.cYubinNo = base::FixedText(row.cYubinNo, 8);
    info.cAddress1 = base::FixedText(row.cAddress1, 50);
    info.cAddress2 = base::FixedText(row.cAddress2, 50);
    info.cTelNo = base::FixedText(row.cTelNo, 14);
    info.cFaxNo = base::FixedText(row.cFaxNo, 14);
    info.cYobi1 = base::FixedText(QString(), 30);
    info.nLat = row.nLat;
    info.nLon = row.nLon;
    info.cYobi2.clear();
    info.cMailDestination = row.cMailDestination;
    info.cMailDestinationZipNo = row.cMailDestinationZipNo;
    info.cDaihyo = base::FixedText(row.cDaihyo, 50);
    info.cJigyousyoNo2 = row.cJigyousyoNo2;
}

}  // namespace

void loadInitCorp(CorpInfo& info, bool& bOk)
{
    bOk = false;
    const QString section = QStringLiteral("接続情報");
    base::clsOplIniFile ini;
    if (ini.iInit(app::gsAppPath + QStringLiteral("\\adodb.ini")) != 0) {
        showFailure(ini.csErrorText() + kRoutineFailed);
        return;
    }
    const QString csConnect = base::RTrim(base::csCutNull(ini.csGetProfileString(section, section)));
    if (csConnect.isEmpty()) {
        showFailure(QStringLiteral("接続文字列取得できません。") + kRoutineFailed);
        return;
    }

    cT_ADODB db;
    if (db.iInit(csConnect) != 0 || db.iConnect() != 0) {
        showFailure(db.sErrMsg() + kRoutineFailed);
        return;
    }
    cT_CORP corps;
    cD_CORP filter;
    filter.nIDNo = -1;
    filter.iType = -1;
    if (corps.iInit(db) != 0 || corps.iDataRead(filter) != 0) {
        showFailure(corps.sErrMsg() + QStringLiteral("\r\nエラーが発生しました。"));
    } else if (corps.nデータ数() > 0) {
        copyRow(corps.clsCORP(0), info);
        bOk = true;
    }
    db.iDisConnect();
}

}  // namespace data

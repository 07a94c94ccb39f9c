#include "data/riyousha_map.h"

#include "data/adodb_ini.h"
#include "data/ct_adodb.h"
#include "data/entity_support.h"

#include <memory>

namespace data {

QString gsChizuSetting;

using entity::addLine;

namespace {

void addKey(QString& sql, qint32 nIDNo)
{
    addLine(sql, QStringLiteral(" where nIDNo = ") + QString::number(nIDNo));
    addLine(sql, QStringLiteral(" and iKyotenCd = ") + entity::siteKeyCd());
    addLine(sql, QStringLiteral(" and iKyotenEb = ") + entity::siteKeyEb());
}

}  // namespace

QString sqlChizuSelect(qint32 nIDNo)
{
    QString sql;
    addLine(sql, QStringLiteral("  select *"));
    addLine(sql, QStringLiteral("  from RIYOUSHA_MAP"));
    addKey(sql, nIDNo);
    return sql;
}

QString sqlChizuUpdate(qint32 nIDNo, double nLat, double nLon)
{
    QString sql;
    addLine(sql, QStringLiteral("  UPDATE RIYOUSHA_MAP"));
    addLine(sql, QStringLiteral(" set nLat = ") + entity::numberText(nLat));
    addLine(sql, QStringLiteral(" , nLon = ") + entity::numberText(nLon));
    addLine(sql, QStringLiteral(" , tUpDateTime = GetDate()"));
    addKey(sql, nIDNo);
    return sql;
}

QString sqlChizuInsert(qint32 nIDNo, double nLat, double nLon)
{
    QString sql;
    addLine(sql, QStringLiteral("  INSERT INTO RIYOUSHA_MAP (iKyotenCd, iKyotenEb, nIDNo, nLat, nLon, tUpDateTime)"));
    addLine(sql, QStringLiteral(" values (") + entity::siteKeyCd() + QStringLiteral(", ") + entity::siteKeyEb() +
                     QStringLiteral(", ") + QString::number(nIDNo) + QStringLiteral(", ") + entity::numberText(nLat) +
                     QStringLiteral(", ") + entity::numberText(nLon) + QStringLiteral(", GetDate())"));
    return sql;
}

short iChizuLoad(qint32 nIDNo, double nLat, double nLon, QString& sErrMsg)
{
    const QString head = QStringLiteral("iChizuLoad() でエラー\r\n");
    QString csConnect;
    QString reason;
    if (iGetConnectString(csConnect, reason) != 0) {
        sErrMsg = head + reason;
        return -1;
    }
    cT_ADODB db;
    if (db.iInit(csConnect) != 0 || db.iConnect() != 0) {
        sErrMsg = head + db.sErrMsg();
        return -1;
    }
    auto rs = std::make_unique<ado::Recordset>();
    rs->setCursorLocation(ado::adUseClient);
    if (db.iOpenRecSet(rs, sqlChizuSelect(nIDNo), ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
        sErrMsg = head + db.sErrMsg();
        return -1;
    }
    const bool exists = !rs->Eof();
    db.iCloseRecSet(rs);
    const QString sql = exists ? sqlChizuUpdate(nIDNo, nLat, nLon) : sqlChizuInsert(nIDNo, nLat, nLon);
    if (db.iExecSQL(sql) != 0) {
        sErrMsg = head + db.sErrMsg();
        return -1;
    }
    db.iDisConnect();
    return 0;
}

}  // namespace data

#include "data/ct_caremane.h"

#include "app/globals.h"

namespace data {

using entity::addLike;
using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("CAREMANE");

void addFrom(QString& sql)
{
    entity::addFrom(sql, kTable);
    addLine(sql, QStringLiteral("  LEFT JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.iSisetsuCode"));
    addLine(sql, QStringLiteral("  LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = CAREMANE.iJigyosyoCode"));
}

void addOrder(QString& sql)
{
    addLine(sql, QStringLiteral("  order by"));
    addLine(sql, QStringLiteral("      CAREMANE.nIDNo"));
}

void addAbove0(entity::Conditions& where, QString& sql, const QString& column, qint32 value)
{
    if (value <= 0) return;
    where.next();
    addLine(sql, QStringLiteral("     ") + column + QStringLiteral(" = ") + QString::number(value));
}

QString selectHead()
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, cT_CAREMANE::columns(), entity::columnNames(cT_CAREMANE::columns()));
    addFrom(sql);
    return sql;
}

}  // namespace

const std::vector<Column<cD_CAREMANE>>& cT_CAREMANE::columns()
{
    using R = cD_CAREMANE;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        SEAL_COLUMN(cAdress1),
        SEAL_COLUMN(cAdress2),
        SEAL_COLUMN(cAdressKana),
        SEAL_COLUMN(cFaxNo),
        SEAL_COLUMN(cMobNo),
        SEAL_COLUMN(cMail),
        SEAL_COLUMN(cName),
        SEAL_COLUMN(cNameKana),
        SEAL_COLUMN(cTelNo),
        SEAL_COLUMN(cYubinNo),
        SEAL_COLUMN(nIDNo),
        SEAL_COLUMN(iSisetsuCode),
        SEAL_COLUMN(cPcName, W::MachineName),
        SEAL_COLUMN(tUpDateTime, W::ServerTime),
        SEAL_COLUMN(iChusiFlg),
        {QStringLiteral("tBirthday"), &R::sBirthday, W::DateText},
        SEAL_COLUMN(iSexKubun),
        SEAL_COLUMN(iJigyosyoCode),
        SEAL_COLUMN(SISETSUSHAMEI, W::Never, QStringLiteral("SISETSU.cShamei1")),
        SEAL_COLUMN(SISETSUSHURUI, W::Never, QStringLiteral("SISETSU.cSisetsuType")),
        SEAL_COLUMN(JIGYOSYOSHAMEI, W::Never, QStringLiteral("SISETSU2.cShamei1")),
        SEAL_COLUMN(JIGYOSYOSHURUI, W::Never, QStringLiteral("SISETSU2.cSisetsuType")),
        SEAL_COLUMN(JIGYOSYOADD1, W::Never, QStringLiteral("SISETSU2.cAddress1")),
        SEAL_COLUMN(JIGYOSYOADD2, W::Never, QStringLiteral("SISETSU2.cAddress2")),
    };
    return list;
}

QString cT_CAREMANE::sqlDataReadGrid(const cD_CAREMANE& filter)
{
    QString sql = selectHead();
    entity::Conditions where(sql);
    if (filter.iChusiFlg == 0) {
        where.next();
        addLine(sql, QStringLiteral("     (CAREMANE.iChusiFlg = 0 OR iChusiFlg IS NULL)"));
    }
    addAbove0(where, sql, QStringLiteral("CAREMANE.nIDNo"), filter.nIDNo);
    addAbove0(where, sql, QStringLiteral("CAREMANE.iSisetsuCode"), filter.iSisetsuCode);
    addAbove0(where, sql, QStringLiteral("CAREMANE.iJigyosyoCode"), filter.iJigyosyoCode);
    addLike(where, sql, QStringLiteral("CAREMANE.cName"), filter.cName);
    addLike(where, sql, QStringLiteral("CAREMANE.cNameKana"), filter.cNameKana);
    addOrder(sql);
    return sql;
}

QString cT_CAREMANE::sqlDataRead(const cD_CAREMANE& filter, bool bExclude)
{
    QString sql = selectHead();
    addLine(sql, QStringLiteral(" where"));
    addLine(sql, (bExclude ? QStringLiteral("    CAREMANE.nIDNo <> ") : QStringLiteral("    CAREMANE.nIDNo = ")) +
                     QString::number(filter.nIDNo));
    addOrder(sql);
    return sql;
}

QString cT_CAREMANE::sqlDataReadGrid_Jouken(const cD_CAREMANE& filter)
{
    QString sql = selectHead();
    entity::Conditions where(sql);
    where.next();
    addLine(sql, QStringLiteral(" CAREMANE.iKyotenCd = ") + QString::number(app::iKyotenCd));
    addLine(sql, QStringLiteral(" and CAREMANE.iKyotenEb = ") + QString::number(app::iKyotenEb));
    addAbove0(where, sql, QStringLiteral("CAREMANE.nIDNo"), filter.nIDNo);
    addLike(where, sql, QStringLiteral("CAREMANE.cName"), filter.cName);
    addLike(where, sql, QStringLiteral("CAREMANE.cNameKana"), filter.cNameKana);
    addOrder(sql);
    return sql;
}

short cT_CAREMANE::iDataReadGrid(const cD_CAREMANE& filter) { return readRows(sqlDataReadGrid(filter)); }

const entity::TableSpec<cD_CAREMANE>& cT_CAREMANE::tableSpec()
{
    static const auto s = entity::TableSpec<cD_CAREMANE>(kTable, QStringLiteral("CAREMANEが無効です。"),
                                                         entity::columnNames(columns(), false));
    return s;
}

QString cT_CAREMANE::sqlUpdateRiyoushaSub(const cD_CAREMANE& row)
{
    QString sql;
    addLine(sql, QStringLiteral(" UPDATE RIYOUSHA_SUB"));
    addLine(sql, QStringLiteral(" SET cCareName = ") + entity::quoted(row.cName) + QStringLiteral(","));
    addLine(sql, QStringLiteral("     cCareTelNo = ") + entity::quoted(row.cTelNo) + QStringLiteral(","));
    addLine(sql, QStringLiteral("     iCareSisetsuCd = ") + QString::number(row.iSisetsuCode));
    addLine(sql, QStringLiteral(" WHERE iCareCd = ") + QString::number(row.nIDNo));
    addLine(sql, QStringLiteral(" AND iKyotenCd = ") + entity::siteKeyCd());
    addLine(sql, QStringLiteral(" AND iKyotenEb = ") + entity::siteKeyEb());
    return sql;
}

QString cT_CAREMANE::sqlStampRiyousha(const cD_CAREMANE& row)
{
    return entity::sqlStampPatients(QStringLiteral("RIYOUSHA_SUB.iCareCd = ") + QString::number(row.nIDNo));
}

short cT_CAREMANE::iDataUpdate_ToRiyousha(const cD_CAREMANE* row, bool bTrans)
{
    return cascade(row, bTrans, tableSpec().absentText, [](const cD_CAREMANE& r) {
        return QStringList{sqlUpdateRiyoushaSub(r), sqlStampRiyousha(r)};
    });
}

}  // namespace data

#include "data/ct_caremane.h"

#include "app/globals.h"

namespace data {

using entity::addLine;
using entity::addLike;
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
    if (value <= 0)
        return;
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
        {QStringLiteral("cAdress1"), &R::cAdress1},
        {QStringLiteral("cAdress2"), &R::cAdress2},
        {QStringLiteral("cAdressKana"), &R::cAdressKana},
        {QStringLiteral("cFaxNo"), &R::cFaxNo},
        {QStringLiteral("cMobNo"), &R::cMobNo},
        {QStringLiteral("cMail"), &R::cMail},
        {QStringLiteral("cName"), &R::cName},
        {QStringLiteral("cNameKana"), &R::cNameKana},
        {QStringLiteral("cTelNo"), &R::cTelNo},
        {QStringLiteral("cYubinNo"), &R::cYubinNo},
        {QStringLiteral("nIDNo"), &R::nIDNo},
        {QStringLiteral("iSisetsuCode"), &R::iSisetsuCode},
        {QStringLiteral("cPcName"), &R::cPcName, W::MachineName},
        {QStringLiteral("tUpDateTime"), &R::tUpDateTime, W::ServerTime},
        {QStringLiteral("iChusiFlg"), &R::iChusiFlg},
        {QStringLiteral("tBirthday"), &R::sBirthday, W::DateText},
        {QStringLiteral("iSexKubun"), &R::iSexKubun},
        {QStringLiteral("iJigyosyoCode"), &R::iJigyosyoCode},
        {QStringLiteral("SISETSUSHAMEI"), &R::SISETSUSHAMEI, W::Never, QStringLiteral("SISETSU.cShamei1")},
        {QStringLiteral("SISETSUSHURUI"), &R::SISETSUSHURUI, W::Never, QStringLiteral("SISETSU.cSisetsuType")},
        {QStringLiteral("JIGYOSYOSHAMEI"), &R::JIGYOSYOSHAMEI, W::Never, QStringLiteral("SISETSU2.cShamei1")},
        {QStringLiteral("JIGYOSYOSHURUI"), &R::JIGYOSYOSHURUI, W::Never, QStringLiteral("SISETSU2.cSisetsuType")},
        {QStringLiteral("JIGYOSYOADD1"), &R::JIGYOSYOADD1, W::Never, QStringLiteral("SISETSU2.cAddress1")},
        {QStringLiteral("JIGYOSYOADD2"), &R::JIGYOSYOADD2, W::Never, QStringLiteral("SISETSU2.cAddress2")},
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

short cT_CAREMANE::iDataReadGrid(const cD_CAREMANE& filter)
{
    return readRows(sqlDataReadGrid(filter));
}

short cT_CAREMANE::iDataRead(const cD_CAREMANE& filter)
{
    return readRows(sqlDataRead(filter));
}

short cT_CAREMANE::iDataReadChk(const cD_CAREMANE& filter)
{
    return readRows(sqlDataRead(filter, true));
}

short cT_CAREMANE::iDataReadGrid_Jouken(const cD_CAREMANE& filter)
{
    return readRows(sqlDataReadGrid_Jouken(filter));
}

const entity::TableSpec<cD_CAREMANE>& cT_CAREMANE::spec()
{
    static const entity::TableSpec<cD_CAREMANE> s{kTable, QStringLiteral("CAREMANEが無効です。"), entity::columnNames(columns(), false), {}, nullptr};
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
    return cascade(row, bTrans, spec().absentText, [](const cD_CAREMANE& r) {
        return QStringList{sqlUpdateRiyoushaSub(r), sqlStampRiyousha(r)};
    });
}

}  // namespace data

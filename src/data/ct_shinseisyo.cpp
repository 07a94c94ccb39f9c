#include "data/ct_shinseisyo.h"

namespace data {

using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("SHINSEISYO");

}  // namespace

const std::vector<Column<cD_SHINSEISYO>>& cT_SHINSEISYO::columns()
{
    using R = cD_SHINSEISYO;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        {QStringLiteral("nIDNo"), &R::nIDNo},
        {QStringLiteral("cFileName"), &R::cFileName},
        {QStringLiteral("cDispName"), &R::cDispName},
        {QStringLiteral("iSejutsuKubun"), &R::iSejutsuKubun},
        {QStringLiteral("iHokenType"), &R::iHokenType},
        {QStringLiteral("iDelFlg"), &R::iDelFlg},
        {QStringLiteral("iSinseiTP"), &R::iSinseiTP},
        {QStringLiteral("iSoufushoTP"), &R::iSoufushoTP},
        {QStringLiteral("iDuplexFlg"), &R::iDuplexFlg},
        {QStringLiteral("iStateNo"), &R::iStateNo},
        {QStringLiteral("iRiyouHokenKbn"), &R::iRiyouHokenKbn},
        {QStringLiteral("tUpDateTime"), &R::tUpDateTime, W::ServerTime},
        {QStringLiteral("iPrintType"), &R::iPrintType},
        {QStringLiteral("iKubun"), &R::iKubun},
        {QStringLiteral("iKanagawaStaffPrint"), &R::iKanagawaStaffPrint},
        {QStringLiteral("iJoseiFutanKiriage"), &R::iJoseiFutanKiriage},
        {QStringLiteral("iTekiyouStaff"), &R::iTekiyouStaff},
    };
    return list;
}

QString cT_SHINSEISYO::sqlDataReadGrid(const cD_SHINSEISYO& filter)
{
    QString sql = selectFrom();
    entity::Conditions where(sql);
    if (filter.iPrintType > 0) {
        where.next();
        addLine(sql, QStringLiteral("     iPrintType = ") + QString::number(filter.iPrintType));
    }
    where.next();
    entity::addSiteKey(sql);
    where.next();
    addLine(sql, QStringLiteral("     (iDelFlg = 0 OR iDelFlg IS NULL)"));
    if (filter.iStateNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     iStateNo = ") + QString::number(filter.iStateNo));
    }
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_SHINSEISYO::sqlDataRead(const cD_SHINSEISYO& filter, bool bExclude)
{
    QString sql = selectFrom();
    entity::Conditions where(sql);
    entity::addIDNoFilter(where, sql, filter.nIDNo, bExclude);
    where.next();
    entity::addSiteKey(sql);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_SHINSEISYO::sqlDataReadGrid_Jouken(const cD_SHINSEISYO& filter)
{
    QString sql = selectFrom();
    entity::Conditions where(sql);
    where.next();
    entity::addSiteKey(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     nIDNo = ") + QString::number(filter.nIDNo));
    }
    entity::addLike(where, sql, QStringLiteral("cDispName"), filter.cDispName);
    entity::addOrderByIDNo(sql);
    return sql;
}

short cT_SHINSEISYO::iDataReadGrid(const cD_SHINSEISYO& filter)
{
    return readRows(sqlDataReadGrid(filter));
}

short cT_SHINSEISYO::iDataRead(const cD_SHINSEISYO& filter)
{
    return readRows(sqlDataRead(filter));
}

short cT_SHINSEISYO::iDataReadChk(const cD_SHINSEISYO& filter)
{
    return readRows(sqlDataRead(filter, true));
}

short cT_SHINSEISYO::iDataReadGrid_Jouken(const cD_SHINSEISYO& filter)
{
    return readRows(sqlDataReadGrid_Jouken(filter));
}

const entity::TableSpec<cD_SHINSEISYO>& cT_SHINSEISYO::spec()
{
    static const entity::TableSpec<cD_SHINSEISYO> s{kTable, QStringLiteral("SHINSEISYOが無効です。"), entity::columnNames(columns(), false), {}, nullptr};
    return s;
}

}  // namespace data

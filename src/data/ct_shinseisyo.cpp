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
        SEAL_COLUMN(nIDNo),
        SEAL_COLUMN(cFileName),
        SEAL_COLUMN(cDispName),
        SEAL_COLUMN(iSejutsuKubun),
        SEAL_COLUMN(iHokenType),
        SEAL_COLUMN(iDelFlg),
        SEAL_COLUMN(iSinseiTP),
        SEAL_COLUMN(iSoufushoTP),
        SEAL_COLUMN(iDuplexFlg),
        SEAL_COLUMN(iStateNo),
        SEAL_COLUMN(iRiyouHokenKbn),
        SEAL_COLUMN(tUpDateTime, W::ServerTime),
        SEAL_COLUMN(iPrintType),
        SEAL_COLUMN(iKubun),
        SEAL_COLUMN(iKanagawaStaffPrint),
        SEAL_COLUMN(iJoseiFutanKiriage),
        SEAL_COLUMN(iTekiyouStaff),
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

short cT_SHINSEISYO::iDataReadGrid(const cD_SHINSEISYO& filter) { return readRows(sqlDataReadGrid(filter)); }

const entity::TableSpec<cD_SHINSEISYO>& cT_SHINSEISYO::tableSpec()
{
    static const auto s = entity::TableSpec<cD_SHINSEISYO>(kTable, QStringLiteral("SHINSEISYOが無効です。"),
                                                           entity::columnNames(columns(), false));
    return s;
}

}  // namespace data

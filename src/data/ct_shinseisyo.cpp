#include "data/ct_shinseisyo.h"

namespace data {

using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("SHINSEISYO");

QString selectHead()
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, cT_SHINSEISYO::columns(), entity::columnNames(cT_SHINSEISYO::columns()));
    entity::addFrom(sql, kTable);
    return sql;
}

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

QString cT_SHINSEISYO::sqlGetMaxIDNo() { return entity::sqlGetMaxIDNo(kTable); }

QString cT_SHINSEISYO::sqlDataReadGrid(const cD_SHINSEISYO& filter)
{
    QString sql = selectHead();
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
    QString sql = selectHead();
    entity::Conditions where(sql);
    entity::addIDNoFilter(where, sql, filter.nIDNo, bExclude);
    where.next();
    entity::addSiteKey(sql);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_SHINSEISYO::sqlDataReadGrid_Jouken(const cD_SHINSEISYO& filter)
{
    QString sql = selectHead();
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

short cT_SHINSEISYO::iGetMaxIDNo(qint32& nMaxID) { return table_.readNumber(sqlGetMaxIDNo(), nMaxID); }

short cT_SHINSEISYO::iDataReadGrid(const cD_SHINSEISYO& filter)
{
    return table_.read(sqlDataReadGrid(filter), columns(), entity::columnNames(columns()));
}

short cT_SHINSEISYO::iDataRead(const cD_SHINSEISYO& filter)
{
    return table_.read(sqlDataRead(filter), columns(), entity::columnNames(columns()));
}

short cT_SHINSEISYO::iDataReadChk(const cD_SHINSEISYO& filter)
{
    return table_.read(sqlDataRead(filter, true), columns(), entity::columnNames(columns()));
}

short cT_SHINSEISYO::iDataReadGrid_Jouken(const cD_SHINSEISYO& filter)
{
    return table_.read(sqlDataReadGrid_Jouken(filter), columns(), entity::columnNames(columns()));
}

namespace {
const QString kAbsent = QStringLiteral("SHINSEISYOが無効です。");

const QStringList& writeColumns()
{
    static const QStringList names = entity::columnNames(cT_SHINSEISYO::columns(), false);
    return names;
}
}  // namespace

QString cT_SHINSEISYO::sqlDataInsert(const cD_SHINSEISYO& row, const QString& csMachine)
{
    return entity::sqlInsert(kTable, columns(), writeColumns(), row, csMachine);
}

QString cT_SHINSEISYO::sqlDataUpdate(const cD_SHINSEISYO& row, const QString& csMachine)
{
    return entity::sqlUpdate(kTable, columns(), writeColumns(), row, row.nIDNo, csMachine);
}

QString cT_SHINSEISYO::sqlData削除(const cD_SHINSEISYO& row) { return entity::sqlDelete(kTable, row.nIDNo); }

short cT_SHINSEISYO::iDataInsert(const cD_SHINSEISYO* row, bool bTrans)
{
    return entity::writeRow<cD_SHINSEISYO>(table_, entity::WriteKind::Insert, row, bTrans, kAbsent, &sqlDataInsert);
}

short cT_SHINSEISYO::iDataUpdate(const cD_SHINSEISYO* row, bool bTrans)
{
    return entity::writeRow<cD_SHINSEISYO>(table_, entity::WriteKind::Update, row, bTrans, kAbsent, &sqlDataUpdate);
}

short cT_SHINSEISYO::iData削除(const cD_SHINSEISYO* row, bool bTrans)
{
    return entity::deleteRow(table_, row, bTrans, kAbsent, &sqlData削除);
}

}  // namespace data

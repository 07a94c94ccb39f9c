#include "data/ct_sisetsu.h"

namespace data {

using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("Sisetsu");

void addOrder(QString& sql)
{
    addLine(sql, QStringLiteral("  order by"));
    addLine(sql, QStringLiteral("      nIDNo"));
}

void addLike(entity::Conditions& where, QString& sql, const QString& column, const QString& text)
{
    if (text.isEmpty())
        return;
    where.next();
    addLine(sql, QStringLiteral("     ") + column + QStringLiteral(" LIKE '%") + text + QStringLiteral("%'"));
}

QString selectHead()
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, cT_SISETSU::columns(), entity::columnNames(cT_SISETSU::columns()));
    addLine(sql, QStringLiteral("  FROM"));
    addLine(sql, QStringLiteral("      Sisetsu"));
    return sql;
}

}  // namespace

const std::vector<Column<cD_SISETSU>>& cT_SISETSU::columns()
{
    using R = cD_SISETSU;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        {QStringLiteral("cAddress1"), &R::cAddress1},
        {QStringLiteral("cAddress2"), &R::cAddress2},
        {QStringLiteral("cAddressKana"), &R::cAddressKana},
        {QStringLiteral("cDaihyo"), &R::cDaihyo},
        {QStringLiteral("cDaihyoKana"), &R::cDaihyoKana},
        {QStringLiteral("cFaxNo"), &R::cFaxNo},
        {QStringLiteral("cShamei1"), &R::cShamei1},
        {QStringLiteral("cShamei2"), &R::cShamei2},
        {QStringLiteral("cShameiKana1"), &R::cShameiKana1},
        {QStringLiteral("cShameiKana2"), &R::cShameiKana2},
        {QStringLiteral("cTelNo"), &R::cTelNo},
        {QStringLiteral("cYubinNo"), &R::cYubinNo},
        {QStringLiteral("cSisetsuType"), &R::cSisetsuType},
        {QStringLiteral("nIDNo"), &R::nIDNo},
        {QStringLiteral("nLat"), &R::nLat},
        {QStringLiteral("nLon"), &R::nLon},
        {QStringLiteral("cPcName"), &R::cPcName, W::MachineName},
        {QStringLiteral("tUpDateTime"), &R::tUpDateTime, W::ServerTime},
        {QStringLiteral("iKikanShubetsu"), &R::iKikanShubetsu},
        {QStringLiteral("cDouiIrai"), &R::cDouiIrai},
        {QStringLiteral("cComment"), &R::cComment},
        {QStringLiteral("nColorCode"), &R::nColorCode},
        {QStringLiteral("iColorIndex"), &R::iColorIndex},
        {QStringLiteral("cShamei1Ryaku"), &R::cShamei1Ryaku},
        {QStringLiteral("iPaymentType"), &R::iPaymentType},
    };
    return list;
}

QString cT_SISETSU::sqlGetMaxIDNo()
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    addLine(sql, QStringLiteral("      max(nIDNo) as MaxIDNo"));
    addLine(sql, QStringLiteral("  FROM"));
    addLine(sql, QStringLiteral("      Sisetsu"));
    addLine(sql, QStringLiteral(" where"));
    entity::addSiteKey(sql);
    return sql;
}

QString cT_SISETSU::sqlDataReadGrid(const cD_SISETSU& filter)
{
    QString sql = selectHead();
    entity::Conditions where(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     nIDNo = ") + QString::number(filter.nIDNo));
    }
    if (filter.iKikanShubetsu > 0) {
        where.next();
        addLine(sql, QStringLiteral("     iKikanShubetsu = ") + QString::number(filter.iKikanShubetsu));
    }
    addLike(where, sql, QStringLiteral("cShamei1"), filter.cShamei1);
    addLike(where, sql, QStringLiteral("cShameiKana1"), filter.cShameiKana1);
    addLike(where, sql, QStringLiteral("cSisetsuType"), filter.cSisetsuType);
    addOrder(sql);
    return sql;
}

QString cT_SISETSU::sqlDataRead(const cD_SISETSU& filter, bool bExclude)
{
    QString sql = selectHead();
    entity::Conditions where(sql);
    if (filter.nIDNo > -1) {
        where.next();
        addLine(sql, (bExclude ? QStringLiteral("    nIDNo <> ") : QStringLiteral("    nIDNo = ")) + QString::number(filter.nIDNo));
    }
    where.next();
    entity::addSiteKey(sql);
    if (!filter.cSisetsuType.isEmpty()) {
        where.next();
        addLine(sql, QStringLiteral("     cSisetsuType = '") + filter.cSisetsuType + QStringLiteral("'"));
    }
    addOrder(sql);
    return sql;
}

QString cT_SISETSU::sqlDataReadGrid_Jouken(const cD_SISETSU& filter)
{
    QString sql = selectHead();
    entity::Conditions where(sql);
    where.next();
    entity::addSiteKey(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     Sisetsu.nIDNo = ") + QString::number(filter.nIDNo));
    }
    addLike(where, sql, QStringLiteral("Sisetsu.cShamei1"), filter.cShamei1);
    addLike(where, sql, QStringLiteral("Sisetsu.cShameiKana1"), filter.cShameiKana1);
    addOrder(sql);
    return sql;
}

short cT_SISETSU::iGetMaxIDNo(qint32& nMaxID) { return table_.readNumber(sqlGetMaxIDNo(), nMaxID); }

short cT_SISETSU::iDataReadGrid(const cD_SISETSU& filter)
{
    return table_.read(sqlDataReadGrid(filter), columns(), entity::columnNames(columns()));
}

short cT_SISETSU::iDataRead(const cD_SISETSU& filter)
{
    return table_.read(sqlDataRead(filter), columns(), entity::columnNames(columns()));
}

short cT_SISETSU::iDataReadChk(const cD_SISETSU& filter)
{
    return table_.read(sqlDataRead(filter, true), columns(), entity::columnNames(columns()));
}

short cT_SISETSU::iDataReadGrid_Jouken(const cD_SISETSU& filter)
{
    return table_.read(sqlDataReadGrid_Jouken(filter), columns(), entity::columnNames(columns()));
}

}  // namespace data

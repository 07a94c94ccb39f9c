#include "data/ct_staff.h"

#include "app/globals.h"

namespace data {

using entity::addLike;
using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("STAFF");

QStringList fullNames() { return cT_STAFF::shortColumns() + cT_STAFF::longColumns(); }

}  // namespace

const std::vector<Column<cD_STAFF>>& cT_STAFF::columns()
{
    using R = cD_STAFF;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        SEAL_COLUMN(cAdress1),
        SEAL_COLUMN(cAdress2),
        SEAL_COLUMN(cFaxNo),
        SEAL_COLUMN(cKaiNo),
        SEAL_COLUMN(cKaiNo2),
        SEAL_COLUMN(cKaiNo3),
        SEAL_COLUMN(cMobNo),
        SEAL_COLUMN(cName),
        SEAL_COLUMN(cNameKana),
        SEAL_COLUMN(cNameRyaku),
        SEAL_COLUMN(cRken),
        SEAL_COLUMN(cRno),
        SEAL_COLUMN(cTelNo),
        SEAL_COLUMN(cYubinNo),
        SEAL_COLUMN(iChusiFlg),
        SEAL_COLUMN(iSexKubun),
        SEAL_COLUMN(iShikakuKubun),
        SEAL_COLUMN(iSyokushuKubun),
        SEAL_COLUMN(iYaku),
        SEAL_COLUMN(nIDNo),
        SEAL_COLUMN(cEmail),
        SEAL_COLUMN(iTecAbi),
        SEAL_COLUMN(iSpeechAbi),
        SEAL_COLUMN(cPhysical),
        SEAL_COLUMN(iClaimRate),
        SEAL_COLUMN(cSikaku),
        SEAL_COLUMN(cTourokuNo),
        SEAL_COLUMN(cSmileCd),
        {QStringLiteral("tBirthday"), &R::sBirthday, W::DateText},
        {QStringLiteral("tKousinDay"), &R::sKousinDay, W::DateText},
        {QStringLiteral("tNyusyaDay"), &R::sNyusyaDay, W::DateText},
        {QStringLiteral("tKisanDay"), &R::sKisanDay, W::DateText},
        {QStringLiteral("tRday"), &R::sRday, W::DateText},
        {QStringLiteral("tTourokuDay"), &R::sTourokuDay, W::DateText},
        SEAL_COLUMN(cPcName, W::MachineName),
        SEAL_COLUMN(tUpDateTime, W::ServerTime),
        SEAL_COLUMN(cTourokuNo2),
        SEAL_COLUMN(iVehicleType),
        SEAL_COLUMN(cVehicleNumber),
        SEAL_COLUMN(cVehicleComment),
        SEAL_COLUMN(cEmployeeNumber),
        SEAL_COLUMN(iLookAllRiyousya),
        SEAL_COLUMN(iWebLicense),
        SEAL_COLUMN(iLookCharge),
        SEAL_COLUMN(iStaffHokenTouroku),
        SEAL_COLUMN(cShikaiNo),
        SEAL_COLUMN(cShikaiNo_Josei),
        SEAL_COLUMN(iContractType),
        SEAL_COLUMN(nLat),
        SEAL_COLUMN(nLon),
        SEAL_COLUMN(cIninTourokuNo),
        SEAL_COLUMN(iIninTourokuChk),
        SEAL_COLUMN(iKanriSekininFlg),
        SEAL_COLUMN(iKyotenCd, W::Never),
        SEAL_COLUMN(iKyotenEb, W::Never),
        SEAL_COLUMN(cKyotenName, W::Never, QStringLiteral("KYOTEN.cKyotenName")),
    };
    return list;
}

const QStringList& cT_STAFF::shortColumns()
{
    static const QStringList names = [] {
        QStringList n;
        for (const Column<cD_STAFF>& c : columns()) {
            if (c.name == u"cEmail") break;
            n << c.name;
        }
        return n;
    }();
    return names;
}

const QStringList& cT_STAFF::longColumns()
{
    static const QStringList names = [] {
        QStringList n;
        bool on = false;
        for (const Column<cD_STAFF>& c : columns()) {
            on = on || c.name == u"cEmail";
            if (c.name == u"iKyotenCd") break;
            if (on) n << c.name;
        }
        return n;
    }();
    return names;
}

short cT_STAFF::iInit(cT_ADODB& db)
{
    bLongForm_ = true;
    return table_.iInit(db);
}

QStringList cT_STAFF::gridNames() const { return bLongForm_ ? fullNames() : shortColumns(); }

QString cT_STAFF::sqlDataReadGrid(const cD_STAFF& filter, bool bLongForm)
{
    QString sql = selectList(bLongForm ? fullNames() : shortColumns());
    entity::addFrom(sql, kTable);
    entity::Conditions where(sql);
    if (filter.iChusiFlg == 0) {
        where.next();
        addLine(sql, QStringLiteral("     (iChusiFlg = 0 OR iChusiFlg IS NULL)"));
    }
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     nIDNo = ") + QString::number(filter.nIDNo));
    }
    addLike(where, sql, QStringLiteral("cName"), filter.cName);
    addLike(where, sql, QStringLiteral("cNameKana"), filter.cNameKana);
    where.next();
    entity::addSiteKey(sql);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_STAFF::sqlDataRead(const cD_STAFF& filter, bool bExclude)
{
    QString sql = selectList(fullNames());
    entity::addFrom(sql, kTable);
    entity::Conditions where(sql);
    entity::addIDNoFilter(where, sql, filter.nIDNo, bExclude);
    where.next();
    entity::addSiteKey(sql);
    if (!filter.cName.isEmpty()) addLine(sql, QStringLiteral(" AND cName = '") + filter.cName + QStringLiteral("'"));
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_STAFF::sqlDataReadGrid_Jouken(const cD_STAFF& filter)
{
    QString sql = selectList(fullNames());
    entity::addFrom(sql, kTable);
    entity::Conditions where(sql);
    where.next();
    entity::addSiteKey(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     nIDNo = ") + QString::number(filter.nIDNo));
    }
    addLike(where, sql, QStringLiteral("cName"), filter.cName);
    addLike(where, sql, QStringLiteral("cNameKana"), filter.cNameKana);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_STAFF::sqlChkStaffName(const cD_STAFF& row)
{
    // No office condition: a name is unique over every office.
    QString sql;
    addLine(sql, QStringLiteral("  SELECT"));
    addLine(sql, QStringLiteral("      COUNT(nIDNo) AS Cnt"));
    addLine(sql, QStringLiteral("  FROM"));
    addLine(sql, QStringLiteral("      STAFF"));
    addLine(sql, QStringLiteral("  WHERE nIDNo != ") + QString::number(row.nIDNo));
    addLine(sql, QStringLiteral(" AND"));
    addLine(sql, QStringLiteral("        cName = '") + row.cName + QStringLiteral("' "));
    return sql;
}

QString cT_STAFF::sqlDataIdentChk(const cD_STAFF& filter)
{
    QString sql = selectList(fullNames());
    entity::addFrom(sql, kTable);
    addLine(sql, QStringLiteral(" where"));
    addLine(sql, QStringLiteral("    nIDNo = ") + QString::number(filter.nIDNo));
    addLine(sql, QStringLiteral(" and"));
    entity::addSiteKey(sql);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_STAFF::sqlDataReadGrid_AllKyoten(const cD_STAFF& filter, bool bLongForm)
{
    QStringList names = bLongForm ? fullNames() : shortColumns();
    names << QStringLiteral("iKyotenCd") << QStringLiteral("iKyotenEb") << QStringLiteral("cKyotenName");
    QString sql = selectList(names);
    entity::addFrom(sql, kTable);
    addLine(sql, QStringLiteral("  LEFT JOIN KYOTEN ON"));
    addLine(sql, QStringLiteral("      KYOTEN.iKyotenCd = STAFF.iKyotenCd AND KYOTEN.iKyotenEb = STAFF.iKyotenEb"));
    entity::Conditions where(sql);
    if (filter.iChusiFlg == 0) {
        where.next();
        addLine(sql, QStringLiteral("     (STAFF.iChusiFlg = 0 OR STAFF.iChusiFlg IS NULL)"));
    }
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     STAFF.nIDNo = ") + QString::number(filter.nIDNo));
    }
    addLike(where, sql, QStringLiteral("STAFF.cName"), filter.cName);
    addLike(where, sql, QStringLiteral("STAFF.cNameKana"), filter.cNameKana);
    addLine(sql, QStringLiteral("  order by"));
    addLine(sql, QStringLiteral("      STAFF.iKyotenCd, STAFF.iKyotenEb, STAFF.nIDNo"));
    return sql;
}

short cT_STAFF::iDataReadGrid(const cD_STAFF& filter)
{
    return readRows(sqlDataReadGrid(filter, bLongForm_), gridNames());
}

short cT_STAFF::iChkStaffName(const cD_STAFF& row, qint32& nCnt)
{
    return table_.readNumber(sqlChkStaffName(row), nCnt);
}

short cT_STAFF::iDataIdentChk(const cD_STAFF& filter) { return readRows(sqlDataIdentChk(filter), fullNames()); }

short cT_STAFF::iDataReadGrid_AllKyoten(const cD_STAFF& filter)
{
    QStringList names = gridNames();
    names << QStringLiteral("iKyotenCd") << QStringLiteral("iKyotenEb") << QStringLiteral("cKyotenName");
    return readRows(sqlDataReadGrid_AllKyoten(filter, bLongForm_), names);
}

const entity::TableSpec<cD_STAFF>& cT_STAFF::tableSpec()
{
    static const auto s =
        entity::TableSpec<cD_STAFF>(kTable, QStringLiteral("STAFFが無効です。"), entity::columnNames(columns(), false))
            .deletesInto(QStringLiteral("STAFF_DELETE_LOG"), &cD_STAFF::cName)
            .reading(fullNames(), fullNames());
    return s;
}

}  // namespace data

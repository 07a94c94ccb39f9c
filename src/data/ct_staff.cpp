#include "data/ct_staff.h"

#include "app/globals.h"

namespace data {

using entity::addLine;
using entity::addLike;
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
        {QStringLiteral("cAdress1"), &R::cAdress1},
        {QStringLiteral("cAdress2"), &R::cAdress2},
        {QStringLiteral("cFaxNo"), &R::cFaxNo},
        {QStringLiteral("cKaiNo"), &R::cKaiNo},
        {QStringLiteral("cKaiNo2"), &R::cKaiNo2},
        {QStringLiteral("cKaiNo3"), &R::cKaiNo3},
        {QStringLiteral("cMobNo"), &R::cMobNo},
        {QStringLiteral("cName"), &R::cName},
        {QStringLiteral("cNameKana"), &R::cNameKana},
        {QStringLiteral("cNameRyaku"), &R::cNameRyaku},
        {QStringLiteral("cRken"), &R::cRken},
        {QStringLiteral("cRno"), &R::cRno},
        {QStringLiteral("cTelNo"), &R::cTelNo},
        {QStringLiteral("cYubinNo"), &R::cYubinNo},
        {QStringLiteral("iChusiFlg"), &R::iChusiFlg},
        {QStringLiteral("iSexKubun"), &R::iSexKubun},
        {QStringLiteral("iShikakuKubun"), &R::iShikakuKubun},
        {QStringLiteral("iSyokushuKubun"), &R::iSyokushuKubun},
        {QStringLiteral("iYaku"), &R::iYaku},
        {QStringLiteral("nIDNo"), &R::nIDNo},
        {QStringLiteral("cEmail"), &R::cEmail},
        {QStringLiteral("iTecAbi"), &R::iTecAbi},
        {QStringLiteral("iSpeechAbi"), &R::iSpeechAbi},
        {QStringLiteral("cPhysical"), &R::cPhysical},
        {QStringLiteral("iClaimRate"), &R::iClaimRate},
        {QStringLiteral("cSikaku"), &R::cSikaku},
        {QStringLiteral("cTourokuNo"), &R::cTourokuNo},
        {QStringLiteral("cSmileCd"), &R::cSmileCd},
        {QStringLiteral("tBirthday"), &R::sBirthday, W::DateText},
        {QStringLiteral("tKousinDay"), &R::sKousinDay, W::DateText},
        {QStringLiteral("tNyusyaDay"), &R::sNyusyaDay, W::DateText},
        {QStringLiteral("tKisanDay"), &R::sKisanDay, W::DateText},
        {QStringLiteral("tRday"), &R::sRday, W::DateText},
        {QStringLiteral("tTourokuDay"), &R::sTourokuDay, W::DateText},
        {QStringLiteral("cPcName"), &R::cPcName, W::MachineName},
        {QStringLiteral("tUpDateTime"), &R::tUpDateTime, W::ServerTime},
        {QStringLiteral("cTourokuNo2"), &R::cTourokuNo2},
        {QStringLiteral("iVehicleType"), &R::iVehicleType},
        {QStringLiteral("cVehicleNumber"), &R::cVehicleNumber},
        {QStringLiteral("cVehicleComment"), &R::cVehicleComment},
        {QStringLiteral("cEmployeeNumber"), &R::cEmployeeNumber},
        {QStringLiteral("iLookAllRiyousya"), &R::iLookAllRiyousya},
        {QStringLiteral("iWebLicense"), &R::iWebLicense},
        {QStringLiteral("iLookCharge"), &R::iLookCharge},
        {QStringLiteral("iStaffHokenTouroku"), &R::iStaffHokenTouroku},
        {QStringLiteral("cShikaiNo"), &R::cShikaiNo},
        {QStringLiteral("cShikaiNo_Josei"), &R::cShikaiNo_Josei},
        {QStringLiteral("iContractType"), &R::iContractType},
        {QStringLiteral("nLat"), &R::nLat},
        {QStringLiteral("nLon"), &R::nLon},
        {QStringLiteral("cIninTourokuNo"), &R::cIninTourokuNo},
        {QStringLiteral("iIninTourokuChk"), &R::iIninTourokuChk},
        {QStringLiteral("iKanriSekininFlg"), &R::iKanriSekininFlg},
        {QStringLiteral("iKyotenCd"), &R::iKyotenCd, W::Never},
        {QStringLiteral("iKyotenEb"), &R::iKyotenEb, W::Never},
        {QStringLiteral("cKyotenName"), &R::cKyotenName, W::Never, QStringLiteral("KYOTEN.cKyotenName")},
    };
    return list;
}

const QStringList& cT_STAFF::shortColumns()
{
    static const QStringList names = [] {
        QStringList n;
        for (const Column<cD_STAFF>& c : columns()) {
            if (c.name == u"cEmail")
                break;
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
            if (c.name == u"iKyotenCd")
                break;
            if (on)
                n << c.name;
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
    if (!filter.cName.isEmpty())
        addLine(sql, QStringLiteral(" AND cName = '") + filter.cName + QStringLiteral("'"));
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

short cT_STAFF::iDataRead(const cD_STAFF& filter) { return readRows(sqlDataRead(filter), fullNames()); }

short cT_STAFF::iDataReadChk(const cD_STAFF& filter)
{
    return readRows(sqlDataRead(filter, true), fullNames());
}

short cT_STAFF::iDataReadGrid_Jouken(const cD_STAFF& filter)
{
    return readRows(sqlDataReadGrid_Jouken(filter), fullNames());
}

short cT_STAFF::iChkStaffName(const cD_STAFF& row, qint32& nCnt)
{
    return table_.readNumber(sqlChkStaffName(row), nCnt);
}

short cT_STAFF::iDataIdentChk(const cD_STAFF& filter)
{
    return readRows(sqlDataIdentChk(filter), fullNames());
}

short cT_STAFF::iDataReadGrid_AllKyoten(const cD_STAFF& filter)
{
    QStringList names = gridNames();
    names << QStringLiteral("iKyotenCd") << QStringLiteral("iKyotenEb") << QStringLiteral("cKyotenName");
    return readRows(sqlDataReadGrid_AllKyoten(filter, bLongForm_), names);
}

const entity::TableSpec<cD_STAFF>& cT_STAFF::spec()
{
    static const entity::TableSpec<cD_STAFF> s{kTable, QStringLiteral("STAFFが無効です。"), entity::columnNames(columns(), false), QStringLiteral("STAFF_DELETE_LOG"), &cD_STAFF::cName};
    return s;
}

}  // namespace data

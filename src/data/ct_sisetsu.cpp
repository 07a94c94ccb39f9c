#include "data/ct_sisetsu.h"

#include "base/conversions.h"

namespace data {

using entity::addLike;
using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("Sisetsu");

}  // namespace

const std::vector<Column<cD_SISETSU>>& cT_SISETSU::columns()
{
    using R = cD_SISETSU;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        SEAL_COLUMN(cAddress1),
        SEAL_COLUMN(cAddress2),
        SEAL_COLUMN(cAddressKana),
        SEAL_COLUMN(cDaihyo),
        SEAL_COLUMN(cDaihyoKana),
        SEAL_COLUMN(cFaxNo),
        SEAL_COLUMN(cShamei1),
        SEAL_COLUMN(cShamei2),
        SEAL_COLUMN(cShameiKana1),
        SEAL_COLUMN(cShameiKana2),
        SEAL_COLUMN(cTelNo),
        SEAL_COLUMN(cYubinNo),
        SEAL_COLUMN(cSisetsuType),
        SEAL_COLUMN(nIDNo),
        SEAL_COLUMN(nLat),
        SEAL_COLUMN(nLon),
        SEAL_COLUMN(cPcName, W::MachineName),
        SEAL_COLUMN(tUpDateTime, W::ServerTime),
        SEAL_COLUMN(iKikanShubetsu),
        SEAL_COLUMN(cDouiIrai),
        SEAL_COLUMN(cComment),
        SEAL_COLUMN(nColorCode),
        SEAL_COLUMN(iColorIndex),
        SEAL_COLUMN(cShamei1Ryaku),
        SEAL_COLUMN(iPaymentType),
    };
    return list;
}

QString cT_SISETSU::sqlDataReadGrid(const cD_SISETSU& filter)
{
    QString sql = selectFrom();
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
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_SISETSU::sqlDataRead(const cD_SISETSU& filter, bool bExclude)
{
    QString sql = selectFrom();
    entity::Conditions where(sql);
    entity::addIDNoFilter(where, sql, filter.nIDNo, bExclude);
    where.next();
    entity::addSiteKey(sql);
    if (!filter.cSisetsuType.isEmpty()) {
        where.next();
        addLine(sql, QStringLiteral("     cSisetsuType = '") + filter.cSisetsuType + QStringLiteral("'"));
    }
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_SISETSU::sqlDataReadGrid_Jouken(const cD_SISETSU& filter)
{
    QString sql = selectFrom();
    entity::Conditions where(sql);
    where.next();
    entity::addSiteKey(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     Sisetsu.nIDNo = ") + QString::number(filter.nIDNo));
    }
    addLike(where, sql, QStringLiteral("Sisetsu.cShamei1"), filter.cShamei1);
    addLike(where, sql, QStringLiteral("Sisetsu.cShameiKana1"), filter.cShameiKana1);
    entity::addOrderByIDNo(sql);
    return sql;
}

short cT_SISETSU::iDataReadGrid(const cD_SISETSU& filter) { return readRows(sqlDataReadGrid(filter)); }

const entity::TableSpec<cD_SISETSU>& cT_SISETSU::tableSpec()
{
    static const auto s = entity::TableSpec<cD_SISETSU>(kTable, QStringLiteral("Sisetsuが無効です。"),
                                                        entity::columnNames(columns(), false))
                              .deletesInto(QStringLiteral("SISETSU_DELETE_LOG"), &cD_SISETSU::cShamei1);
    return s;
}

namespace {
const QString kAbsentInCascade = QStringLiteral("SISETUが無効です。");

QString facilityCode(const cD_SISETSU& row) { return QString::number(row.nIDNo); }

// The address a patient's consent doctor is written with: the first line, and the
// second after a blank where there is one.
QString joinedAddress(const cD_SISETSU& row)
{
    return base::Trim(row.cAddress2).isEmpty() ? row.cAddress1 : row.cAddress1 + u' ' + row.cAddress2;
}

void addSets(QString& sql, const QStringList& sets)
{
    for (qsizetype i = 0; i < sets.size(); ++i)
        addLine(sql, (i == 0 ? QStringLiteral(" SET ") : QStringLiteral("     ")) + sets[i] +
                         (i + 1 < sets.size() ? QStringLiteral(",") : QString()));
}
}  // namespace

QStringList cT_SISETSU::sqlToRiyousha(const cD_SISETSU& row)
{
    using entity::quoted;
    QString sub;
    addLine(sub, QStringLiteral(" UPDATE RIYOUSHA_SUB"));
    addLine(sub, QStringLiteral(" SET cSyoukaiTelNo = ") + quoted(row.cTelNo));
    addLine(sub, QStringLiteral(" WHERE iSyoukaiSisetsuCd = ") + facilityCode(row));
    addLine(sub, QStringLiteral(" AND iKyotenCd = ") + entity::siteKeyCd());
    addLine(sub, QStringLiteral(" AND iKyotenEb = ") + entity::siteKeyEb());
    return {sub, entity::sqlStampPatients(QStringLiteral("RIYOUSHA_SUB.iSyoukaiSisetsuCd = ") + facilityCode(row))};
}

QStringList cT_SISETSU::sqlToCareMane(const cD_SISETSU& row)
{
    using entity::quoted;
    QString caremane;
    addLine(caremane, QStringLiteral(" UPDATE CAREMANE"));
    addSets(caremane,
            {QStringLiteral("cYubinNo = ") + quoted(row.cYubinNo),
             QStringLiteral("cAdress1 = ") + quoted(row.cAddress1),
             QStringLiteral("cAdress2 = ") + quoted(row.cAddress2), QStringLiteral("cTelNo = ") + quoted(row.cTelNo),
             QStringLiteral("cFaxNo = ") + quoted(row.cFaxNo), QStringLiteral("tUpdateTime = getdate()")});
    addLine(caremane, QStringLiteral(" WHERE iSisetsuCode = ") + facilityCode(row));
    addLine(caremane, QStringLiteral(" AND iKyotenCd = ") + entity::siteKeyCd());
    addLine(caremane, QStringLiteral(" AND iKyotenEb = ") + entity::siteKeyEb());

    const QString join = QStringLiteral("CAREMANE.iKyotenCd = RIYOUSHA_SUB.iKyotenCd"
                                        " AND CAREMANE.iKyotenEb = RIYOUSHA_SUB.iKyotenEb"
                                        " AND CAREMANE.nIDNo = RIYOUSHA_SUB.iCareCd"
                                        " AND CAREMANE.iSisetsuCode = ") +
                         facilityCode(row);
    QString sub;
    addLine(sub, QStringLiteral(" UPDATE RIYOUSHA_SUB"));
    addLine(sub, QStringLiteral(" SET cCareTelNo = ") + quoted(row.cTelNo));
    addLine(sub, QStringLiteral(" FROM CAREMANE"));
    addLine(sub, QStringLiteral(" WHERE ") + join);
    addLine(sub, QStringLiteral(" AND RIYOUSHA_SUB.iKyotenCd = ") + entity::siteKeyCd());
    addLine(sub, QStringLiteral(" AND RIYOUSHA_SUB.iKyotenEb = ") + entity::siteKeyEb());
    return {caremane, sub, entity::sqlStampPatients(join, QStringLiteral(", CAREMANE"))};
}

QStringList cT_SISETSU::sqlToSoudan(const cD_SISETSU& row)
{
    using entity::quoted;
    QString soudan;
    addLine(soudan, QStringLiteral(" UPDATE SOUDAN"));
    addSets(
        soudan,
        {QStringLiteral("cKikan = ") + quoted(row.cShamei1), QStringLiteral("cKikankana = ") + quoted(row.cShameiKana1),
         QStringLiteral("cYubinNo = ") + quoted(row.cYubinNo), QStringLiteral("cAdress1 = ") + quoted(row.cAddress1),
         QStringLiteral("cAdress2 = ") + quoted(row.cAddress2), QStringLiteral("cTelNo = ") + quoted(row.cTelNo),
         QStringLiteral("cFaxNo = ") + quoted(row.cFaxNo)});
    addLine(soudan, QStringLiteral(" WHERE iSisetsuCode = ") + facilityCode(row));
    QString stamp;
    addLine(stamp, QStringLiteral(" UPDATE SOUDAN"));
    addLine(stamp, QStringLiteral(" SET tUpdateTime = getdate()"));
    addLine(stamp, QStringLiteral(" WHERE iSisetsuCode = ") + facilityCode(row));
    return {soudan, stamp};
}

QStringList cT_SISETSU::sqlToRiyousha_Iryou(const cD_SISETSU& row)
{
    using entity::quoted;
    QString doctor;
    addLine(doctor, QStringLiteral(" UPDATE DOCTOR"));
    addSets(
        doctor,
        {QStringLiteral("cKikan = ") + quoted(row.cShamei1), QStringLiteral("cKikanKana = ") + quoted(row.cShameiKana1),
         QStringLiteral("cYubinNo = ") + quoted(row.cYubinNo), QStringLiteral("cAddress1 = ") + quoted(row.cAddress1),
         QStringLiteral("cAddress2 = ") + quoted(row.cAddress2), QStringLiteral("cTelNo = ") + quoted(row.cTelNo),
         QStringLiteral("cFaxNo = ") + quoted(row.cFaxNo), QStringLiteral("tUpdateTime = getdate()")});
    addLine(doctor, QStringLiteral(" WHERE iSisetsuCode = ") + facilityCode(row));

    const auto doctors = [&](const QString& column) {
        QString in;
        addLine(in, QStringLiteral("RIYOUSHA_SUB.") + column + QStringLiteral(" IN ("));
        addLine(in, QStringLiteral(" SELECT DOCTOR.cIDNo"));
        addLine(in, QStringLiteral(" FROM DOCTOR"));
        addLine(in, QStringLiteral(" where DOCTOR.iSisetsuCode =") + facilityCode(row));
        in += u')';
        return in;
    };
    const QString address = joinedAddress(row);
    const QString first = entity::sqlUpdatePatients({QStringLiteral("cDouiIsiKikan1 = ") + quoted(row.cShamei1),
                                                     QStringLiteral("cDouiIsiAdd1 = ") + quoted(address),
                                                     QStringLiteral("tUpdateTime = getdate()")},
                                                    doctors(QStringLiteral("iIsiCd")));
    const QString second = entity::sqlUpdatePatients({QStringLiteral("cDouiIsiKikan2 = ") + quoted(row.cShamei1),
                                                      QStringLiteral("cDouiIsiAdd2 = ") + quoted(address),
                                                      QStringLiteral("tUpdateTime = getdate()")},
                                                     doctors(QStringLiteral("iIsiCd2")));
    return {doctor, first, second};
}

short cT_SISETSU::iDataUpdate_ToRiyousha(const cD_SISETSU* row, bool bTrans)
{
    return cascade(row, bTrans, kAbsentInCascade, &sqlToRiyousha);
}

short cT_SISETSU::iDataUpdate_ToCareMane(const cD_SISETSU* row, bool bTrans)
{
    return cascade(row, bTrans, kAbsentInCascade, &sqlToCareMane);
}

short cT_SISETSU::iDataUpdate_ToSoudan(const cD_SISETSU* row, bool bTrans)
{
    return cascade(row, bTrans, kAbsentInCascade, &sqlToSoudan);
}

short cT_SISETSU::iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU* row, bool bTrans)
{
    return cascade(row, bTrans, kAbsentInCascade, &sqlToRiyousha_Iryou);
}

}  // namespace data

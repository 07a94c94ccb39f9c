// The suite's database as SQLite holds it: the statements of the program run against
// it, keys and column types follow the suite's conventions, and dates stored as text
// compare the way the program's date literals expect.

#include "data/schema.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <map>
#include <ostream>

namespace {

// A fresh in-memory database holding the schema.
class SchemaDb {
public:
    SchemaDb()
    {
        sqlite3_open(":memory:", &db_);
        QString error;
        ok_ = data::applySchema(db_, &error);
        error_ = error;
    }
    ~SchemaDb() { sqlite3_close(db_); }
    SchemaDb(const SchemaDb&) = delete;
    SchemaDb& operator=(const SchemaDb&) = delete;

    bool ok() const { return ok_; }
    const QString& error() const { return error_; }
    sqlite3* handle() const { return db_; }

    // Empty when the statement compiles, else SQLite's complaint.
    QString prepareError(const QString& sql) const
    {
        sqlite3_stmt* st = nullptr;
        const int rc = sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &st, nullptr);
        sqlite3_finalize(st);
        return rc == SQLITE_OK ? QString() : QString::fromUtf8(sqlite3_errmsg(db_));
    }

    bool exec(const QString& sql) const
    {
        char* message = nullptr;
        const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &message);
        sqlite3_free(message);
        return rc == SQLITE_OK;
    }

    // Rows as "a|b|c" lines, NULL as "<null>".
    QStringList rows(const QString& sql) const
    {
        QStringList out;
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db_) << "\n" << sql.toStdString();
            return out;
        }
        while (sqlite3_step(st) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(st); ++i) {
                const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
                cells << (p ? QString::fromUtf8(p) : QStringLiteral("<null>"));
            }
            out << cells.join(QLatin1Char('|'));
        }
        sqlite3_finalize(st);
        return out;
    }

private:
    sqlite3* db_ = nullptr;
    bool ok_ = false;
    QString error_;
};

// The driver rewrites what SQLite spells differently; the statements below keep the
// program's text, and these few spellings are changed here instead.
QString sqliteSpelling(QString sql)
{
    return sql.replace(QStringLiteral("isnull("), QStringLiteral("ifnull("));
}

// ---- the program's statements ---------------------------------------------------

QString patientQuery(bool handOverFilter)
{
    QString s = QStringLiteral(
        "SELECT  RIYOUSHA.iKyotenCd, RIYOUSHA.iKyotenEb, RIYOUSHA.nIDNo, RIYOUSHA.cName, RIYOUSHA.cNameKana,"
        " RIYOUSHA.cYubinNo, RIYOUSHA.cAdress1, RIYOUSHA.cAdress2, RIYOUSHA.tBirthday,"
        " RIYOUSHA.cTelNo, RIYOUSHA.cFaxNo, RIYOUSHA.cMobNo, RIYOUSHA.tExpireDay, RIYOUSHA.nRoomNo,"
        " RIYOUSHA.cYubinNo2, RIYOUSHA.cYubinNo3,"
        " RIYOUSHA.cHTIryoName,"
        " r_sub.cAdress3, r_sub.cYubinNoS0Ryosyu, r_sub.cJusyo1S0Ryosyu, r_sub.cJusyo2S0Ryosyu,"
        " r_sub.cYubinNoS0Renraku, r_sub.cJusyo1S0Renraku, r_sub.cJusyo2S0Renraku,"
        " r_sub.cAtenaS0Ryosyu, r_sub.cAtenaS0Renraku, r_sub.iShoukanSiharai,"
        " jisseki_ct"
        " FROM RIYOUSHA"
        " LEFT JOIN ( SELECT iKyotenCd,iKyotenEb,nIDNo, cAdress3, cYubinNoS0Ryosyu, cJusyo1S0Ryosyu,"
        " cJusyo2S0Ryosyu, cYubinNoS0Renraku, cJusyo1S0Renraku, cJusyo2S0Renraku, cAtenaS0Ryosyu,"
        " cAtenaS0Renraku, iShoukanSiharai FROM RIYOUSHA_SUB"
        "            WHERE  iKyotenCd = 1            AND    iKyotenEb = 1"
        "            ) r_sub ON RIYOUSHA.nIDNo = r_sub.nIDNo"
        " LEFT JOIN ( SELECT nRiyoushaIDNo ,count(nRiyoushaIDNo) as jisseki_ct FROM JISSEKI "
        "            WHERE  iKyotenCd = 1            AND    iKyotenEb = 1"
        "            AND    tServicyDayStart>'2026/10/31' AND tServicyDayStart<'2026/12/01' "
        "            GROUP BY nRiyoushaIDNo"
        "            ) r_jisseki ON RIYOUSHA.nIDNo = r_jisseki.nRiyoushaIDNo "
        " WHERE RIYOUSHA.iKyotenCd = 1 AND RIYOUSHA.iKyotenEb = 1");
    if (handOverFilter)
        s += QStringLiteral(" AND r_sub.iShoukanSiharai = 1 "
                            " AND REPLACE(REPLACE(REPLACE(TRIM(RIYOUSHA.cHTIryoname), CHAR(13), ''), CHAR(10), ''), "
                            "'　', '') <> '手渡し' ");
    return s + QStringLiteral(" ORDER BY RIYOUSHA.cNameKana");
}

QString usedInsurerQuery(int office, int branch)
{
    const QString site = QStringLiteral("     Where iKyotenCd = %1     And   iKyotenEb = %2").arg(office).arg(branch);
    return QStringLiteral("select * from HOKENJA Left Join  ( ") + QStringLiteral("     select cHokenNo from RIYOUSHA ")
           + site + QStringLiteral(" group by cHokenNo  ) as RIYOUSHA_H on chokenNo = cIDNo ")
           + QStringLiteral(" Left Join  ( ") + QStringLiteral("     select cFutanNo from RIYOUSHA ") + site
           + QStringLiteral(" group by cFutanNo  ) as RIYOUSHA_F on cFutanNo = cIDNo ")
           + QStringLiteral(" Where RIYOUSHA_H.cHokenNo = cIDNo Or RIYOUSHA_F.cFutanNo = cIDNo ");
}

const QString kConsentSelect = QStringLiteral(
    " select       RIYOUSHA.iKyotenCd as  R_iKyotenCd, RIYOUSHA.iKyotenEb as R_iKyotenEb, RIYOUSHA.nIDNo, "
    "RIYOUSHA.cName AS  RiyouName,      RIYOUSHA.cNameKana ,RIYOUSHA_DOUI_REC.tDouiDay as  tKijunDay,0 as ShokaiFlg,"
    "0 as EmptyFlg,      RIYOUSHA.tSyosinDay as tSyosinDay ,  RIYOUSHA.tSyoryoDay as tSyoryoDay,"
    "RIYOUSHA_DOUI_REC.tDouiKaryoS as  tDouiKaryoS1,RIYOUSHA_DOUI_REC.tDouiKaryoS as  tDouiKaryoS2,       "
    "RIYOUSHA_DOUI_REC.tDouiDay as tDouiDay1,RIYOUSHA_DOUI_REC.tDouiDay as  tDouiDay2,  RIYOUSHA.iHoken,  "
    "RIYOUSHA.nTantou,STAFF.cName AS  StaffName,       RIYOUSHA_DOUI_REC.cDouiIsiName as cDouiIsiName1,"
    "RIYOUSHA_DOUI_REC.cDouiIsiKikan as  cDouiIsiKikan1,       RIYOUSHA_DOUI_REC.cDouiIsiName as DOUI_ISI,       "
    "RIYOUSHA_DOUI_REC.cDouiIsiKikan as DOUI_KIKAN,       RIYOUSHA_DOUI_REC.cDouiIsiAdd as DOUI_ISI_ADDRESS,       "
    "RIYOUSHA_DOUI_REC.tDouiDay as BaseDate1,RIYOUSHA_DOUI_REC.tDouiDay as  BaseDate2     ,DOCTOR.cIDNo as IshiIDno"
    "     ,DOCTOR.cName as IshiName     ,DOCTOR.cKikan as IshiKikanName"
    " from RIYOUSHA_DOUI_REC, DOCTOR, RIYOUSHA  LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo"
    " WHERE RIYOUSHA.nIDNo >= 0  AND RIYOUSHA.tExpireDay Is Null and RIYOUSHA.iKyotenCd = 1 and RIYOUSHA.iKyotenEb = 1"
    " AND nTantou = 3  AND RIYOUSHA.nIDNo = RIYOUSHA_DOUI_REC.nIDNo  and RIYOUSHA.iKyotenCd = RIYOUSHA_DOUI_REC.iKyotenCd"
    " and RIYOUSHA.iKyotenEb = RIYOUSHA_DOUI_REC.iKyotenEb"
    " AND RIYOUSHA_DOUI_REC.tDouiDay >= '2026/08/16' AND RIYOUSHA_DOUI_REC.tDouiDay < '2026/09/16'"
    " AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd "
    " AND iSejutsuKubun = 0  and (        (RIYOUSHA_DOUI_REC.iSejutuBui1 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui2 >= 2 "
    "or RIYOUSHA_DOUI_REC.iSejutuBui3 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui4 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui5 >= 2)     )");

QString reportBlock()
{
    return QStringLiteral(" from (    select iKyotenCd, iKyotenEb, nRiyoushaIDNo    from 経過報告   where iKyotenCd = 1"
                          "   and   iKyotenEb = 1   and   tServicyMonth >= '2026/09'   and   tServicyMonth <= '2026/11'"
                          "   and   nStaffIDNo = 3   group by iKyotenCd, iKyotenEb, nRiyoushaIDNo  ) AS KEIKAHOUKOKU");
}

const QString kSubBlock = QStringLiteral(
    " left join RIYOUSHA_SUB ON       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA_SUB.iKyotenCd "
    "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA_SUB.iKyotenEb    AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA_SUB.nIDNo ");
const QString kPatientBlock = QStringLiteral(
    " left join RIYOUSHA ON       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA.iKyotenCd "
    "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA.iKyotenEb    AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA.nIDNo ");
const QString kCareBlock = QStringLiteral(
    " LEFT JOIN CAREMANE ON       CAREMANE.nIDNo = RIYOUSHA_SUB.iCareCd  LEFT JOIN SISETSU AS CAREMANESISETSU "
    "    ON  RIYOUSHA_SUB.iCareSisetsuCd = CAREMANESISETSU.nIDNo  where isnull(CAREMANE.nIDNo,0) > 0 ");

QString reportDoctorsQuery()
{
    return QStringLiteral(" select Doctor.cIDno AS ID, Doctor.cName AS NAME, Doctor.cKikan AS KIKAN") + reportBlock()
           + kPatientBlock + kSubBlock
           + QStringLiteral(
               " left join DOCTOR ON   DOCTOR.cIDno =   (CASE WHEN RIYOUSHA.tDouiDay1 IS NULL THEN RIYOUSHA_SUB.iIsiCd2 ELSE "
               "     (CASE WHEN RIYOUSHA.tDouiDay2 IS NULL THEN RIYOUSHA_SUB.iIsiCd ELSE "
               "         (CASE WHEN RIYOUSHA.tDouiDay1 > RIYOUSHA.tDouiDay2 THEN RIYOUSHA_SUB.iIsiCd ELSE RIYOUSHA_SUB.iIsiCd2 END) "
               "     END)   END)  Group by DOCTOR.cIDNo, DOCTOR.cName, Doctor.cKikan  order by DOCTOR.cIDNo");
}

const QString kCaseKikan = QStringLiteral(
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN RIYOUSHA.cDouiIsiKikan1 ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN RIYOUSHA.cDouiIsiKikan1 ELSE RIYOUSHA.cDouiIsiKikan2 END)END)");
const QString kCaseInstitution = QStringLiteral(
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.iSisetsuCode ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN DOCTOR.iSisetsuCode ELSE DOCTOR2.iSisetsuCode END)END)");
const QString kCaseKana = QStringLiteral(
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.cKikanKana ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN DOCTOR.cKikanKana ELSE DOCTOR2.cKikanKana END)END)");

QString institutionsQuery()
{
    QString staffJoins = QStringLiteral(" LEFT JOIN STAFF ON RIYOUSHA.nTantou=STAFF.nIDNo AND RIYOUSHA.iKyotenCd = "
                                        "STAFF.iKyotenCd AND RIYOUSHA.iKyotenEb = STAFF.iKyotenEb )");
    for (int n = 2; n <= 5; ++n)
        staffJoins += QStringLiteral(" LEFT JOIN STAFF as STAFF%1 ON RIYOUSHA.nTantou%1 = STAFF%1.nIDNo AND "
                                     "RIYOUSHA.iKyotenCd = STAFF%1.iKyotenCd AND RIYOUSHA.iKyotenEb = STAFF%1.iKyotenEb )")
                          .arg(n);
    const QString range = QStringLiteral("'2026/11/01' AND '2026/11/30'");
    return QStringLiteral(" select ") + kCaseKikan + QStringLiteral(" AS KIKAN         ,'' AS NAME         ,")
           + kCaseInstitution + QStringLiteral(" AS ID ")
           + QStringLiteral(
               " FROM((((((((((( RIYOUSHA LEFT JOIN DOUIKIROKU ON RIYOUSHA.iKyotenCd = DOUIKIROKU.iKyotenCd AND "
               "RIYOUSHA.iKyotenEb = DOUIKIROKU.iKyotenEb AND RIYOUSHA.nIDNo = DOUIKIROKU.nIDNo  ) "
               " LEFT JOIN   RIYOUSHA_SUB ON  RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo "
               "              AND RIYOUSHA.iKyotenCd = RIYOUSHA_SUB.iKyotenCd "
               "              AND RIYOUSHA.iKyotenEb = RIYOUSHA_SUB.iKyotenEb ) "
               " LEFT JOIN   DOCTOR ON  RIYOUSHA_SUB.iIsiCd = DOCTOR.cIDno ) "
               " LEFT JOIN   DOCTOR as DOCTOR2 ON  RIYOUSHA_SUB.iIsiCd2 = DOCTOR2.cIDno )"
               " LEFT JOIN SISETSU AS SISETSU1 ON SISETSU1.nIDNo = DOCTOR.iSisetsuCode )"
               " LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = DOCTOR2.iSisetsuCode )")
           + staffJoins
           + QStringLiteral(" WHERE RIYOUSHA.iKyotenCd =1 AND RIYOUSHA.iKyotenEb =1 AND ( ( ( RIYOUSHA.tDouiKaryoE1 Between ")
           + range + QStringLiteral(") OR ( RIYOUSHA.tDouiKaryoE2 Between ") + range
           + QStringLiteral(" AND RIYOUSHA.tDouiKaryoE1 is NULL ) )  AND ( DOUIKIROKU.iDoui1CalcType = 2 "
                            " OR DOUIKIROKU.iDoui1CalcType = 0 OR DOUIKIROKU.iDoui1CalcType is NULL ) )")
           + QStringLiteral(" OR ( ( ( RIYOUSHA.tDouiKaryoE2 Between ") + range
           + QStringLiteral(") OR ( RIYOUSHA.tDouiKaryoE1 Between ") + range
           + QStringLiteral(" AND RIYOUSHA.tDouiKaryoE2 is NULL ) )  AND ( DOUIKIROKU.iDoui2CalcType = 2 "
                            " OR DOUIKIROKU.iDoui2CalcType = 0 OR DOUIKIROKU.iDoui2CalcType is NULL ) ) ")
           + QStringLiteral(" AND RIYOUSHA.iTenki <> 1  AND RIYOUSHA.iTenki <> 3  AND RIYOUSHA.iTenki <> 15 ")
           + QStringLiteral(" Group BY ") + kCaseKikan + QStringLiteral("         ,") + kCaseInstitution
           + QStringLiteral("         ,") + kCaseKana + QStringLiteral(" ORDER BY ") + kCaseKana;
}

struct Statement {
    const char* name;
    QString sql;
};

std::vector<Statement> programStatements()
{
    const QString crlf = QStringLiteral("\r\n");
    return {
        {"PatientList", patientQuery(false)},
        {"PatientListWithoutHandedReceipts", patientQuery(true)},
        {"PatientRecord", QStringLiteral("SELECT * FROM RIYOUSHA WHERE nIDNo = 5 and iKyotenCd = 1 and iKyotenEb = 1")},
        {"AllInsurers", QStringLiteral("SELECT * FROM HOKENJA")},
        {"UsedInsurers", usedInsurerQuery(1, 1)},
        {"DoctorsByNumber", QStringLiteral("SELECT * FROM DOCTOR order by CAST(cIDno AS NUMERIC(10))")},
        {"DoctorCount", QStringLiteral("select cIDno from DOCTOR")},
        {"Referrers", QStringLiteral("select * from SYOUKAI order by nIDNo ")},
        {"OwnOfficeGrid",
         QStringLiteral("  select") + crlf
             + QStringList{QStringLiteral("cAddress1"), QStringLiteral("cAddress2"), QStringLiteral("cDaihyo"),
                           QStringLiteral("cFaxNo"), QStringLiteral("cShamei1"), QStringLiteral("cShamei2"),
                           QStringLiteral("cTelNo"), QStringLiteral("cYubinNo"), QStringLiteral("iType"),
                           QStringLiteral("nIDNo"), QStringLiteral("cMailDestination"),
                           QStringLiteral("cMailDestinationZipNo"), QStringLiteral("cHokenTourokuKubetsu"),
                           QStringLiteral("cPersonalNumberCorp"), QStringLiteral("iKyotenToshiNo"),
                           QStringLiteral("cKokuhoTourokuNo"), QStringLiteral("cEmail"),
                           QStringLiteral("cJigyouReceiptName")}
                   .replaceInStrings(QRegularExpression(QStringLiteral("^(.*)$")),
                                     QStringLiteral("      CORP.\\1 as \\1"))
                   .join(QStringLiteral(",") + crlf)
             + crlf + QStringLiteral("  FROM") + crlf + QStringLiteral("      CORP") + crlf + QStringLiteral(" where") + crlf
             + QStringLiteral(" iKyotenCd = 1") + crlf + QStringLiteral(" and iKyotenEb = 1") + crlf
             + QStringLiteral("  order by") + crlf + QStringLiteral("      nIDNo") + crlf},
        {"CareManagersWithFacilityAndOffice",
         QStringLiteral("  select CAREMANE.*, SISETSU.cShamei1 as SISETSUSHAMEI, SISETSU.cSisetsuType as SISETSUSHURUI,"
                        " SISETSU2.cShamei1 as JIGYOSYOSHAMEI, SISETSU2.cSisetsuType as JIGYOSYOSHURUI,"
                        " SISETSU2.cAddress1 as JIGYOSYOADD1, SISETSU2.cAddress2 as JIGYOSYOADD2"
                        "  FROM CAREMANE LEFT JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.iSisetsuCode"
                        "  LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = CAREMANE.iJigyosyoCode"
                        " where     (CAREMANE.iChusiFlg = 0 OR iChusiFlg IS NULL) and CAREMANE.cName LIKE '%山%'"
                        "  order by      CAREMANE.nIDNo")},
        {"StaffGrid", QStringLiteral("  select * FROM STAFF where     (iChusiFlg = 0 OR iChusiFlg IS NULL) and cNameKana "
                                     "LIKE '%ヤ%' and iKyotenCd = 1 and iKyotenEb = 1  order by      nIDNo")},
        {"StaffOfAllOffices",
         QStringLiteral("  select STAFF.*, KYOTEN.cKyotenName FROM STAFF  LEFT JOIN KYOTEN ON STAFF.iKyotenCd = "
                        "KYOTEN.iKyotenCd AND STAFF.iKyotenEb = KYOTEN.iKyotenEb where KYOTEN.iKyotenEb<>0 "
                        "  order by      STAFF.iKyotenCd, STAFF.iKyotenEb, STAFF.nIDNo")},
        {"StaffNameCount", QStringLiteral("  SELECT      COUNT(nIDNo) AS Cnt  FROM      STAFF  WHERE nIDNo != 4 AND        cName = 'x' ")},
        {"FacilitiesOfAKind", QStringLiteral("  select * FROM Sisetsu where     iKikanShubetsu = 2 and cSisetsuType LIKE '%病院%'  order by      nIDNo")},
        {"ApplicationForms", QStringLiteral("  select * FROM SHINSEISYO where iPrintType = 1 and iKyotenCd = 1 and iKyotenEb = 1"
                                            " and (iDelFlg = 0 OR iDelFlg IS NULL) and iStateNo = 0")},
        {"ConsentRenewals",
         QStringLiteral("SELECT * FROM (") + kConsentSelect + QStringLiteral(") ORDER BY nTantou, EmptyFlg, tKijunDay, nIDNo")},
        {"DoctorTelephones", QStringLiteral("SELECT cName, cKikan, cTelNo FROM DOCTOR")},
        {"StaffChoices", sqliteSpelling(QStringLiteral("SELECT nIDNo, cName FROM STAFF WHERE isnull(iChusiFlg, 0) = 0 "
                                                       "AND iKyotenCd = 1 AND iKyotenEb = 1 ORDER BY nIDNo "))},
        {"ReportDoctors", reportDoctorsQuery()},
        {"ReportCareManagers",
         sqliteSpelling(QStringLiteral(" select CAREMANE.nIDNo AS ID, CAREMANE.cName AS NAME, CAREMANESISETSU.cShamei1 AS KIKAN,"
                                       " CAREMANESISETSU.cShameiKana1 AS SHAMEIKANA")
                        + reportBlock() + kSubBlock + kPatientBlock + kCareBlock
                        + QStringLiteral(" Group by CAREMANE.nIDNo, CAREMANE.cName, CAREMANESISETSU.cShamei1, "
                                         "CAREMANESISETSU.cShameiKana1 ORDER BY CAREMANESISETSU.cShameiKana1, "
                                         "CAREMANESISETSU.cShamei1, CAREMANE.cName"))},
        {"ReportFacilities",
         sqliteSpelling(QStringLiteral(" select RIYOUSHA_SUB.iCareSisetsuCd AS ID, CAREMANESISETSU.cShamei1 AS NAME, "
                                       "CAREMANESISETSU.cShameiKana1 AS KIKAN")
                        + reportBlock() + kSubBlock + kPatientBlock + kCareBlock
                        + QStringLiteral(" Group by RIYOUSHA_SUB.iCareSisetsuCd , CAREMANESISETSU.cShamei1 , "
                                         "CAREMANESISETSU.cShameiKana1  ORDER BY CAREMANESISETSU.cShameiKana1, "
                                         "CAREMANESISETSU.cShamei1 "))},
        {"ReportInstitutions", institutionsQuery()},
        {"StaffName", QStringLiteral("SELECT nIDNo, cName FROM STAFF WHERE      iKyotenCd = 1 AND iKyotenEb = 1 AND nIDNo = 3 ORDER BY nIDNo ")},
        {"StaffMaster", QStringLiteral("SELECT nIDNo, cName, cNameRyaku  FROM STAFF  WHERE nIDNo >= 0  AND iKyotenCd = 1 "
                                       "AND iKyotenEb = 1 ORDER BY nIDNo ")},
        {"StaffSearchOfAConsultation",
         QStringLiteral(" select      * from      (         select              nIDNo             ,iKyotenCd"
                        "             ,iKyotenEb             ,cName             ,cNameRyaku              ,cNameKana "
                        "         from              STAFF where cName LIKE '%田%' and cNameKana LIKE '%タ%' and "
                        "(iChusiFlg = 0 OR iChusiFlg IS NULL) and nIDNo = 3 and iKyotenCd = 1 and iKyotenEb = 1      )staff"
                        "      left join      (         select              nIDNo as SoudanID             ,iStaffKyotenCd"
                        "             ,iStaffKyotenEb              ,nStaffIDNo          from              SOUDAN_TANTOU"
                        "         where              iStaffKyotenCd = 1         and  iStaffKyotenEb = 1      )soudan"
                        "      on          staff.nIDNo = soudan.nStaffIDNo      and staff.iKyotenCd = soudan.iStaffKyotenCd"
                        "      and staff.iKyotenEb = soudan.iStaffKyotenEb where      soudan.SoudanID = 7 order by"
                        "     nIDNo    ,cName ")},
        {"StaffCheck", QStringLiteral("SELECT cName, iChusiFlg FROM STAFF  WHERE nIDNo = 3 AND iKyotenCd = 1 AND iKyotenEb = 1")},
        {"OfficeList", QStringLiteral("SELECT * FROM KYOTEN WHERE KYOTEN.iKyotenEb<>0 AND iUsedFlg IN (1, 2)")},
        {"MapEntry", QStringLiteral("  select *  from RIYOUSHA_MAP where nIDNo = 1 and iKyotenCd = 1 and iKyotenEb = 1")},
        {"FeePrices",
         QStringLiteral("SELECT * FROM 療養費単価 WHERE substr(cStartDate,1,4)||substr(cStartDate,6,2) <=   '202611'"
                        " AND substr(cEndDate,1,4)||substr(cEndDate,6,2) >=   '202611' ORDER BY cStartDate, iTankaKbn, nTankaCode")},
        {"VisitFeeBands",
         QStringLiteral("SELECT * FROM 往療費区分 WHERE substr(cStartDate,1,4)||substr(cStartDate,6,2) <=   '202611'"
                        " AND substr(cEndDate,1,4)||substr(cEndDate,6,2) >=   '202611' ORDER BY nMaxLen")},
        // The cascades of the suite's other programs write these columns.
        {"FacilityToConsultations",
         QStringLiteral("UPDATE SOUDAN SET cKikan = 'a', cKikankana = 'a', cYubinNo = '1', cAdress1 = 'a', cAdress2 = 'a',"
                        " cTelNo = '1', cFaxNo = '1', tUpdateTime = '2026/11/21 10:00:00' WHERE iSisetsuCode = 3")},
        {"FacilityToDoctors",
         QStringLiteral("UPDATE DOCTOR SET cKikan = 'a', cKikanKana = 'a', cYubinNo = '1', cAddress1 = 'a', cAddress2 = 'a',"
                        " cTelNo = '1', cFaxNo = '1', tUpdateTime = '2026/11/21 10:00:00' WHERE iSisetsuCode = 3")},
        {"FacilityToPatients",
         QStringLiteral("UPDATE RIYOUSHA SET cDouiIsiKikan1 = 'a', cDouiIsiAdd1 = 'a', tUpdateTime = '2026/11/21 10:00:00' "
                        "WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND nIDNo IN (SELECT nIDNo FROM RIYOUSHA_SUB WHERE iIsiCd IN "
                        "( SELECT DOCTOR.cIDNo FROM DOCTOR where DOCTOR.iSisetsuCode =3))")},
        {"CareManagerToPatients",
         QStringLiteral("UPDATE RIYOUSHA_SUB SET cCareName = 'a', cCareTelNo = '1', iCareSisetsuCd = 3, cSyoukaiTelNo = '1'"
                        " WHERE iCareCd = 4 OR iSyoukaiSisetsuCd = 3")},
        {"FacilityToCareManagers",
         QStringLiteral("UPDATE CAREMANE SET cYubinNo = '1', cAdress1 = 'a', cAdress2 = 'a', cTelNo = '1', cFaxNo = '1',"
                        " tUpdateTime = '2026/11/21 10:00:00' WHERE iSisetsuCode = 3")},
        {"StaffDeleteLog",
         QStringLiteral("insert into STAFF_DELETE_LOG (iKyotenCd, iKyotenEb, nIDNo, cName, deleteLoginID, deleteDate) "
                        "values (1, 1, 9, 'a', 'admin', '2026/11/21 10:00:00')")},
        {"FacilityDeleteLog",
         QStringLiteral("insert into SISETSU_DELETE_LOG (iKyotenCd, iKyotenEb, nIDNo, cName, deleteLoginID, deleteDate) "
                        "values (1, 1, 9, 'a', 'admin', '2026/11/21 10:00:00')")},
    };
}

void PrintTo(const Statement& s, std::ostream* os)
{
    *os << s.name;
}

class ProgramStatementTest : public ::testing::TestWithParam<Statement> {};

TEST_P(ProgramStatementTest, CompilesAgainstTheSchema)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    EXPECT_EQ(db.prepareError(GetParam().sql), QString()) << GetParam().sql.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Statements, ProgramStatementTest, ::testing::ValuesIn(programStatements()),
                         [](const ::testing::TestParamInfo<Statement>& info) { return std::string(info.param.name); });

// ---- the storage conventions ----------------------------------------------------

TEST(SchemaStorageTest, DeclaredTypesFollowTheColumnNames)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    const std::map<QString, QString> exceptions = {
        {QStringLiteral("nLat"), QStringLiteral("REAL")},
        {QStringLiteral("nLon"), QStringLiteral("REAL")},
        {QStringLiteral("経過報告.tServicyMonth"), QStringLiteral("TEXT")},
        {QStringLiteral("deleteDate"), QStringLiteral("DATETIME")},
        {QStringLiteral("deleteLoginID"), QStringLiteral("TEXT")},
    };
    int columns = 0;
    for (const QString& table : db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"))) {
        for (const QString& row : db.rows(QStringLiteral("SELECT name, type FROM pragma_table_info('%1')").arg(table))) {
            const QString name = row.section(QLatin1Char('|'), 0, 0);
            const QString type = row.section(QLatin1Char('|'), 1, 1);
            QString expected;
            if (auto it = exceptions.find(table + QLatin1Char('.') + name); it != exceptions.end())
                expected = it->second;
            else if (auto it2 = exceptions.find(name); it2 != exceptions.end())
                expected = it2->second;
            else if (name.startsWith(QLatin1Char('c')))
                expected = QStringLiteral("TEXT");
            else if (name.startsWith(QLatin1Char('i')) || name.startsWith(QLatin1Char('n')))
                expected = QStringLiteral("INTEGER");
            else if (name.startsWith(QLatin1Char('t')))
                expected = QStringLiteral("DATETIME");
            EXPECT_EQ(type, expected) << table.toStdString() << "." << name.toStdString();
            ++columns;
        }
    }
    EXPECT_GT(columns, 450);
}

TEST(SchemaStorageTest, HoldsTheSuitesTables)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    QStringList tables = db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
    QStringList expected = {
        QStringLiteral("CAREMANE"),      QStringLiteral("CORP"),          QStringLiteral("DOCTOR"),
        QStringLiteral("DOUIKIROKU"),    QStringLiteral("HOKENJA"),       QStringLiteral("JISSEKI"),
        QStringLiteral("KYOTEN"),        QStringLiteral("RIYOUSHA"),      QStringLiteral("RIYOUSHA_DOUI_REC"),
        QStringLiteral("RIYOUSHA_MAP"),  QStringLiteral("RIYOUSHA_SUB"),  QStringLiteral("SHINSEISYO"),
        QStringLiteral("SISETSU"),       QStringLiteral("SISETSU_DELETE_LOG"), QStringLiteral("SOUDAN"),
        QStringLiteral("SOUDAN_TANTOU"), QStringLiteral("STAFF"),         QStringLiteral("STAFF_DELETE_LOG"),
        QStringLiteral("SYOUKAI"),       QStringLiteral("往療費区分"),    QStringLiteral("療養費単価"),
        QStringLiteral("経過報告")};
    tables.sort();
    expected.sort();
    EXPECT_EQ(tables, expected);
}

struct KeyCase {
    const char* table;
    QStringList key;
    bool unique;
};

void PrintTo(const KeyCase& c, std::ostream* os)
{
    *os << c.table;
}

class SchemaKeyTest : public ::testing::TestWithParam<KeyCase> {};

TEST_P(SchemaKeyTest, TableCarriesTheSuitesKey)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    const KeyCase& c = GetParam();
    const QString table = QString::fromUtf8(c.table);
    if (c.unique) {
        const QStringList pk = db.rows(
            QStringLiteral("SELECT name FROM pragma_table_info('%1') WHERE pk > 0 ORDER BY pk").arg(table));
        EXPECT_EQ(pk, c.key);
    } else {
        bool found = false;
        for (const QString& index : db.rows(QStringLiteral("SELECT name FROM pragma_index_list('%1')").arg(table))) {
            const QStringList cols = db.rows(QStringLiteral("SELECT name FROM pragma_index_info('%1') ORDER BY seqno").arg(index));
            found = found || cols.mid(0, c.key.size()) == c.key;
        }
        EXPECT_TRUE(found) << c.table;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Tables, SchemaKeyTest,
    ::testing::Values(
        KeyCase{"RIYOUSHA", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"RIYOUSHA_SUB", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"DOUIKIROKU", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"CAREMANE", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"STAFF", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"SISETSU", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"CORP", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"SHINSEISYO", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"RIYOUSHA_MAP", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, true},
        KeyCase{"KYOTEN", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb")}, true},
        KeyCase{"HOKENJA", {QStringLiteral("cIDno")}, true},
        KeyCase{"DOCTOR", {QStringLiteral("cIDno")}, true},
        KeyCase{"SYOUKAI", {QStringLiteral("nIDNo")}, true},
        KeyCase{"RIYOUSHA_DOUI_REC", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")}, false},
        KeyCase{"JISSEKI", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nRiyoushaIDNo")}, false},
        KeyCase{"経過報告", {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nRiyoushaIDNo"),
                            QStringLiteral("nStaffIDNo"), QStringLiteral("tServicyMonth")}, true},
        KeyCase{"SOUDAN_TANTOU", {QStringLiteral("nIDNo")}, false}),
    [](const ::testing::TestParamInfo<KeyCase>& info) {
        const std::string name = info.param.table;
        return name == "経過報告" ? std::string("KEIKAHOUKOKU") : name;
    });

TEST(SchemaStorageTest, APatientNumberIsUniqueWithinItsOfficeOnly)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, 5)")));
    EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 2, 5)")));
    EXPECT_FALSE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, 5)")));
    EXPECT_FALSE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, NULL)")));
    // Consents and visits are many per patient.
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, tDouiDay) "
                                           "VALUES (1, 1, 5, '2026/09/15')")));
        EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                                           "VALUES (1, 1, 5, '2026/11/02 10:00:00')")));
    }
}

TEST(SchemaStorageTest, PatientsOfAnOfficeAreReadInReadingOrderFromAnIndex)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    const QString plan = db.rows(QStringLiteral("EXPLAIN QUERY PLAN SELECT nIDNo, cName FROM RIYOUSHA WHERE "
                                                "RIYOUSHA.iKyotenCd = 1 AND RIYOUSHA.iKyotenEb = 1 ORDER BY RIYOUSHA.cNameKana"))
                             .join(QLatin1Char('\n'));
    EXPECT_TRUE(plan.contains(QStringLiteral("COVERING INDEX IX_RIYOUSHA_KANA"))) << plan.toStdString();
    EXPECT_FALSE(plan.contains(QStringLiteral("TEMP B-TREE"))) << plan.toStdString();
}

TEST(SchemaStorageTest, OneMonthOfServicesIsReadAsARangeOfAnIndex)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    // Three months of visits of forty patients, with the statistics a live database has.
    ASSERT_TRUE(db.exec(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 3599) "
                                       "INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                                       "SELECT 1, 1, i % 40, printf('2026/%02d/%02d 10:00:00', 9 + i / 1200, 1 + i % 28) "
                                       "FROM n")));
    ASSERT_TRUE(db.exec(QStringLiteral("ANALYZE")));
    const QString plan =
        db.rows(QStringLiteral("EXPLAIN QUERY PLAN SELECT nRiyoushaIDNo ,count(nRiyoushaIDNo) as jisseki_ct FROM JISSEKI "
                               "WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND tServicyDayStart>'2026/10/31' "
                               "AND tServicyDayStart<'2026/12/01' GROUP BY nRiyoushaIDNo"))
            .join(QLatin1Char('\n'));
    EXPECT_TRUE(plan.contains(QStringLiteral("COVERING INDEX IX_JISSEKI_DAY"))) << plan.toStdString();
    EXPECT_TRUE(plan.contains(QStringLiteral("tServicyDayStart>? AND tServicyDayStart<?"))) << plan.toStdString();
}

// The month count of the patient list looks at visits after the last day of the month
// before and before the first of the month after. Visit times are text; one at
// midnight is stored as the date alone, which keeps it out of the span as on SQL Server.
TEST(SchemaStorageTest, VisitTimesStoredAsTextFallInTheMonthLikeDates)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    const std::vector<std::pair<const char*, bool>> visits = {
        {"2026/10/31", false},          {"2026/10/31 00:00:01", true}, {"2026/10/31 23:50:00", true},
        {"2026/11/01", true},           {"2026/11/15 10:30:00", true}, {"2026/11/30 23:59:59", true},
        {"2026/12/01", false},          {"2026/12/01 09:00:00", false}, {"2026/09/30 10:00:00", false}};
    int id = 0;
    for (const auto& [time, inMonth] : visits) {
        ++id;
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cNameKana) "
                                           "VALUES (1, 1, %1, 'ア')").arg(id)));
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                                           "VALUES (1, 1, %1, '%2')").arg(id).arg(QString::fromLatin1(time))));
    }
    QStringList expected;
    id = 0;
    for (const auto& [time, inMonth] : visits)
        expected << QStringLiteral("%1|%2").arg(++id).arg(inMonth ? QStringLiteral("1") : QStringLiteral("<null>"));
    QStringList got;
    for (const QString& row : db.rows(patientQuery(false)))
        got << row.section(QLatin1Char('|'), 2, 2) + QLatin1Char('|') + row.section(QLatin1Char('|'), -1);
    got.sort();
    expected.sort();
    EXPECT_EQ(got, expected);
}

TEST(SchemaStorageTest, UsedInsurersCountOncePerNumberWithLeadingZerosKept)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    for (const char* no : {"39131008", "01130012", "81133014", "06131311", "39111000"})
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO HOKENJA (cIDno, cName) VALUES ('%1', 'x')").arg(QString::fromLatin1(no))));
    const char* const patients[] = {
        "(1, 1, 1, '39131008', NULL)", "(1, 1, 2, '39131008', '81133014')",  // two patients, one insurer
        "(1, 1, 3, '01130012', NULL)",                                        // a number with a leading zero
        "(1, 2, 1, '39111000', NULL)",                                        // the other office only
    };
    for (const char* p : patients)
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cHokenNo, cFutanNo) VALUES ")
                            + QString::fromLatin1(p)));
    QStringList used;
    for (const QString& row : db.rows(usedInsurerQuery(1, 1)))
        used << row.section(QLatin1Char('|'), 0, 0);
    used.sort();
    EXPECT_EQ(used, (QStringList{QStringLiteral("01130012"), QStringLiteral("39131008"), QStringLiteral("81133014")}));
}

TEST(SchemaStorageTest, DoctorLinksStoredAsNumbersFindDoctorsKeyedByText)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    for (const char* doctor : {"('7', '内田　誠', '内田クリニック')", "('12', '森　花子', '森内科医院')"})
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO DOCTOR (cIDno, cName, cKikan) VALUES ") + QString::fromUtf8(doctor)));
    // The newer consent names the doctor; on equal dates the second.
    const char* const patients[][2] = {
        {"(1, 1, 1, '2026/05/01', '2026/08/01')", "(1, 1, 1, 7, 12)"},
        {"(1, 1, 2, '2026/09/01', '2026/04/01')", "(1, 1, 2, 7, 12)"},
        {"(1, 1, 3, '2026/06/01', '2026/06/01')", "(1, 1, 3, 12, 7)"},
    };
    for (const auto& p : patients) {
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, tDouiDay1, tDouiDay2) VALUES ")
                            + QString::fromLatin1(p[0])));
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd, iIsiCd2) VALUES ")
                            + QString::fromLatin1(p[1])));
    }
    for (int patient = 1; patient <= 3; ++patient)
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO 経過報告 (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyMonth, nStaffIDNo) "
                                           "VALUES (1, 1, %1, '2026/10', 3)").arg(patient)));
    EXPECT_EQ(db.rows(reportDoctorsQuery()),
              (QStringList{QStringLiteral("12|森　花子|森内科医院"), QStringLiteral("7|内田　誠|内田クリニック")}));
}

// ---- making a database ----------------------------------------------------------

TEST(SchemaDatabaseTest, ANewFileHoldsTheSchema)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("new.db"));
    QString error;
    ASSERT_TRUE(data::createSchemaDatabase(path, &error)) << error.toStdString();
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    sqlite3_stmt* st = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table'", -1, &st, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(st, 0), static_cast<int>(data::schemaTables().size()));
    sqlite3_finalize(st);
    sqlite3_close(db);
}

TEST(SchemaDatabaseTest, AnExistingFileIsLeftAsItWas)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("clinic.db"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not to be lost");
    file.close();
    QString error;
    EXPECT_FALSE(data::createSchemaDatabase(path, &error));
    EXPECT_TRUE(error.contains(path)) << error.toStdString();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("not to be lost"));
}

TEST(SchemaDatabaseTest, ApplyingTwiceOrWithoutADatabaseSaysWhy)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    QString error;
    EXPECT_FALSE(data::applySchema(db.handle(), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("already exists"))) << error.toStdString();
    error.clear();
    EXPECT_FALSE(data::applySchema(nullptr, &error));
    EXPECT_FALSE(error.isEmpty());
}

}  // namespace

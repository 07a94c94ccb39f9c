// The four statements of the progress report screen, character for character.

#include "selection/keika_extract.h"

#include "app/globals.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

class KeikaStatement : public ::testing::Test {
protected:
    void SetUp() override
    {
        app::iKyotenCd = 1;
        app::iKyotenEb = 2;
        c.sFromMonth = QStringLiteral("2026/09");
        c.sToMonth = QStringLiteral("2026/11");
        c.tFrom = QDate(2026, 9, 1);
        c.tTo = QDate(2026, 11, 30);
    }

    static QString reportBlock(const QString& staff)
    {
        return QStringLiteral(" from (    select iKyotenCd, iKyotenEb, nRiyoushaIDNo    from 経過報告   where iKyotenCd = 1"
                              "   and   iKyotenEb = 2   and   tServicyMonth >= '2026/09'   and   tServicyMonth <= '2026/11'")
               + staff + QStringLiteral("   group by iKyotenCd, iKyotenEb, nRiyoushaIDNo  ) AS KEIKAHOUKOKU");
    }

    KeikaCondition c;
};

const char kSub[] = " left join RIYOUSHA_SUB ON       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA_SUB.iKyotenCd "
                    "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA_SUB.iKyotenEb "
                    "   AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA_SUB.nIDNo ";
const char kPatient[] = " left join RIYOUSHA ON       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA.iKyotenCd "
                        "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA.iKyotenEb "
                        "   AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA.nIDNo ";
const char kCaremane[] = " LEFT JOIN CAREMANE ON       CAREMANE.nIDNo = RIYOUSHA_SUB.iCareCd"
                         "  LEFT JOIN SISETSU AS CAREMANESISETSU "
                         "    ON  RIYOUSHA_SUB.iCareSisetsuCd = CAREMANESISETSU.nIDNo "
                         " where isnull(CAREMANE.nIDNo,0) > 0 ";

TEST_F(KeikaStatement, DoctorsOfTheNewerConsent)
{
    c.iKeikaMode = 0;
    const QString expected =
        QStringLiteral(" select Doctor.cIDno AS ID, Doctor.cName AS NAME, Doctor.cKikan AS KIKAN") + reportBlock({})
        + QString::fromUtf8(kPatient) + QString::fromUtf8(kSub)
        + QStringLiteral(" left join DOCTOR ON   DOCTOR.cIDno = "
                         "  (CASE WHEN RIYOUSHA.tDouiDay1 IS NULL THEN RIYOUSHA_SUB.iIsiCd2 ELSE "
                         "     (CASE WHEN RIYOUSHA.tDouiDay2 IS NULL THEN RIYOUSHA_SUB.iIsiCd ELSE "
                         "         (CASE WHEN RIYOUSHA.tDouiDay1 > RIYOUSHA.tDouiDay2 THEN RIYOUSHA_SUB.iIsiCd ELSE RIYOUSHA_SUB.iIsiCd2 END) "
                         "     END)   END)  Group by DOCTOR.cIDNo, DOCTOR.cName, Doctor.cKikan  order by DOCTOR.cIDNo");
    EXPECT_EQ(sqlKeikaData(c), expected);
}

TEST_F(KeikaStatement, CareManagersOfOneStaffMember)
{
    c.iKeikaMode = 1;
    c.nStaffNo = 12;
    const QString expected =
        QStringLiteral(" select CAREMANE.nIDNo AS ID, CAREMANE.cName AS NAME, CAREMANESISETSU.cShamei1 AS KIKAN, "
                       "CAREMANESISETSU.cShameiKana1 AS SHAMEIKANA")
        + reportBlock(QStringLiteral("   and   nStaffIDNo = 12")) + QString::fromUtf8(kSub) + QString::fromUtf8(kPatient)
        + QString::fromUtf8(kCaremane)
        + QStringLiteral(" Group by CAREMANE.nIDNo, CAREMANE.cName, CAREMANESISETSU.cShamei1, CAREMANESISETSU.cShameiKana1"
                         " ORDER BY CAREMANESISETSU.cShameiKana1, CAREMANESISETSU.cShamei1, CAREMANE.cName");
    EXPECT_EQ(sqlKeikaData(c), expected);
}

TEST_F(KeikaStatement, FacilitiesOfCareManagers)
{
    c.iKeikaMode = 3;
    const QString expected =
        QStringLiteral(" select RIYOUSHA_SUB.iCareSisetsuCd AS ID, CAREMANESISETSU.cShamei1 AS NAME, "
                       "CAREMANESISETSU.cShameiKana1 AS KIKAN")
        + reportBlock({}) + QString::fromUtf8(kSub) + QString::fromUtf8(kPatient) + QString::fromUtf8(kCaremane)
        + QStringLiteral(" Group by RIYOUSHA_SUB.iCareSisetsuCd , CAREMANESISETSU.cShamei1 , CAREMANESISETSU.cShameiKana1 "
                         " ORDER BY CAREMANESISETSU.cShameiKana1, CAREMANESISETSU.cShamei1 ");
    EXPECT_EQ(sqlKeikaData(c), expected);
}

TEST_F(KeikaStatement, MedicalInstitutionsWithElevenNestedJoinsAndTheTopLevelOr)
{
    c.iKeikaMode = 2;
    c.nStaffNo = 12;  // not used by this mode
    const QString kikan = QStringLiteral(
        "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN RIYOUSHA.cDouiIsiKikan1 ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
        "RIYOUSHA.tDouiDay2 THEN RIYOUSHA.cDouiIsiKikan1 ELSE RIYOUSHA.cDouiIsiKikan2 END)END)");
    const QString code = QStringLiteral(
        "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.iSisetsuCode ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
        "RIYOUSHA.tDouiDay2 THEN DOCTOR.iSisetsuCode ELSE DOCTOR2.iSisetsuCode END)END)");
    const QString kana = QStringLiteral(
        "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.cKikanKana ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
        "RIYOUSHA.tDouiDay2 THEN DOCTOR.cKikanKana ELSE DOCTOR2.cKikanKana END)END)");
    QString staff = QStringLiteral(" LEFT JOIN STAFF ON RIYOUSHA.nTantou=STAFF.nIDNo AND RIYOUSHA.iKyotenCd = STAFF.iKyotenCd"
                                   " AND RIYOUSHA.iKyotenEb = STAFF.iKyotenEb )");
    for (const char* n : {"2", "3", "4", "5"})
        staff += QStringLiteral(" LEFT JOIN STAFF as STAFF%1 ON RIYOUSHA.nTantou%1 = STAFF%1.nIDNo AND RIYOUSHA.iKyotenCd = "
                                "STAFF%1.iKyotenCd AND RIYOUSHA.iKyotenEb = STAFF%1.iKyotenEb )")
                     .arg(QLatin1String(n));
    const QString expected =
        QStringLiteral(" select ") + kikan + QStringLiteral(" AS KIKAN         ,'' AS NAME         ,") + code
        + QStringLiteral(" AS ID ")
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
        + staff
        + QStringLiteral(
            " WHERE RIYOUSHA.iKyotenCd =1 AND RIYOUSHA.iKyotenEb =2"
            " AND ( ( ( RIYOUSHA.tDouiKaryoE1 Between '2026/09/01' AND '2026/11/30') "
            " OR ( RIYOUSHA.tDouiKaryoE2 Between '2026/09/01' AND '2026/11/30' AND RIYOUSHA.tDouiKaryoE1 is NULL ) ) "
            " AND ( DOUIKIROKU.iDoui1CalcType = 2  OR DOUIKIROKU.iDoui1CalcType = 0 OR DOUIKIROKU.iDoui1CalcType is NULL ) )"
            " OR ( ( ( RIYOUSHA.tDouiKaryoE2 Between '2026/09/01' AND '2026/11/30') "
            " OR ( RIYOUSHA.tDouiKaryoE1 Between '2026/09/01' AND '2026/11/30' AND RIYOUSHA.tDouiKaryoE2 is NULL ) ) "
            " AND ( DOUIKIROKU.iDoui2CalcType = 2  OR DOUIKIROKU.iDoui2CalcType = 0 OR DOUIKIROKU.iDoui2CalcType is NULL ) ) "
            " AND RIYOUSHA.iTenki <> 1  AND RIYOUSHA.iTenki <> 3  AND RIYOUSHA.iTenki <> 15 ")
        + QStringLiteral(" Group BY ") + kikan + QStringLiteral("          ,") + code + QStringLiteral("          ,") + kana
        + QStringLiteral("  ORDER BY ") + kana + u' ';
    EXPECT_EQ(sqlKeikaData(c), expected);
    EXPECT_EQ(sqlKeikaData(c).count(u'('), sqlKeikaData(c).count(u')'));
}

}  // namespace

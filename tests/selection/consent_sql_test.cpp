// The consent extraction statement, character for character.

#include "selection/consent_extract.h"

#include "app/globals.h"
#include "extract/seal_install.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

const char* const kSelect =
    " select "
    "      RIYOUSHA.iKyotenCd as  R_iKyotenCd, RIYOUSHA.iKyotenEb as R_iKyotenEb, RIYOUSHA.nIDNo, RIYOUSHA.cName AS  RiyouName,"
    "      RIYOUSHA.cNameKana ,RIYOUSHA_DOUI_REC.tDouiDay as  tKijunDay,0 as ShokaiFlg,0 as EmptyFlg,"
    "      RIYOUSHA.tSyosinDay as tSyosinDay ,  RIYOUSHA.tSyoryoDay as tSyoryoDay,RIYOUSHA_DOUI_REC.tDouiKaryoS as  tDouiKaryoS1,RIYOUSHA_DOUI_REC.tDouiKaryoS as  tDouiKaryoS2, "
    "      RIYOUSHA_DOUI_REC.tDouiDay as tDouiDay1,RIYOUSHA_DOUI_REC.tDouiDay as  tDouiDay2,  RIYOUSHA.iHoken,  RIYOUSHA.nTantou,STAFF.cName AS  StaffName, "
    "      RIYOUSHA_DOUI_REC.cDouiIsiName as cDouiIsiName1,RIYOUSHA_DOUI_REC.cDouiIsiKikan as  cDouiIsiKikan1, "
    "      RIYOUSHA_DOUI_REC.cDouiIsiName as DOUI_ISI, "
    "      RIYOUSHA_DOUI_REC.cDouiIsiKikan as DOUI_KIKAN, "
    "      RIYOUSHA_DOUI_REC.cDouiIsiAdd as DOUI_ISI_ADDRESS, "
    "      RIYOUSHA_DOUI_REC.tDouiDay as BaseDate1,RIYOUSHA_DOUI_REC.tDouiDay as  BaseDate2"
    "     ,DOCTOR.cIDNo as IshiIDno"
    "     ,DOCTOR.cName as IshiName"
    "     ,DOCTOR.cKikan as IshiKikanName"
    " from RIYOUSHA_DOUI_REC, DOCTOR, RIYOUSHA "
    " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo"
    " WHERE RIYOUSHA.nIDNo >= 0 "
    " AND RIYOUSHA.tExpireDay Is Null"
    " and RIYOUSHA.iKyotenCd = 1"
    " and RIYOUSHA.iKyotenEb = 2";

const char* const kJoin =
    " AND RIYOUSHA.nIDNo = RIYOUSHA_DOUI_REC.nIDNo "
    " and RIYOUSHA.iKyotenCd = RIYOUSHA_DOUI_REC.iKyotenCd"
    " and RIYOUSHA.iKyotenEb = RIYOUSHA_DOUI_REC.iKyotenEb";

class ConsentStatement : public ::testing::Test {
protected:
    void SetUp() override
    {
        app::iKyotenCd = 1;
        app::iKyotenEb = 2;
        c.tFrom = QDate(2026, 8, 16);
        c.tTo = QDate(2026, 9, 16);
    }
    DouiCondition c;
};

TEST_F(ConsentStatement, MassageForOneStaffMemberByBaseDate)
{
    c.iSejutsu = 0;
    c.iSort = 0;
    const QString expected =
        QString::fromUtf8(kSelect) + QStringLiteral(" AND nTantou = 12 ") + QString::fromUtf8(kJoin)
        + QStringLiteral(" AND RIYOUSHA_DOUI_REC.tDouiDay >= '2026/08/16' AND RIYOUSHA_DOUI_REC.tDouiDay < '2026/09/16'"
                         " AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd "
                         " AND iSejutsuKubun = 0 "
                         " and ("
                         "        (RIYOUSHA_DOUI_REC.iSejutuBui1 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui2 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui3 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui4 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui5 <= 1)"
                         "     )"
                         " ORDER BY nTantou, EmptyFlg, tKijunDay, nIDNo ");
    EXPECT_EQ(sqlKanjaData(c, 12), expected);
}

TEST_F(ConsentStatement, DeformityCorrectionForAllStaffByPatient)
{
    c.iSejutsu = 1;
    c.iSort = 1;
    c.tFrom = QDate(2026, 10, 1);
    c.tTo = QDate(2026, 10, 31);
    const QString expected =
        QString::fromUtf8(kSelect) + QString::fromUtf8(kJoin)
        + QStringLiteral(" AND RIYOUSHA_DOUI_REC.tDouiDay >= '2026/10/01' AND RIYOUSHA_DOUI_REC.tDouiDay < '2026/10/31'"
                         " AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd "
                         " AND iSejutsuKubun = 0 "
                         " and ("
                         "        (RIYOUSHA_DOUI_REC.iSejutuBui1 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui2 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui3 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui4 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui5 >= 2)"
                         "     )"
                         " ORDER BY nTantou, EmptyFlg, nIDNo ,tKijunDay");
    EXPECT_EQ(sqlKanjaData(c, 0), expected);
}

TEST_F(ConsentStatement, AcupunctureTestsOnlyTheKindAndOtherKindsAddNothing)
{
    c.iSejutsu = 7;
    const QString acupuncture = sqlKanjaData(c, 0);
    EXPECT_TRUE(acupuncture.endsWith(QStringLiteral(
        " AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd  AND iSejutsuKubun = 1  ORDER BY nTantou, EmptyFlg, tKijunDay, nIDNo ")));
    EXPECT_FALSE(acupuncture.contains(QStringLiteral("iSejutuBui1 <=")));
    c.iSejutsu = 3;
    EXPECT_TRUE(sqlKanjaData(c, 0).endsWith(
        QStringLiteral(" AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd  ORDER BY nTantou, EmptyFlg, tKijunDay, nIDNo ")));
}

TEST_F(ConsentStatement, OfficeNumbersAreWrittenAsPlainSignedDecimals)
{
    app::iKyotenCd = -3;
    app::iKyotenEb = 0;
    const QString s = sqlKanjaData(c, 0);
    EXPECT_TRUE(s.contains(QStringLiteral(" and RIYOUSHA.iKyotenCd = -3 and RIYOUSHA.iKyotenEb = 0 AND RIYOUSHA.nIDNo")));
}

}  // namespace

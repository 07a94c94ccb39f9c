// The consent extraction statement, character for character (whole statements in
// tests/data/fixtures/golden/consent_*.sql).

#include "selection/consent_extract.h"
#include "selection/staff_list.h"

#include "support/globals_scope.h"

#include "app/globals.h"
#include "support/golden.h"
#include "support/installation.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

class ConsentStatement : public ::testing::Test {
protected:
    sealtest::GlobalsScope globals;
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
    sealtest::expectGolden(QStringLiteral("consent_massage_staff_12.sql"), sqlKanjaData(c, 12));
}

TEST_F(ConsentStatement, DeformityCorrectionForAllStaffByPatient)
{
    c.iSejutsu = 1;
    c.iSort = 1;
    c.tFrom = QDate(2026, 10, 1);
    c.tTo = QDate(2026, 10, 31);
    sealtest::expectGolden(QStringLiteral("consent_deformity_every_staff.sql"), sqlKanjaData(c, 0));
}

TEST_F(ConsentStatement, AcupunctureTestsOnlyTheKindAndOtherKindsAddNothing)
{
    c.iSejutsu = 7;
    const QString acupuncture = sqlKanjaData(c, 0);
    EXPECT_TRUE(acupuncture.endsWith(QStringLiteral(" AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd  AND iSejutsuKubun = "
                                                    "1  ORDER BY nTantou, EmptyFlg, tKijunDay, nIDNo ")));
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
    EXPECT_TRUE(
        s.contains(QStringLiteral(" and RIYOUSHA.iKyotenCd = -3 and RIYOUSHA.iKyotenEb = 0 AND RIYOUSHA.nIDNo")));
}

}  // namespace

// The schema test compiles these against the suite's tables.
TEST_F(ConsentStatement, TheStaffStatementsOfTheSideScreensAreTheirGoldenTexts)
{
    sealtest::expectGolden(QStringLiteral("staff_choices.sql"), sqlCbStaffData());
    sealtest::expectGolden(QStringLiteral("staff_name.sql"), sqlGetStaffData(3));
}

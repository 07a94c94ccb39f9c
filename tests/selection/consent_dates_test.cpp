// The date range of an output month and the dates of each consent row.

#include "selection/consent_extract.h"

#include "support/param_names.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

struct RangeCase {
    const char* name;
    short iSejutsu;
    short months;
    QDate output;
    const char* from;
    const char* to;
};

class ConsentRangeTable : public ::testing::TestWithParam<RangeCase> {};

TEST_P(ConsentRangeTable, GivesTheRangeOfConsentDates)
{
    const RangeCase& c = GetParam();
    const DateRange r = consentDateRange(c.output, c.iSejutsu, c.months);
    EXPECT_EQ(r.tFrom.toString(QStringLiteral("yyyy/MM/dd")), QString::fromLatin1(c.from)) << c.name;
    EXPECT_EQ(r.tTo.toString(QStringLiteral("yyyy/MM/dd")), QString::fromLatin1(c.to)) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    OutputMonthNovember, ConsentRangeTable,
    ::testing::Values(RangeCase{"massage 3", 0, 3, QDate(2026, 11, 1), "2026/08/16", "2026/09/16"},
                      RangeCase{"massage 6", 0, 6, QDate(2026, 11, 1), "2026/05/16", "2026/06/16"},
                      RangeCase{"massage 1", 0, 1, QDate(2026, 11, 1), "2026/10/16", "2026/11/16"},
                      RangeCase{"deformity 1", 1, 1, QDate(2026, 11, 1), "2026/10/01", "2026/10/31"},
                      RangeCase{"deformity 3", 1, 3, QDate(2026, 11, 1), "2026/08/01", "2026/08/31"},
                      // The day the operator typed plays no part.
                      RangeCase{"massage 3, day 31", 0, 3, QDate(2026, 12, 31), "2026/09/16", "2026/10/16"},
                      RangeCase{"acupuncture 3, over the year", 7, 3, QDate(2027, 1, 15), "2026/10/16", "2026/11/16"}),
    sealtest::ByName{});

struct DateCase {
    const char* name;
    short iSejutsu;
    const char* douiDay;
    short months;
    const char* kigen;
    const char* shin;
};

class ConsentDateTable : public ::testing::TestWithParam<DateCase> {};

TEST_P(ConsentDateTable, BothPassesGiveTheEndAndTheRenewal)
{
    const DateCase& c = GetParam();
    const QString day = QString::fromLatin1(c.douiDay);
    ConsentDates d = firstDatePass(day, 0, c.months, QDate());
    secondDatePass(d, c.iSejutsu, QDate::fromString(day, QStringLiteral("yyyy/MM/dd")));
    EXPECT_EQ(d.DouiKigen, QString::fromLatin1(c.kigen)) << c.name;
    EXPECT_EQ(d.ShinDouiDay, QString::fromLatin1(c.shin)) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Consents, ConsentDateTable,
    ::testing::Values(DateCase{"massage 15th", 0, "2026/09/15", 3, "2026/11/30", "2026/12/01"},
                      DateCase{"massage 16th", 0, "2026/09/16", 3, "2026/12/31", "2027/01/01"},
                      DateCase{"massage 16th, earlier", 0, "2026/08/16", 3, "2026/11/30", "2026/12/01"},
                      DateCase{"deformity 5th", 1, "2026/10/05", 1, "2026/11/05", "2026/11/05"},
                      DateCase{"deformity 1st", 1, "2026/10/01", 1, "2026/11/01", "2026/11/01"},
                      // Six months move only the range: the second pass keeps 3 and 4.
                      DateCase{"massage 6 months", 0, "2026/05/20", 6, "2026/08/31", "2026/09/01"},
                      DateCase{"acupuncture 15th", 7, "2026/09/15", 3, "2026/11/30", "2026/12/01"}),
    sealtest::ByName{});

TEST(ConsentDates, MonthsOfTreatmentCountCalendarMonthsAndNeverGoBelowZero)
{
    // From the first treatment to the end of the first pass (2026/09/14 + 3 months =
    // 2026/12/14), whatever the days: 2026/03/31 -> 2026/12/14 is 9.
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 0, 3, QDate(2026, 3, 31)).nKeika, 9);
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 0, 3, QDate()).nKeika, 0);
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 0, 3, QDate(2027, 2, 1)).nKeika, 0);
    // The base kind "初療年月日" counts from the base date itself: nothing.
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 2, 3, QDate(2020, 1, 1)).nKeika, 0);
}

TEST(ConsentDates, BaseKindsOtherThanConsentDateEndOnTheBaseDate)
{
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 1, 3, QDate()).DouiKigen, QStringLiteral("2026/09/15"));
    EXPECT_EQ(firstDatePass(QStringLiteral("2026/09/15"), 2, 3, QDate()).ShinDouiDay, QStringLiteral("2026/09/16"));
}

TEST(ConsentDates, ABaseTextThatIsNoDateLeavesTheDatesEmpty)
{
    const ConsentDates d = firstDatePass(QString(), 0, 3, QDate(2026, 1, 1));
    EXPECT_TRUE(d.DouiKigen.isEmpty());
    EXPECT_TRUE(d.ShinDouiDay.isEmpty());
    EXPECT_EQ(d.nKeika, 0);
}

TEST(DoctorNames, WidthAndBlanksDoNotCount)
{
    EXPECT_EQ(normaliseDoctorText(QStringLiteral(" 山田　太郎 ")), normaliseDoctorText(QStringLiteral("山田太郎")));
    EXPECT_EQ(normaliseDoctorText(QStringLiteral("ﾔﾏﾀﾞ ｸﾘﾆｯｸ")), QStringLiteral("ヤマダクリニック"));
    EXPECT_EQ(normaliseDoctorText(QStringLiteral("ABC 1")), QStringLiteral("ＡＢＣ１"));
    EXPECT_NE(normaliseDoctorText(QStringLiteral("山田太郎")), normaliseDoctorText(QStringLiteral("山田次郎")));
}

}  // namespace

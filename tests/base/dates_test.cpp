// Date patterns, month arithmetic that clamps at the month's end, date texts, and
// the two orders of the period end.

#include "base/dates.h"

#include "base/vb_error.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace base;
using sealtest::faultOf;

struct FormatCase {
    const char* name;
    QString pattern;
    QString expected;
};

class DatePattern : public ::testing::TestWithParam<FormatCase> {};

TEST_P(DatePattern, FormatsLikeTheRuntime)
{
    const QDateTime when(QDate(2026, 3, 5), QTime(14, 7, 9));
    EXPECT_EQ(Format(when, GetParam().pattern), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Patterns, DatePattern,
                         ::testing::Values(FormatCase{"fullDate", "yyyy/mm/dd", "2026/03/05"},
                                           FormatCase{"firstOfMonth", "yyyy/mm/01", "2026/03/01"},
                                           FormatCase{"yearMonth", "yyyy/mm", "2026/03"},
                                           FormatCase{"compact", "yyyymmdd", "20260305"},
                                           FormatCase{"decimalForAge", "yyyy\\.mmdd", "2026.0305"},
                                           FormatCase{"monthAlone", "m", "3"}, FormatCase{"dayAlone", "d", "5"},
                                           FormatCase{"dayOfYear", "y", "64"},
                                           FormatCase{"minutesAfterHour", "hh:mm:ss", "14:07:09"},
                                           FormatCase{"quotedLiteral", "yyyy\"年\"m\"月\"", "2026年3月"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(DatePattern, UnsetDateGivesEmptyTextAndDateZeroIsTheRuntimes)
{
    EXPECT_EQ(Format(QDate(), u"yyyy/mm/dd"), QString());
    EXPECT_EQ(Format(dateZero(), u"yyyy\\.mmdd"), QStringLiteral("1899.1230"));
    EXPECT_EQ(shortDate(QDate(2026, 11, 21)), QStringLiteral("2026/11/21"));
}

struct AddCase {
    const char* name;
    QString interval;
    int number;
    QDate from;
    QDate expected;
};

class MonthArithmetic : public ::testing::TestWithParam<AddCase> {};

TEST_P(MonthArithmetic, ClampsToTheEndOfShorterMonths)
{
    const AddCase& c = GetParam();
    EXPECT_EQ(DateAdd(c.interval, c.number, c.from), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Steps, MonthArithmetic,
                         ::testing::Values(AddCase{"jan31PlusOne", "m", 1, {2026, 1, 31}, {2026, 2, 28}},
                                           AddCase{"jan31PlusOneLeap", "m", 1, {2028, 1, 31}, {2028, 2, 29}},
                                           AddCase{"mar31MinusOne", "m", -1, {2026, 3, 31}, {2026, 2, 28}},
                                           AddCase{"acrossYears", "m", 3, {2026, 11, 30}, {2027, 2, 28}},
                                           AddCase{"leapDayPlusYear", "yyyy", 1, {2028, 2, 29}, {2029, 2, 28}},
                                           AddCase{"dayBack", "d", -1, {2026, 3, 1}, {2026, 2, 28}},
                                           AddCase{"weeks", "ww", 2, {2026, 12, 25}, {2027, 1, 8}}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(MonthArithmetic, UnknownIntervalAndUnsetDateAreFaults)
{
    EXPECT_EQ(faultOf([] { DateAdd(u"x", 1, QDate(2026, 1, 1)); }), 5);
    EXPECT_EQ(faultOf([] { DateAdd(u"m", 1, QDate()); }), 13);
    EXPECT_EQ(faultOf([] { DateAdd(u"yyyy", 1, QDate(9999, 6, 1)); }), 5);
}

struct PeriodCase {
    const char* name;
    QDate start;
    int months;
    QString end;
};

class PeriodEnd : public ::testing::TestWithParam<PeriodCase> {};

TEST_P(PeriodEnd, FirstOfMonthAddsFirstOtherDaysStepBackFirst)
{
    EXPECT_EQ(csMonthEnd(GetParam().start, GetParam().months), GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(Starts, PeriodEnd,
                         ::testing::Values(PeriodCase{"firstPlusOne", {2026, 1, 1}, 1, "2026/01/31"},
                                           PeriodCase{"firstPlusZero", {2026, 3, 1}, 0, "2026/02/28"},
                                           PeriodCase{"sixteenthPlusThree", {2026, 1, 16}, 3, "2026/04/15"},
                                           // From the 31st the day before is the 30th, then the month is added:
                                           // adding first would give 2026/04/29 instead.
                                           PeriodCase{"mar31PlusOne", {2026, 3, 31}, 1, "2026/04/30"},
                                           PeriodCase{"jan31PlusOne", {2026, 1, 31}, 1, "2026/02/28"},
                                           PeriodCase{"mar30PlusOneLeap", {2028, 3, 30}, -1, "2028/02/29"},
                                           PeriodCase{"secondPlusOne", {2026, 2, 2}, 1, "2026/03/01"}),
                         [](const auto& info) { return std::string(info.param.name); });

struct DateTextCase {
    const char* name;
    QString text;
    QDate expected;  // unset: not a date
};

class DateText : public ::testing::TestWithParam<DateTextCase> {};

TEST_P(DateText, RecognisesTheFormsTheProgramTakes)
{
    const DateTextCase& c = GetParam();
    EXPECT_EQ(IsDate(c.text), c.expected.isValid());
    if (c.expected.isValid())
        EXPECT_EQ(CDate(c.text), c.expected);
    else
        EXPECT_EQ(faultOf([&] { CDate(c.text); }), 13);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DateText,
    ::testing::Values(DateTextCase{"slashes", "2026/11/21", {2026, 11, 21}},
                      DateTextCase{"hyphens", "2026-11-21", {2026, 11, 21}},
                      DateTextCase{"yearMonth", "2026/11", {2026, 11, 1}},
                      DateTextCase{"withTime", "2026/11/21 13:05:00", {2026, 11, 21}},
                      DateTextCase{"kanji", "2026年11月21日", {2026, 11, 21}},
                      DateTextCase{"twoDigitYear", "26/11/21", {2026, 11, 21}},
                      DateTextCase{"leapDay", "2028/02/29", {2028, 2, 29}}, DateTextCase{"noLeapDay", "2026/02/29", {}},
                      DateTextCase{"month13", "2026/13/01", {}}, DateTextCase{"mixedSeparators", "2026/11-21", {}},
                      DateTextCase{"badTime", "2026/11/21 25:00", {}}, DateTextCase{"words", "tomorrow", {}},
                      DateTextCase{"number", "20261121", {}}),
    [](const auto& info) { return std::string(info.param.name); });

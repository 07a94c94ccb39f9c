// The runtime's number and text rules: leading numbers, rounding to even, the faults
// 13 and 6, blanks-only trimming, CP932 byte lengths, and database values.

#include "base/conversions.h"

#include "base/vb_error.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QDateTime>

using namespace base;
using sealtest::faultOf;

// --- Val ------------------------------------------------------------------------

struct ValCase {
    const char* name;
    QString text;
    double expected;
};

class ValRule : public ::testing::TestWithParam<ValCase> {};

TEST_P(ValRule, TakesTheLeadingNumber) { EXPECT_DOUBLE_EQ(Val(GetParam().text), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(Texts, ValRule,
                         ::testing::Values(ValCase{"fraction", "1000.9", 1000.9}, ValCase{"letters", "abc", 0},
                                           ValCase{"trailingText", "5abc", 5},
                                           ValCase{"blanksAnywhere", " 1 2\t3\n4", 1234}, ValCase{"empty", "", 0},
                                           ValCase{"negative", "-7.5x", -7.5}, ValCase{"commaEnds", "1,000", 1},
                                           ValCase{"secondPointEnds", "1.2.3", 1.2}, ValCase{"exponentD", "2d2", 200},
                                           ValCase{"exponentWithoutDigits", "7e", 7},
                                           ValCase{"hexIsInteger", "&HFFFF", -1}, ValCase{"hexLong", "&H10000", 65536},
                                           // "和タイプ" with trailing text keeps its leading number.
                                           ValCase{"settingWithComment", "5 ;和暦", 5}),
                         [](const auto& info) { return std::string(info.param.name); });

// --- CInt, CLng, IsNumeric ------------------------------------------------------

struct RoundCase {
    const char* name;
    double value;
    int expected;
};

class BankersRounding : public ::testing::TestWithParam<RoundCase> {};

TEST_P(BankersRounding, HalvesGoToTheEvenNeighbour)
{
    EXPECT_EQ(CInt(GetParam().value), GetParam().expected);
    EXPECT_EQ(CLng(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Values, BankersRounding,
                         ::testing::Values(RoundCase{"half0", 0.5, 0}, RoundCase{"half1", 1.5, 2},
                                           RoundCase{"half2", 2.5, 2}, RoundCase{"minusHalf1", -1.5, -2},
                                           RoundCase{"minusHalf2", -2.5, -2}, RoundCase{"above", 2.5001, 3}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(NumberConversion, TextThatIsNotANumberIsATypeMismatch)
{
    for (const QString& t :
         {QStringLiteral(""), QStringLiteral(" "), QStringLiteral("abc"), QStringLiteral("12a"), QStringLiteral("1 2"),
          QStringLiteral("--1"), QStringLiteral("."), QStringLiteral("1e"), QStringLiteral("&H")}) {
        EXPECT_EQ(faultOf([&] { CInt(t); }), 13) << t.toStdString();
        EXPECT_EQ(faultOf([&] { CLng(t); }), 13) << t.toStdString();
        EXPECT_FALSE(IsNumeric(t)) << t.toStdString();
    }
}

TEST(NumberConversion, NumericTextConvertsWithBlanksSignsGroupingAndRounding)
{
    EXPECT_EQ(CInt(QStringLiteral(" 12 ")), 12);
    EXPECT_EQ(CInt(QStringLiteral("-3")), -3);
    EXPECT_EQ(CInt(QStringLiteral("2.5")), 2);
    EXPECT_EQ(CInt(QStringLiteral("3.5")), 4);
    EXPECT_EQ(CLng(QStringLiteral("1,000")), 1000);
    EXPECT_EQ(CLng(QStringLiteral("1.5E3")), 1500);
    EXPECT_EQ(CInt(QStringLiteral("&HFFFF")), -1);
    EXPECT_EQ(CInt(QStringLiteral("09")), 9);  // "BASEID" halves with a leading zero
    for (const QString& t : {QStringLiteral("12"), QStringLiteral(" -1.5 "), QStringLiteral("1,234.5"),
                             QStringLiteral("+.5"), QStringLiteral("1e10"), QStringLiteral("&O777")})
        EXPECT_TRUE(IsNumeric(t)) << t.toStdString();
}

TEST(NumberConversion, ValuesOutsideTheRangeOverflow)
{
    EXPECT_EQ(CInt(32767.0), 32767);
    EXPECT_EQ(CInt(-32768.0), -32768);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(faultOf([] { CInt(32767.5); }), 6);  // rounds to 32768
    EXPECT_EQ(faultOf([] { CInt(-32769.0); }), 6);
    EXPECT_EQ(faultOf([] { CInt(QStringLiteral("40000")); }), 6);
    EXPECT_EQ(CLng(2147483647.0), 2147483647);
    EXPECT_EQ(faultOf([] { CLng(2147483648.0); }), 6);
    EXPECT_EQ(faultOf([] { CLng(QStringLiteral("1e300")); }), 6);
    EXPECT_EQ(faultOf([] { Val(QStringLiteral("&H123456789")); }), 6);
}

TEST(NumberConversion, FixTruncatesAndIntRoundsDown)
{
    EXPECT_EQ(Fix(1000.9), 1000);
    EXPECT_EQ(Fix(-1.5), -1);
    EXPECT_EQ(Int(-1.5), -2);
    // The age rule: 2026.1115 - 1950.1116 is just below 76.
    EXPECT_EQ(Fix(Val(QStringLiteral("2026.1115")) - Val(QStringLiteral("1950.1116"))), 75);
    EXPECT_EQ(Fix(Val(QStringLiteral("2026.1116")) - Val(QStringLiteral("1950.1116"))), 76);
}

TEST(NumberConversion, NumbersAsTextLikeTheRuntime)
{
    EXPECT_EQ(CStr(0.0), QStringLiteral("0"));
    EXPECT_EQ(CStr(-1.5), QStringLiteral("-1.5"));
    EXPECT_EQ(CStr(75.9999), QStringLiteral("75.9999"));
    EXPECT_EQ(CStr(1e20), QStringLiteral("1E+20"));
    EXPECT_EQ(CStr(0.00001), QStringLiteral("1E-05"));
}

// --- texts ----------------------------------------------------------------------

TEST(TextRule, TrimRemovesOnlyTheAsciiBlank)
{
    const QString ideographic = QStringLiteral("　");
    EXPECT_EQ(Trim(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(RTrim(QStringLiteral("  a  ")), QStringLiteral("  a"));
    EXPECT_EQ(Trim(ideographic + QStringLiteral("様 ")), ideographic + QStringLiteral("様"));
    EXPECT_EQ(Trim(QStringLiteral("\ta\t")), QStringLiteral("\ta\t"));
}

TEST(TextRule, MidLeftRightCountFromOneAndStopAtTheEnd)
{
    EXPECT_EQ(Mid(QStringLiteral("0102"), 1, 2), QStringLiteral("01"));
    EXPECT_EQ(Mid(QStringLiteral("0102"), 3, 2), QStringLiteral("02"));
    // "BASEID" with a blank in front: the first half takes the blank.
    EXPECT_EQ(Mid(QStringLiteral(" 0102"), 1, 2), QStringLiteral(" 0"));
    EXPECT_EQ(Mid(QStringLiteral("abc"), 3, 10), QStringLiteral("c"));
    EXPECT_EQ(Mid(QStringLiteral("abc"), 4, 1), QString());
    EXPECT_EQ(faultOf([] { Mid(QStringLiteral("abc"), 0, 1); }), 5);
    EXPECT_EQ(faultOf([] { Left(QStringLiteral("abc"), -1); }), 5);
}

TEST(TextRule, ByteLengthsCountCp932)
{
    EXPECT_EQ(LenB(QStringLiteral("abc")), 3);
    EXPECT_EQ(LenB(QStringLiteral("山田")), 4);
    EXPECT_EQ(LenB(QStringLiteral("ｶﾞ")), 2);
    EXPECT_EQ(LenB(QStringLiteral("①～")), 4);
    EXPECT_EQ(LeftB(QStringLiteral("a山田"), 4), QStringLiteral("a山"));  // never half a kanji
    EXPECT_EQ(LeftB(QStringLiteral("a山田"), 5), QStringLiteral("a山田"));
    EXPECT_EQ(LeftB(QStringLiteral("山"), 1), QString());
}

struct ReplaceCase {
    const char* name;
    QString text;
    QString del;
    QString expected;
};

class ReplaceAll : public ::testing::TestWithParam<ReplaceCase> {};

TEST_P(ReplaceAll, RemovesEveryOccurrenceSearchingAgainFromTheStart)
{
    EXPECT_EQ(csReplaceAll(GetParam().text, GetParam().del), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, ReplaceAll,
                         ::testing::Values(ReplaceCase{"plain", "a-b-c", "-", "abc"},
                                           // Removing joins what stood around it, and the new join is removed too.
                                           ReplaceCase{"joinsAreSearchedAgain", "aabb", "ab", ""},
                                           ReplaceCase{"caseMatters", "AbAB", "ab", "AbAB"},
                                           ReplaceCase{"fullWidthBlank", "山田　太郎　", "　", "山田太郎"},
                                           ReplaceCase{"emptyDeleteKeepsText", "abc", "", "abc"}),
                         [](const auto& info) { return std::string(info.param.name); });

// --- database values ------------------------------------------------------------

TEST(DatabaseValue, NullReadsAsEmptyTextOrZero)
{
    const QVariant nulls[] = {QVariant(), QVariant(QMetaType::fromType<QString>()),
                              QVariant(QMetaType::fromType<int>()), QVariant(QMetaType::fromType<QDate>())};
    for (const QVariant& v : nulls) {
        EXPECT_TRUE(IsNull(v));
        EXPECT_EQ(csNull2Str(v), QString());
        EXPECT_EQ(csRTrimNull(v), QString());
        EXPECT_EQ(nNull2Long(v), 0);
    }
}

TEST(DatabaseValue, ValuesReadAsTheRuntimeConvertsThem)
{
    EXPECT_EQ(csNull2Str(QVariant(QStringLiteral("山田 "))), QStringLiteral("山田 "));
    EXPECT_EQ(csRTrimNull(QVariant(QStringLiteral(" 山田  "))), QStringLiteral(" 山田"));
    EXPECT_EQ(csRTrimNull(QVariant(QStringLiteral("山田　"))), QStringLiteral("山田　"));
    EXPECT_EQ(csNull2Str(QVariant(42)), QStringLiteral("42"));
    EXPECT_EQ(csNull2Str(QVariant(2.5)), QStringLiteral("2.5"));
    EXPECT_EQ(csNull2Str(QVariant(true)), QStringLiteral("True"));
    EXPECT_EQ(csNull2Str(QVariant(QDate(2026, 3, 1))), QStringLiteral("2026/03/01"));
    EXPECT_EQ(csNull2Str(QVariant(QDateTime(QDate(2026, 3, 1), QTime(9, 5, 7)))), QStringLiteral("2026/03/01 9:05:07"));
    EXPECT_EQ(csNull2Str(QVariant(QDateTime(QDate(2026, 3, 1), QTime(0, 0)))), QStringLiteral("2026/03/01"));

    EXPECT_EQ(nNull2Long(QVariant(qlonglong(123456))), 123456);
    EXPECT_EQ(nNull2Long(QVariant(2.5)), 2);
    EXPECT_EQ(nNull2Long(QVariant(QStringLiteral(" 17 "))), 17);
    EXPECT_EQ(nNull2Long(QVariant(true)), -1);
    EXPECT_EQ(nNull2Long(QVariant(QDate(1900, 1, 1))), 2);
    EXPECT_EQ(faultOf([] { nNull2Long(QVariant(QStringLiteral("abc"))); }), 13);
    EXPECT_EQ(faultOf([] { nNull2Long(QVariant(qlonglong(1) << 40)); }), 6);
}

TEST(NumberText, SmallAndLargeNumbersAreWrittenOut)
{
    EXPECT_EQ(base::numberText(0), QStringLiteral("0"));
    EXPECT_EQ(base::numberText(63), QStringLiteral("63"));
    EXPECT_EQ(base::numberText(64), QStringLiteral("64"));
    EXPECT_EQ(base::numberText(-1), QStringLiteral("-1"));
    EXPECT_EQ(base::numberText(3000000000), QStringLiteral("3000000000"));
}

// Width and kana conversion: full-width and half-width forms both ways, voiced marks
// joined and split, and the characters whose Japanese forms are special.

#include "base/str_conv.h"

#include "base/vb_error.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace base;

struct WidthCase {
    const char* name;
    QString narrow;
    QString wide;
};

class WidthPair : public ::testing::TestWithParam<WidthCase> {};

TEST_P(WidthPair, WideningAndNarrowingAreEachOthersInverse)
{
    EXPECT_EQ(StrConv(GetParam().narrow, vbWide), GetParam().wide);
    EXPECT_EQ(StrConv(GetParam().wide, vbNarrow), GetParam().narrow);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, WidthPair,
    ::testing::Values(
        WidthCase{"digitsAndLetters", "Abc123", "Ａｂｃ１２３"}, WidthCase{"blank", "a b", "ａ　ｂ"},
        WidthCase{"hyphenIsFullWidthMinus", "1-2-3", "１－２－３"}, WidthCase{"tilde", "~", "～"},
        WidthCase{"yen", "\\", "￥"}, WidthCase{"quotes", "'\"", "’”"},
        WidthCase{"punctuation", "!#$%&()*+,./:;<=>?@[]^_`{|}",
                  "！＃＄％＆（）＊＋，．／：；＜＝＞？＠［］＾＿｀｛｜｝"},
        WidthCase{"plainKana", "ｱｲｳｴｵﾝ", "アイウエオン"}, WidthCase{"smallKana", "ｧｨｩｪｫｬｭｮｯ", "ァィゥェォャュョッ"},
        WidthCase{"voiced", "ｶﾞｷﾞｸﾞｹﾞｺﾞｻﾞｼﾞｽﾞｾﾞｿﾞﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞ", "ガギグゲゴザジズゼゾダヂヅデド"},
        WidthCase{"voicedHa", "ﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ", "バビブベボ"}, WidthCase{"semiVoiced", "ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", "パピプペポ"},
        WidthCase{"vu", "ｳﾞ", "ヴ"}, WidthCase{"nameWithVoicedMarks", "ﾔﾏﾀﾞ ﾀﾛｳ", "ヤマダ　タロウ"},
        WidthCase{"longVowelAndSymbols", "ｰ｡｢｣､･ｦ", "ー。「」、・ヲ"}, WidthCase{"loneMarks", "ﾞﾟ", "゛゜"},
        WidthCase{"address", "1-2-3 ABCﾏﾝｼｮﾝ101", "１－２－３　ＡＢＣマンション１０１"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Width, MarksThatCannotJoinStayMarks)
{
    // "ｱﾞ" has no voiced letter; "ｶﾟ" no semi-voiced one.
    EXPECT_EQ(StrConv(QStringLiteral("ｱﾞｶﾟ"), vbWide), QStringLiteral("ア゛カ゜"));
    EXPECT_EQ(StrConv(QStringLiteral("ﾞｶ"), vbWide), QStringLiteral("゛カ"));
    // A voiced mark joins only the letter right before it.
    EXPECT_EQ(StrConv(QStringLiteral("ｶﾞﾞ"), vbWide), QStringLiteral("ガ゛"));
}

TEST(Width, WhatHasNoOtherFormStays)
{
    EXPECT_EQ(StrConv(QStringLiteral("ひらがな漢字①"), vbNarrow), QStringLiteral("ひらがな漢字①"));
    EXPECT_EQ(StrConv(QStringLiteral("ヵヶヰヱ"), vbNarrow), QStringLiteral("ヵヶヰヱ"));
    EXPECT_EQ(StrConv(QStringLiteral("漢字①ガ"), vbWide), QStringLiteral("漢字①ガ"));
    EXPECT_EQ(StrConv(QStringLiteral("\r\n"), vbWide), QStringLiteral("\r\n"));
    EXPECT_EQ(StrConv(QString(), vbWide), QString());
}

TEST(Width, PlainFullWidthFormsOfTheSpecialCharactersNarrowToo)
{
    EXPECT_EQ(StrConv(QStringLiteral("＂＇＼"), vbNarrow), QStringLiteral("\"'\\"));
}

TEST(Width, KanaIndexKeysBeginWithTheBaseLetter)
{
    // The kana index finds "ガ" under "ｶ" because its half-width key starts with it.
    EXPECT_TRUE(StrConv(QStringLiteral("ガトウ"), vbNarrow).startsWith(QStringLiteral("ｶ")));
    EXPECT_TRUE(StrConv(QStringLiteral("パク"), vbNarrow).startsWith(QStringLiteral("ﾊ")));
}

TEST(KanaConversion, HiraganaAndKatakanaSwapAndCombineWithWidth)
{
    EXPECT_EQ(StrConv(QStringLiteral("やまだ ゔ"), vbKatakana), QStringLiteral("ヤマダ ヴ"));
    EXPECT_EQ(StrConv(QStringLiteral("ヤマダヴヽ"), vbHiragana), QStringLiteral("やまだゔゝ"));
    EXPECT_EQ(StrConv(QStringLiteral("やまだ"), vbNarrow + vbKatakana), QStringLiteral("ﾔﾏﾀﾞ"));
    EXPECT_EQ(StrConv(QStringLiteral("ﾔﾏﾀﾞ"), vbWide + vbHiragana), QStringLiteral("やまだ"));
}

TEST(KanaConversion, ContradictoryFlagsAreAnInvalidCall)
{
    for (int flags : {vbWide + vbNarrow, vbKatakana + vbHiragana, vbUpperCase + vbLowerCase}) {
        try {
            StrConv(QStringLiteral("a"), flags);
            ADD_FAILURE() << "flags " << flags << " accepted";
        } catch (const VbError& e) {
            EXPECT_EQ(e.number(), 5);
        }
    }
}

TEST(KanaConversion, CaseConversionCoversFullWidthLetters)
{
    EXPECT_EQ(StrConv(QStringLiteral("abｃ"), vbUpperCase), QStringLiteral("ABＣ"));
    EXPECT_EQ(StrConv(QStringLiteral("abc"), vbUpperCase + vbWide), QStringLiteral("ＡＢＣ"));
}

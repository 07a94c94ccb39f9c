// Japanese line breaking, vertical writing and shrinking to fit.

#include "engine/font_book.h"
#include "engine/jp_text.h"
#include "engine/text_layout.h"

#include "support/engine_job.h"

#include <gtest/gtest.h>

using engine::FontFace;
using engine::TextStyle;

namespace {

class Layout : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sealtest::ensureGuiApp();
        fonts = new engine::FontBook();
    }
    static engine::FontBook* fonts;

    // Lines for a width of n full-width characters at 10 mm.
    QStringList breakAt(const QString& text, double chars, const QString& tail = QString(), bool* overflow = nullptr)
    {
        return engine::breakLines(text, chars * 10.0 + 0.01, 10.0, *fonts, FontFace::Gothic, false, tail, overflow);
    }
};
engine::FontBook* Layout::fonts = nullptr;

TEST_F(Layout, IpaexFontsAreLoaded)
{
    EXPECT_TRUE(fonts->fontFile(FontFace::Gothic).endsWith("ipaexg.ttf"))
        << fonts->family(FontFace::Gothic).toStdString();
    EXPECT_TRUE(fonts->fontFile(FontFace::Mincho).endsWith("ipaexm.ttf"));
    EXPECT_NEAR(fonts->advance(FontFace::Gothic, false, u'あ'), 1.0, 0.01);
}

struct KinsokuCase {
    const char* name;
    const char* text;
    double width;
    std::vector<const char*> lines;
};
// Where a line may end: never before small kana, punctuation or a closing bracket, never
// after an opening one, and at a blank or between an address's parts before inside a
// word; a building name that does not fit goes whole to the next line.
class Kinsoku : public Layout, public ::testing::WithParamInterface<KinsokuCase> {};
TEST_P(Kinsoku, NoLineStartsOrEndsWrongly)
{
    QStringList expected;
    for (const char* l : GetParam().lines) expected.append(QString::fromUtf8(l));
    EXPECT_EQ(breakAt(QString::fromUtf8(GetParam().text), GetParam().width), expected);
}
INSTANTIATE_TEST_SUITE_P(
    Rules, Kinsoku,
    ::testing::Values(
        KinsokuCase{"SmallKanaStaysBehind", "あいうきょう", 4, {"あいう", "きょう"}},
        KinsokuCase{"PunctuationStaysBehind", "あいうえ。かき", 4, {"あいう", "え。かき"}},
        KinsokuCase{"ClosingBracketStaysBehind", "あいう（え）", 5, {"あいう", "（え）"}},
        KinsokuCase{"OpeningBracketGoesAhead", "あいう「えお」", 4, {"あいう", "「えお」"}},
        KinsokuCase{"LongVowelStaysBehind", "あいうビール", 4, {"あいう", "ビール"}},
        KinsokuCase{"GochuIsNeverSplit", "市役所総務課御中", 7, {"市役所総務課", "御中"}},
        KinsokuCase{"ExplicitLineEndsKept", "一\r\n二", 5, {"一", "二"}},
        KinsokuCase{"FullWidthTextBreaksAtTheWidth", "東京都新宿区西新宿", 4, {"東京都新", "宿区西新", "宿"}},
        KinsokuCase{"HouseNumbersAreOneWord", "西新宿２－８－１", 5, {"西新宿", "２－８－１"}},
        KinsokuCase{"BuildingNameAfterHouseNumber",
                    "東京都練馬区豊玉北6-12-3 グランドメゾン円山",
                    20,
                    {"東京都練馬区豊玉北6-12-3", "グランドメゾン円山"}},
        KinsokuCase{"BuildingNameAfterChome",
                    "札幌市中央区北一条西2丁目グランドメゾン円山",
                    16,
                    {"札幌市中央区北一条西2丁目", "グランドメゾン円山"}},
        KinsokuCase{
            "BlankAFewCharactersBack", "緑区中央町1-2 あおば　312号室", 13, {"緑区中央町1-2 あおば", "312号室"}},
        KinsokuCase{"BlankBeforeALongWord",
                    "さくら市中央町 サービス付き高齢者向け住宅",
                    13,
                    {"さくら市中央町", "サービス付き高齢者向け住宅"}},
        KinsokuCase{"NotInsideAKatakanaRun", "あいうえおサービス付き", 7, {"あいうえお", "サービス付き"}},
        // Nothing better in the last third: the run is broken rather than the line left short.
        KinsokuCase{"KatakanaRunWithoutABetterPlace", "あサービスステーション", 7, {"あサービスス", "テーション"}},
        KinsokuCase{"BlockNumberStaysInOnePiece", "練馬区豊玉北6丁目12番3号室", 8, {"練馬区豊玉北", "6丁目12番3号室"}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(Layout, NameKeepsItsHonorificOnItsLine)
{
    const QStringList lines = breakAt(QStringLiteral("山田 太郎 先生御侍史"), 9, QStringLiteral("先生御侍史"));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], "山田");
    EXPECT_EQ(lines[1], "太郎 先生御侍史");
}

TEST_F(Layout, UnbreakablePieceWiderThanTheLineIsReported)
{
    bool overflow = false;
    breakAt(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), 3, QString(), &overflow);
    EXPECT_TRUE(overflow);
    breakAt(QStringLiteral("あいうえお"), 3, QString(), &overflow);
    EXPECT_FALSE(overflow);
}

TEST_F(Layout, LongTextShrinksInsteadOfOverflowingAndShortTextKeepsItsSize)
{
    TextStyle s;
    s.size = 14;
    s.wrap = false;
    const QRectF box(10, 10, 40, 8);
    const engine::TextLayout l =
        engine::layoutText(QStringLiteral("医療法人社団さくら会さくらクリニック院長"), box, s, *fonts);
    EXPECT_TRUE(l.fits);
    EXPECT_LT(l.sizeMm, engine::ptToMm(14));
    EXPECT_TRUE(box.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(l.bounds));
    s.wrap = true;
    EXPECT_DOUBLE_EQ(engine::layoutText(QStringLiteral("山田 様"), QRectF(0, 0, 60, 10), s, *fonts).sizeMm,
                     engine::ptToMm(14));
}

class ShrunkAlignment : public Layout, public ::testing::WithParamInterface<engine::HAlign> {};
TEST_P(ShrunkAlignment, ShrunkTextKeepsItsAlignment)
{
    TextStyle s;
    s.size = 20;
    s.wrap = false;
    s.align = GetParam();
    const QRectF box(0, 0, 30, 20);
    const engine::TextLayout l = engine::layoutText(QStringLiteral("あいうえおかきくけこ"), box, s, *fonts);
    ASSERT_LT(l.sizeMm, engine::ptToMm(20));
    // Shrunk to the width: it fills the box whatever the alignment.
    EXPECT_NEAR(l.bounds.width(), 30, 0.2);
    const engine::TextLayout shortOne = engine::layoutText(QStringLiteral("あ"), box, s, *fonts);
    const double em = engine::ptToMm(20);
    switch (GetParam()) {
    case engine::HAlign::Left:
        EXPECT_NEAR(shortOne.bounds.left(), 0, 0.05);
        break;
    case engine::HAlign::Center:
        EXPECT_NEAR(shortOne.bounds.center().x(), 15, 0.05);
        break;
    case engine::HAlign::Right:
        EXPECT_NEAR(shortOne.bounds.right(), 30, 0.05);
        break;
    }
    EXPECT_NEAR(shortOne.bounds.width(), em, 0.05);
}
INSTANTIATE_TEST_SUITE_P(Aligns, ShrunkAlignment,
                         ::testing::Values(engine::HAlign::Left, engine::HAlign::Center, engine::HAlign::Right),
                         ([](const auto& info) {
                             return std::vector<std::string>{"Left", "Center", "Right"}.at(info.index);
                         }));

TEST_F(Layout, VerticalColumnsRunFromTheRight)
{
    TextStyle s;
    s.size = 28.35;  // 10 mm
    s.vertical = true;
    s.align = engine::HAlign::Right;
    const engine::TextLayout l = engine::layoutText(QStringLiteral("一二三四五"), QRectF(0, 0, 30, 30.01), s, *fonts);
    ASSERT_EQ(l.runs.size(), 5);
    // Three to a column: the first column at the right, the next to its left.
    EXPECT_GT(l.runs[0].origin.x(), l.runs[3].origin.x());
    EXPECT_NEAR(l.runs[0].origin.x(), l.runs[2].origin.x(), 1e-9);
    EXPECT_LT(l.runs[0].origin.y(), l.runs[1].origin.y());
    EXPECT_NEAR(l.runs[3].origin.y(), l.runs[0].origin.y(), 1e-9);
}

TEST_F(Layout, VerticalDigitsStandUprightAndDashesAndBracketsTurn)
{
    TextStyle s;
    s.vertical = true;
    const engine::TextLayout l = engine::layoutText(QStringLiteral("2-8ー1"), QRectF(0, 0, 10, 100), s, *fonts);
    ASSERT_EQ(l.runs.size(), 5);
    EXPECT_EQ(l.runs[0].text, "２");
    EXPECT_FALSE(l.runs[0].rotate);
    EXPECT_TRUE(l.runs[1].rotate);
    EXPECT_EQ(l.runs[2].text, "８");
    EXPECT_TRUE(l.runs[3].rotate);
    const engine::TextLayout b = engine::layoutText(QStringLiteral("「あ」"), QRectF(0, 0, 10, 100), s, *fonts);
    ASSERT_EQ(b.runs.size(), 3);
    // Either the font's vertical form, or the horizontal bracket turned.
    EXPECT_TRUE(b.runs[0].text == "﹁" || b.runs[0].rotate);
    EXPECT_TRUE(b.runs[2].text == "﹂" || b.runs[2].rotate);
}

TEST_F(Layout, KanjiNumeralsAsAFormOption)
{
    TextStyle s;
    s.vertical = true;
    s.numerals = engine::Numerals::Kanji;
    EXPECT_EQ(engine::shapeText(QStringLiteral("西新宿2-10"), s), "西新宿二－一〇");
}

TEST_F(Layout, SmallKanaAndCommaMoveUpRightInVerticalLines)
{
    const auto small = engine::verticalGlyph(u'ょ');
    const auto comma = engine::verticalGlyph(u'、');
    const auto plain = engine::verticalGlyph(u'あ');
    EXPECT_GT(small.shift, 0);
    EXPECT_GT(comma.shift, small.shift);
    EXPECT_EQ(plain.shift, 0);
}

TEST_F(Layout, CharacterBeyondTheBmpIsOneSquareAndNeverSplit)
{
    const QString yoshida = QString::fromUtf8("\xF0\xA0\xAE\xB7田");  // 𠮷田
    TextStyle s;
    s.vertical = true;
    s.size = 28.35;
    const engine::TextLayout l = engine::layoutText(yoshida, QRectF(0, 0, 10.1, 100), s, *fonts);
    ASSERT_EQ(l.runs.size(), 2);
    EXPECT_EQ(l.runs[0].text, yoshida.left(2));
    EXPECT_NEAR(l.runs[1].origin.y() - l.runs[0].origin.y(), 10.0, 0.01);
    for (const QString& line : breakAt(yoshida + yoshida, 1)) EXPECT_FALSE(line.endsWith(yoshida[0])) << line.size();
}

class Breaking : public Layout {};

// The honorific stays with the name's last character only: a long name without a
// blank wraps instead of shrinking below the address's size.
TEST_F(Breaking, LongNameWrapsBeforeItShrinks)
{
    TextStyle s;
    s.size = 15;
    s.align = engine::HAlign::Center;
    s.valign = engine::VAlign::Middle;
    const QRectF box(0, 0, 75, 10);  // the 10-label form's name box
    const QString noBlank = QStringLiteral("株式会社ひだまり訪問鍼灸マッサージ練馬本店総務部経理課 御中");
    const engine::TextLayout l = engine::layoutText(noBlank, box, s, *fonts, QStringLiteral("御中"));
    ASSERT_EQ(l.runs.size(), 2);
    EXPECT_GE(l.sizeMm, engine::ptToMm(10.5));  // the address's size
    EXPECT_TRUE(l.runs[1].text.endsWith(QStringLiteral("課 御中"))) << l.runs[1].text.toStdString();
    EXPECT_FALSE(l.runs[0].text.endsWith(QStringLiteral("マッサー")));

    const QString blank = QStringLiteral("株式会社ひだまり訪問鍼灸マッサージ 練馬本店総務部経理課 御中");
    const engine::TextLayout b = engine::layoutText(blank, box, s, *fonts, QStringLiteral("御中"));
    ASSERT_EQ(b.runs.size(), 2);
    EXPECT_EQ(b.runs[0].text, "株式会社ひだまり訪問鍼灸マッサージ");
    EXPECT_EQ(b.runs[1].text, "練馬本店総務部経理課 御中");
    EXPECT_TRUE(box.contains(b.bounds));
}

TEST_F(Breaking, VerticalContinuationColumnIsIndentedByOneCharacter)
{
    TextStyle s;
    s.size = 28.35;  // 10 mm
    s.vertical = true;
    s.indent = 1;
    s.align = engine::HAlign::Right;
    const engine::TextLayout l =
        engine::layoutText(QStringLiteral("一二三四五六七"), QRectF(0, 0, 30, 50.01), s, *fonts);
    ASSERT_EQ(l.runs.size(), 7);
    EXPECT_NEAR(l.runs[5].origin.y() - l.runs[0].origin.y(), engine::ptToMm(28.35),
                1e-6);  // 六 starts the second column, lower
    EXPECT_LT(l.runs[5].origin.x(), l.runs[0].origin.x());
}

// Text longer than its box at the form's smallest size is cut with "…", inside the box
// and never smaller than that size.
TEST_F(Breaking, TextBeyondTheSmallestSizeIsCutWithAnEllipsis)
{
    TextStyle s;
    s.size = 10.5;
    s.minSize = 8;
    const QRectF box(0, 0, 40, 7);
    const QString longAddress =
        QStringLiteral("北海道札幌市中央区北一条西二丁目一番地 札幌市役所本庁舎十九階 保健福祉局総務部総務課内");
    const engine::TextLayout l = engine::layoutText(longAddress, box, s, *fonts);
    EXPECT_FALSE(l.fits);
    EXPECT_DOUBLE_EQ(l.sizeMm, engine::ptToMm(8));
    ASSERT_FALSE(l.runs.isEmpty());
    EXPECT_TRUE(l.runs.back().text.endsWith(QStringLiteral("…")));
    EXPECT_TRUE(box.contains(l.bounds));

    s.wrap = false;
    const engine::TextLayout one = engine::layoutText(longAddress, box, s, *fonts);
    ASSERT_EQ(one.runs.size(), 1);
    EXPECT_TRUE(one.runs[0].text.endsWith(QStringLiteral("…")));
    EXPECT_TRUE(box.contains(one.bounds));
}

TEST_F(Breaking, CharactersTheFontLacksStillStayInTheBox)
{
    TextStyle s;
    s.size = 12;
    const QRectF box(0, 0, 30, 6);
    const engine::TextLayout l =
        engine::layoutText(QStringLiteral("山田\u0E01\u0E02 太郎 様 \U0001F600"), box, s, *fonts);
    EXPECT_FALSE(l.runs.isEmpty());
    EXPECT_TRUE(box.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(l.bounds));
}

TEST_F(Breaking, RadicalsPrintAsTheirIdeographs)
{
    EXPECT_EQ(fonts->printable(FontFace::Gothic, QStringLiteral("⽯⽥")), "石田");
    EXPECT_EQ(fonts->printable(FontFace::Mincho, QStringLiteral("山田")), "山田");
}

}  // namespace

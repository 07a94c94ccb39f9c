// The working grid: the columns written for patients, the narrowing rules in their
// order, the colours, the hidden columns and the ticks kept by row position.

#include "extract/fill_list.h"

#include "support/installation.h"
#include "support/param_names.h"

#include <gtest/gtest.h>

using controls::Grid;
using extract::AddresseeData;
using extract::FillConditions;
using extract::RiyoushaSealRow;

namespace {

const QDate kToday(2026, 11, 21);

RiyoushaSealRow patient(qint32 id, const QString& name, const QString& kana)
{
    RiyoushaSealRow p;
    p.nIDNo = id;
    p.cName = name;
    p.cNameKana = kana;
    p.tBirthday = QDate(1950, 5, 1);
    return p;
}

class FillPatients : public testing::Test {
protected:
    FillPatients()
    {
        c.today = kToday;
        c.sKeisho = QStringLiteral("様");
    }

    void add(const RiyoushaSealRow& p)
    {
        if (data.aRiyousha.empty()) data.aRiyousha.emplace_back();
        data.aRiyousha.insert(data.aRiyousha.end() - 1, p);
    }

    void fill() { extract::fillList(grid, data, c); }

    QStringList visibleIds() const
    {
        QStringList ids;
        for (int r = 1; r <= grid.MaxRows(); ++r)
            if (!grid.rowHidden(r)) ids << grid.text(2, r);
        return ids;
    }

    Grid grid{QStringLiteral("fpSpread02"), extract::kGridCols, 0};
    AddresseeData data;
    FillConditions c;
};

}  // namespace

TEST_F(FillPatients, WritesAllColumnsOfARowTrimmed)
{
    RiyoushaSealRow p = patient(101, QStringLiteral(" 山田 太郎 "), QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"));
    p.cYubinNo = QStringLiteral("150-0001");
    p.cAdress1 = QStringLiteral("東京都渋谷区 ");
    p.cAdress2 = QStringLiteral("神宮前1-1");
    p.cTelNo = QStringLiteral("03-1111-2222  ");
    p.cFaxNo = QString(14, u' ');
    p.cMobNo = QStringLiteral("090-1111-2222 ");
    p.nRoomNo = 305;
    p.cAdress3 = QStringLiteral("実家");
    p.cYubinNoS0Ryosyu = QStringLiteral("100-0001");
    p.cJusyo1S0Ryosyu = QStringLiteral("千代田区");
    p.cJusyo2S0Ryosyu = QStringLiteral("  ");
    p.cYubinNoS0Renraku = QStringLiteral("200-0002");
    p.cJusyo1S0Renraku = QStringLiteral("川崎市");
    p.cJusyo2S0Renraku = QStringLiteral("中原区 ");
    p.cYubinNo2 = QStringLiteral("300     ");
    p.cYubinNo3 = QString(8, u' ');
    p.jisseki_ct = QStringLiteral("4");
    p.cAtenaS0Ryosyu = QStringLiteral("山田 花子");
    add(p);
    fill();

    ASSERT_EQ(grid.MaxRows(), 1);
    EXPECT_EQ(grid.describeRows(),
              QStringList{
                  QStringLiteral("row 1 |101|101|山田 太郎 様|ﾔﾏﾀﾞ ﾀﾛｳ|||150-0001|東京都渋谷区|神宮前1-1|03-1111-2222||"
                                 "090-1111-2222|0|様|305|実家||||||100-0001|千代田区|200-0002|川崎市 中原区|300||"
                                 "|4||山田 花子 様| 様")});
}

TEST_F(FillPatients, WritesHiddenRowsInFullAndNothingStaysFromTheKindBefore)
{
    grid.setMaxRows(2);
    for (int col = 2; col <= extract::kGridCols; ++col) grid.setText(col, 2, QStringLiteral("old"));
    add(patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ")));
    add(patient(2, QStringLiteral("二"), QStringLiteral("ﾆ")));
    c.sName = QStringLiteral("一");
    fill();
    EXPECT_TRUE(grid.rowHidden(2));
    EXPECT_EQ(grid.text(4, 2), QStringLiteral("二 様"));
    EXPECT_EQ(grid.text(6, 2), QString());
    EXPECT_EQ(grid.text(19, 2), QString());
    EXPECT_EQ(grid.text(33, 2), QStringLiteral(" 様"));
}

TEST_F(FillPatients, ShowsTickNumberAndNameOnly)
{
    add(patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ")));
    fill();
    for (int col = 1; col <= extract::kGridCols; ++col)
        EXPECT_EQ(grid.colHidden(col), !(col == 1 || col == 2 || col == 4)) << "column " << col;
    EXPECT_EQ(grid.ActiveRow(), 1);
    EXPECT_EQ(grid.ActiveCol(), 1);
    EXPECT_TRUE(grid.ReDraw());
}

TEST_F(FillPatients, KeepsTicksByRowPositionUnlessAChangeOfKindClearsThem)
{
    add(patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ")));
    add(patient(2, QStringLiteral("二"), QStringLiteral("ﾆ")));
    fill();
    grid.setValue(1, 2, 1);
    // The next search finds other patients: the tick stays on row 2, whoever is there.
    data.aRiyousha.erase(data.aRiyousha.begin());
    add(patient(3, QStringLiteral("三"), QStringLiteral("ｻﾝ")));
    fill();
    EXPECT_EQ(grid.text(2, 2), QStringLiteral("3"));
    EXPECT_EQ(grid.value(1, 2), 1);
    c.clearTicks = true;
    fill();
    EXPECT_EQ(grid.value(1, 2), 0);
}

TEST_F(FillPatients, GreysPatientsWithoutServiceOnlyWhenServiceRecordsCount)
{
    RiyoushaSealRow served = patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ"));
    served.jisseki_ct = QStringLiteral("2");
    add(served);
    add(patient(2, QStringLiteral("二"), QStringLiteral("ﾆ")));
    fill();
    EXPECT_EQ(grid.foreColor(2, 2), controls::Colors::Black);
    c.jissekiTicked = true;
    fill();
    EXPECT_EQ(grid.foreColor(2, 1), controls::Colors::Black);
    EXPECT_EQ(grid.foreColor(4, 1), controls::Colors::Black);
    EXPECT_EQ(grid.foreColor(2, 2), extract::kLightGrey);
    EXPECT_EQ(grid.foreColor(4, 2), extract::kLightGrey);
    EXPECT_EQ(grid.foreColor(3, 2), controls::Colors::WindowText);
}

TEST_F(FillPatients, StartsEmptyAndAnArrayNeverSizedIsASubscriptFault)
{
    fill();
    EXPECT_EQ(grid.MaxRows(), 0);
    data.aRiyousha.clear();
    EXPECT_EQ(sealtest::faultOf([&] { fill(); }), 9);
}

// --- narrowing -------------------------------------------------------------------

struct NarrowCase {
    const char* what;
    const char* sName;
    const char* sID;
    const char* sKana;
    const char* sKanaRow;
    const char* visible;  // the numbers left visible, comma-joined
};

class Narrowing : public FillPatients, public testing::WithParamInterface<NarrowCase> {};

TEST_P(Narrowing, HidesRowsByTheSearchTexts)
{
    add(patient(12, QStringLiteral("田中 一郎"), QStringLiteral("ﾀﾅｶ ｲﾁﾛｳ")));
    add(patient(123, QStringLiteral("ガッツ 太郎"), QStringLiteral("ガッツ タロウ")));
    add(patient(7, QStringLiteral("O'Brien ＡＢＣ"), QStringLiteral("ｵﾌﾞﾗｲｴﾝ")));
    add(patient(8, QStringLiteral("100% 果汁"), QStringLiteral("かじゅう")));
    const NarrowCase& n = GetParam();
    c.sName = QString::fromUtf8(n.sName);
    c.sID = QString::fromUtf8(n.sID);
    c.sKana = QString::fromUtf8(n.sKana);
    c.sKanaRow = QString::fromUtf8(n.sKanaRow);
    fill();
    EXPECT_EQ(visibleIds().join(u','), QString::fromUtf8(n.visible)) << n.what;
}

INSTANTIATE_TEST_SUITE_P(
    Rules, Narrowing,
    testing::Values(NarrowCase{"no condition", "", "", "", "", "12,123,7,8"},
                    NarrowCase{"name part", "太郎", "", "", "", "123"},
                    NarrowCase{"apostrophe is a plain character", "O'B", "", "", "", "7"},
                    NarrowCase{"percent is no wildcard", "100%", "", "", "", "8"},
                    NarrowCase{"percent alone", "%", "", "", "", "8"},
                    NarrowCase{"full-width letters do not match half-width", "ABC", "", "", "", ""},
                    NarrowCase{"full-width letters match themselves", "ＡＢＣ", "", "", "", "7"},
                    NarrowCase{"untrimmed needle", "田中 ", "", "", "", "12"},
                    NarrowCase{"number by equality", "", "12", "", "", "12"},
                    NarrowCase{"number is no prefix", "", "1", "", "", ""},
                    NarrowCase{"kana text exact width", "", "", "ﾀﾅｶ", "", "12"},
                    NarrowCase{"half-width needle misses full-width kana", "", "", "ｶﾞｯﾂ", "", ""},
                    NarrowCase{"full-width needle", "", "", "ガッツ", "", "123"},
                    NarrowCase{"kana row ta", "", "", "", "ﾀﾁﾂﾃﾄ", "12"},
                    NarrowCase{"voiced full-width kana by its base letter", "", "", "", "ｶｷｸｹｺ", "123"},
                    NarrowCase{"voiced half-width kana by its base letter", "", "", "", "ｱｲｳｴｵ", "7"},
                    NarrowCase{"hiragana has no half-width form", "", "", "", "ｶｷｸｹｺ", "123"},
                    NarrowCase{"kana row and name both hold", "一郎", "", "", "ﾀﾁﾂﾃﾄ", "12"},
                    NarrowCase{"hidden by the kana row although the name matches", "太郎", "", "", "ﾀﾁﾂﾃﾄ", ""}),
    [](const testing::TestParamInfo<NarrowCase>& info) { return sealtest::caseName(info.param.what); });

struct AgeCase {
    QDate birthday;
    short from;
    short to;
    short month;
    bool visible;
};

class AgeAndMonth : public FillPatients, public testing::WithParamInterface<AgeCase> {};

TEST_P(AgeAndMonth, HideByTheBoundsAndTheBirthMonth)
{
    RiyoushaSealRow p = patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ"));
    p.tBirthday = GetParam().birthday;
    add(p);
    c.nAgeFrom = GetParam().from;
    c.nAgeTo = GetParam().to;
    c.nBirthMonth = GetParam().month;
    fill();
    EXPECT_EQ(!grid.rowHidden(1), GetParam().visible);
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, AgeAndMonth,
    testing::Values(
        // 76 on the birthday itself, 75 the day before.
        AgeCase{QDate(1950, 11, 21), 76, 76, 0, true}, AgeCase{QDate(1950, 11, 22), 76, 76, 0, false},
        AgeCase{QDate(1950, 11, 22), 75, 75, 0, true},
        // A baby of age 0 passes only the emptied lower bound 0, not the default 1.
        AgeCase{QDate(2026, 6, 1), 1, 150, 0, false}, AgeCase{QDate(2026, 6, 1), 0, 150, 0, true},
        // No birthday is day 0: age 126, inside the default bounds, born in December.
        AgeCase{QDate(1899, 12, 30), 1, 150, 0, true}, AgeCase{QDate(1899, 12, 30), 1, 100, 0, false},
        AgeCase{QDate(1899, 12, 30), 1, 150, 12, true}, AgeCase{QDate(1899, 12, 30), 1, 150, 1, false},
        AgeCase{QDate(1950, 5, 1), 1, 150, 5, true}, AgeCase{QDate(1950, 5, 1), 1, 150, 6, false}),
    [](const auto& info) { return "Case" + std::to_string(info.index); });

TEST(AgeRule, RisesOnTheBirthdayAcrossLeapDays)
{
    EXPECT_EQ(extract::ageOf(QDate(2026, 11, 15), QDate(1950, 11, 16)), 75);
    EXPECT_EQ(extract::ageOf(QDate(2026, 11, 15), QDate(1950, 11, 15)), 76);
    EXPECT_EQ(extract::ageOf(QDate(2025, 2, 28), QDate(2000, 2, 29)), 24);
    EXPECT_EQ(extract::ageOf(QDate(2025, 3, 1), QDate(2000, 2, 29)), 25);
    EXPECT_EQ(extract::ageOf(QDate(2026, 11, 21), QDate(1899, 12, 30)), 126);
}

TEST_F(FillPatients, EndOfServiceHidesFromTheDayAfterUnlessFinishedAreShown)
{
    RiyoushaSealRow today = patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ"));
    today.tExpireDay = kToday;
    RiyoushaSealRow yesterday = patient(2, QStringLiteral("二"), QStringLiteral("ﾆ"));
    yesterday.tExpireDay = kToday.addDays(-1);
    add(today);
    add(yesterday);
    add(patient(3, QStringLiteral("三"), QStringLiteral("ｻﾝ")));
    fill();
    EXPECT_EQ(visibleIds(), (QStringList{QStringLiteral("1"), QStringLiteral("3")}));
    c.endKanjaTicked = true;
    fill();
    EXPECT_EQ(visibleIds().size(), 3);
}

TEST_F(FillPatients, ARowHiddenBeforeIsShownAgainWhenNoRuleHidesIt)
{
    add(patient(1, QStringLiteral("一"), QStringLiteral("ｲﾁ")));
    c.sName = QStringLiteral("該当なし");
    fill();
    EXPECT_TRUE(grid.rowHidden(1));
    c.sName.clear();
    fill();
    EXPECT_FALSE(grid.rowHidden(1));
}

TEST(KanaIndex, MatchesTheFirstLetterOnly)
{
    EXPECT_TRUE(extract::kanaRowMatches(QStringLiteral("ｱｲｶﾜ"), QStringLiteral("ｱｲｳｴｵ")));
    EXPECT_FALSE(extract::kanaRowMatches(QStringLiteral("ﾀｲ"), QStringLiteral("ｱｲｳｴｵ")));
    EXPECT_TRUE(extract::kanaRowMatches(QStringLiteral("パク"), QStringLiteral("ﾊﾋﾌﾍﾎ")));
    EXPECT_TRUE(extract::kanaRowMatches(QStringLiteral("ヲ"), QStringLiteral("ﾜｦﾝ")));
    EXPECT_FALSE(extract::kanaRowMatches(QString(), QStringLiteral("ｱｲｳｴｵ")));
    EXPECT_FALSE(extract::kanaRowMatches(QStringLiteral("あい"), QStringLiteral("ｱｲｳｴｵ")));
}

// What lands on a label: the two walks over the addressees, the address choice, the
// rules of the kinds, the envelope width, and the records the walks hand on.

#include "extract/label_records.h"

#include "support/label_grid.h"
#include "support/param_names.h"

#include <gtest/gtest.h>

using namespace extract;
using namespace sealtest;
using namespace Qt::StringLiterals;

namespace {

std::vector<LabelRecord> walk(const controls::Grid& g, const LabelChoices& c, const std::vector<OrderLine>& list = {},
                              QStringList* status = nullptr)
{
    std::vector<LabelRecord> out;
    walkLabels(
        g, list, c, [&](const LabelRecord& r) { out.push_back(r); },
        [&](const QString& s) {
            if (status) *status << s;
        });
    return out;
}

LabelChoices gridWalk(short nMst = 0)
{
    LabelChoices c;
    c.nMst = nMst;
    return c;
}

LabelChoices listWalk(short nMst = 0)
{
    LabelChoices c = gridWalk(nMst);
    c.bEnterAdd = true;
    return c;
}

std::array<bool, 6> only(int element)
{
    std::array<bool, 6> a{};
    a[static_cast<size_t>(element)] = true;
    return a;
}

OrderLine lineOf(int id, const QString& name) { return {QString::number(id) + u"     "_s + name + u' ', id}; }

}  // namespace

// --- the address choice -------------------------------------------------------------

struct AddressCase {
    int element;
    const char16_t* yubin;
    const char16_t* address;
    const char16_t* atena;
};

class AddressChoiceTest : public ::testing::TestWithParam<AddressCase> {};

TEST_P(AddressChoiceTest, EachElementTakesItsPostalCodeAddressAndName)
{
    const AddressCase& p = GetParam();
    auto g = onePatient();
    LabelChoices c = gridWalk();
    c.optAdd = only(p.element);

    const auto records = walk(*g, c);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].sOutYubin, QString::fromUtf16(p.yubin));
    EXPECT_EQ(records[0].sOutAddress, QString::fromUtf16(p.address));
    EXPECT_EQ(records[0].sOutAtena, QString::fromUtf16(p.atena));
}

INSTANTIATE_TEST_SUITE_P(SixElements, AddressChoiceTest,
                         ::testing::Values(AddressCase{0, u"100-0001", u"東京都千代田区1-1", u"山田 太郎 様"},
                                           AddressCase{1, u"500-0002", u"二番目の住所2-2", u"山田 太郎 様"},
                                           AddressCase{2, u"600-0003", u"三番目の住所3-3", u"山田 太郎 様"},
                                           AddressCase{3, u"400-0001", u"連絡先住所6-6", u"連絡 花子 様"},
                                           AddressCase{4, u"200-0001", u"申請先住所4-4", u""},
                                           AddressCase{5, u"300-0001", u"領収先住所5-5", u"領収 太郎 様"}),
                         [](const ::testing::TestParamInfo<AddressCase>& info) {
                             return "Element" + std::to_string(info.param.element);
                         });

TEST(AddressElementTest, TheSumOfTheChosenButtonsPicksTheRow)
{
    struct Case {
        std::array<bool, 6> optAdd;
        int element;
    };
    const Case cases[] = {
        {{false, false, false, false, false, false}, 0},  // none chosen: the first address
        {{true, true, false, false, false, false}, 2},    // 1 + 2 = 3: the third address
        {{false, false, true, true, false, false}, 0},    // 3 + 4 = 7: past the rows
        {{false, false, false, false, false, true}, 5},
    };
    for (const Case& c : cases) EXPECT_EQ(addressElement(c.optAdd), c.element);
}

TEST(AddressChoiceRules, NoFallbackForAPatientWithoutAContactAddress)
{
    auto g = onePatient();
    setCells(*g, 1, {{25, QString()}, {26, QString()}, {33, u" 様"_s}});
    LabelChoices c = gridWalk();
    c.optAdd = only(3);

    const auto r = walk(*g, c).at(0);
    EXPECT_EQ(r.sOutYubin, QString());
    EXPECT_EQ(r.sOutAddress, QString());
    // The cell holds a blank and the honorific; read back trimmed.
    EXPECT_EQ(r.sOutAtena, u"様"_s);
}

TEST(AddressChoiceRules, AChoiceMadeForPatientsStandsForTheNextKind)
{
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"D01"_s, u"佐藤 一郎 先生"_s, u"1"_s,
                 {{8, u"150-0001"_s}, {9, u"渋谷区1-1"_s}, {10, u"佐藤医院2F"_s}, {15, u"先生"_s}});
    tick(*g, 1);
    LabelChoices c = gridWalk(1);
    c.optAdd = only(1);

    const auto r = walk(*g, c).at(0);
    EXPECT_EQ(r.sOutYubin, QString());
    EXPECT_EQ(r.sOutAddress, u"佐藤医院2F"_s);
}

TEST(RoomNumber, OnlyWithTheSecondAddressInInstallationsOfTypeFive)
{
    struct Case {
        int element;
        const char* waType;
        const char16_t* room;
        const char16_t* expected;
    };
    const Case cases[] = {
        {1, "5", u"203", u"-203"},
        {1, "5", u"0", u"-0"},
        {1, "0", u"203", u""},
        {0, "5", u"203", u""},
    };
    for (const Case& k : cases) {
        auto g = onePatient();
        setCells(*g, 1, {{16, QString::fromUtf16(k.room)}});
        LabelChoices c = gridWalk();
        c.optAdd = only(k.element);
        c.sWaType = QString::fromLatin1(k.waType);
        EXPECT_EQ(walk(*g, c).at(0).nRoomNo, QString::fromUtf16(k.expected)) << k.element << " " << k.waType;
    }
}

// --- the grid walk --------------------------------------------------------------------

TEST(GridWalk, TickedRowsInGridOrderHiddenOnesIncluded)
{
    auto g = makeGrid(4);
    for (int row = 1; row <= 4; ++row) setPatient(*g, row, 10 + row, u"患者"_s + QString::number(row));
    tick(*g, 1);
    tick(*g, 3);
    tick(*g, 4);
    g->setRowHidden(3, true);
    // The number printed comes from column 3.
    g->setText(2, 4, u"999"_s);

    const auto records = walk(*g, gridWalk());
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].cIDno, u"11"_s);
    EXPECT_EQ(records[1].cIDno, u"13"_s);
    EXPECT_EQ(records[2].cIDno, u"14"_s);
    EXPECT_EQ(records[0].cJisseki, u"2"_s);
    EXPECT_EQ(records[0].nTantouID, QString());
}

TEST(GridWalk, CellsAreReadTrimmedOfBlanks)
{
    auto g = onePatient(5);
    setCells(*g, 1, {{3, u"  5 "_s}, {9, u" 住所 1 "_s}, {11, u" 03 "_s}});
    const auto r = walk(*g, gridWalk()).at(0);
    EXPECT_EQ(r.cIDno, u"5"_s);
    EXPECT_EQ(r.sOutAddress, u"住所 1"_s);
    EXPECT_EQ(r.cTelNo, u"03"_s);
}

// --- the list walk --------------------------------------------------------------------

TEST(ListWalk, FollowsTheListOrderAndFindsEachRowByNumber)
{
    auto g = makeGrid(3);
    for (int row = 1; row <= 3; ++row) setPatient(*g, row, 20 + row, u"患者"_s + QString::number(row));
    const std::vector<OrderLine> list{lineOf(23, u"患者3"_s), lineOf(21, u"患者1"_s)};

    QStringList status;
    const auto records = walk(*g, listWalk(), list, &status);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].sOutAtena, u"患者3 様"_s);
    EXPECT_EQ(records[1].sOutAtena, u"患者1 様"_s);
    EXPECT_EQ(status.first(), u"2人中1人目を計算中です。"_s);
}

TEST(ListWalk, ALineWhoseNumberIsGoneKeepsThePreviousRecordWithItsNumber)
{
    auto g = makeGrid(1);
    setPatient(*g, 1, 31, u"残る 人"_s);
    const std::vector<OrderLine> list{lineOf(31, u"残る"_s), lineOf(77, u"消えた"_s)};

    const auto records = walk(*g, listWalk(), list);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1].cIDno, u"77"_s);
    EXPECT_EQ(records[1].sOutAtena, u"残る 人 様"_s);
    EXPECT_EQ(records[1].sOutAddress, u"東京都千代田区1-1"_s);
}

TEST(ListWalk, TheReservedNumberIsCountedButNotPrinted)
{
    auto g = makeGrid(1);
    setPatient(*g, 1, 31, u"残る 人"_s);
    const std::vector<OrderLine> list{{u"-----"_s, kNotAnAddressee}, lineOf(31, u"残る"_s)};
    QStringList status;
    const auto records = walk(*g, listWalk(), list, &status);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].cIDno, u"31"_s);
    EXPECT_EQ(status.size(), 2);
}

TEST(ListWalk, ADoctorCarriesTheStaffNumberOfHisLineOnlyInTheList)
{
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"501"_s, u"鈴木 次郎 先生"_s, u"1"_s);
    tick(*g, 1);
    LabelChoices c = listWalk(1);
    c.asPickedIDs = {u"12"_s, u"34"_s};
    const auto records = walk(*g, c, {lineOf(501, u"鈴木 次郎"_s), lineOf(501, u"鈴木 次郎"_s)});
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].nTantouID, u"12"_s);
    EXPECT_EQ(records[1].nTantouID, u"34"_s);

    c.bEnterAdd = false;
    EXPECT_EQ(walk(*g, c).at(0).nTantouID, QString());
}

// --- the rules of the kinds -------------------------------------------------------------

TEST(KindRules, StaffPrintsBothAddressLinesAndKeepsTheChosenPostalCode)
{
    auto g = makeGrid(2);
    setAddressee(*g, 1, u"1"_s, u"田中 三郎 様"_s, u"5"_s,
                 {{8, u"160-0001"_s}, {9, u"新宿区1-1"_s}, {10, u"メゾン101"_s}});
    setAddressee(*g, 2, u"2"_s, u"田中 四郎 様"_s, u"5"_s, {{8, u"160-0002"_s}, {9, u"新宿区2-2"_s}, {10, u"  "_s}});
    tick(*g, 1);
    tick(*g, 2);
    LabelChoices c = gridWalk(5);
    c.staffChosen = true;
    const auto records = walk(*g, c);
    EXPECT_EQ(records[0].sOutAddress, u"新宿区1-1\r\nメゾン101"_s);
    EXPECT_EQ(records[0].sOutYubin, u"160-0001"_s);
    EXPECT_EQ(records[1].sOutAddress, u"新宿区2-2"_s);
}

namespace {

// An insurer row: location in 8 and 9, the receipt address in 18 to 20.
void setInsurer(controls::Grid& g, int row, const QString& id)
{
    setAddressee(g, row, id, u"全国健康保険協会 理事長 御中"_s, u"2"_s,
                 {{7, u"理事長"_s},
                  {8, u"100-1000"_s},
                  {9, u"所在地1-1"_s},
                  {15, u"御中"_s},
                  {18, u"200-2000"_s},
                  {19, u"レセプト送付先2-2"_s},
                  {20, u"レセプト係 御中"_s}});
}

}  // namespace

TEST(KindRules, InsurerReceiptAddressDiffersBetweenTheWalks)
{
    auto g = makeGrid(1);
    setInsurer(*g, 1, u"01130012"_s);
    tick(*g, 1);
    LabelChoices c = gridWalk(2);
    c.optAddHokenja = {false, true};

    const auto inGrid = walk(*g, c).at(0);
    EXPECT_EQ(inGrid.sOutAtena, u"レセプト係 御中"_s);
    EXPECT_EQ(inGrid.sOutYubin, u"100-1000"_s);
    EXPECT_EQ(inGrid.sOutAddress, u"所在地1-1"_s);

    c.bEnterAdd = true;
    // The insurer's line is found by the text before its first blank, in column 3.
    const auto inList = walk(*g, c, {{u"01130012     全国健康保険協会 "_s, 1130012}}).at(0);
    EXPECT_EQ(inList.sOutAtena, u"レセプト係 御中"_s);
    EXPECT_EQ(inList.sOutYubin, u"200-2000"_s);
    EXPECT_EQ(inList.sOutAddress, u"レセプト送付先2-2"_s);
    EXPECT_EQ(inList.cIDno, u"01130012"_s);
}

TEST(KindRules, AnInsurerLineNotFoundPutsItsNumberInTheName)
{
    auto g = makeGrid(1);
    setInsurer(*g, 1, u"39"_s);
    const auto r = walk(*g, listWalk(2), {{u"4040     消えた保険者 "_s, 4040}}).at(0);
    EXPECT_EQ(r.cName, u"4040"_s);
    EXPECT_EQ(r.sOutAtena, u"4040"_s);
    EXPECT_EQ(r.cIDno, QString());
}

struct CaremaneCase {
    const char* what;
    bool officeFirst;
    const char16_t* facility;  // column 6
    const char16_t* office;    // column 21
    const char16_t* kikan;
    const char16_t* address;
};

class CaremaneRuleTest : public ::testing::TestWithParam<CaremaneCase> {};

TEST_P(CaremaneRuleTest, FacilityOrOfficeByTheChoice)
{
    const CaremaneCase& p = GetParam();
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"8"_s, u"高橋 五郎 様"_s, u"4"_s,
                 {{6, QString::fromUtf16(p.facility)},
                  {8, u"330-0001"_s},
                  {9, u"施設の住所1-1"_s},
                  {10, u"施設の住所2"_s},
                  {21, QString::fromUtf16(p.office)},
                  {22, u"居宅介護支援"_s},
                  {23, u"事業所の住所3-3"_s},
                  {24, u"事業所ビル"_s}});
    tick(*g, 1);
    LabelChoices c = gridWalk(4);
    c.optAddKeamane = {!p.officeFirst, p.officeFirst};
    // Whichever address element is chosen, the first address line is printed.
    c.optAdd = only(1);
    const auto r = walk(*g, c).at(0);
    EXPECT_EQ(r.cKikan, QString::fromUtf16(p.kikan));
    EXPECT_EQ(r.sOutAddress, QString::fromUtf16(p.address));
}

INSTANTIATE_TEST_SUITE_P(Choices, CaremaneRuleTest,
                         ::testing::Values(CaremaneCase{"office first, with office", true, u"ひまわり苑", u"さくら居宅",
                                                        u"さくら居宅", u"事業所の住所3-3"},
                                           CaremaneCase{"office first, no office", true, u"ひまわり苑", u"",
                                                        u"ひまわり苑", u"施設の住所1-1"},
                                           CaremaneCase{"facility first, with facility", false, u"ひまわり苑",
                                                        u"さくら居宅", u"ひまわり苑", u"施設の住所1-1"},
                                           CaremaneCase{"facility first, no facility", false, u"", u"さくら居宅",
                                                        u"さくら居宅", u"事業所の住所3-3"},
                                           CaremaneCase{"neither", false, u"", u"", u"", u"施設の住所1-1"}),
                         [](const ::testing::TestParamInfo<CaremaneCase>& info) {
                             return sealtest::caseName(info.param.what);
                         });

TEST(KindRules, OwnOfficeOnAnEnvelopeIsNamedByItsRepresentativeLineInTheGridWalkOnly)
{
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"1"_s, u"ひかり治療院 御中"_s, u"7"_s, {{7, u"院長 光 太郎 御中"_s}, {9, u"本町1-1"_s}});
    tick(*g, 1);
    LabelChoices c = gridWalk(7);
    c.opPMode = {false, true};
    EXPECT_EQ(walk(*g, c).at(0).sOutAtena, u"院長 光 太郎 御中"_s);
    c.bEnterAdd = true;
    EXPECT_EQ(walk(*g, c, {lineOf(1, u"ひかり治療院"_s)}).at(0).sOutAtena, u"ひかり治療院 御中"_s);
    c.opPMode = {true, false};
    c.bEnterAdd = false;
    EXPECT_EQ(walk(*g, c).at(0).sOutAtena, u"ひかり治療院 御中"_s);
}

TEST(KindRules, InstitutionWithTheFreeHonorificLosesItsLinesInTheListWalkOnly)
{
    auto g = makeGrid(1);
    setAddressee(*g, 1, u"3"_s, u"中央病院 医事課御中"_s, u"6"_s, {{6, u"中央病院"_s}, {7, u"医事課御中"_s}});
    tick(*g, 1);
    LabelChoices c = gridWalk(8);
    c.nKeisho = 6;
    const auto inGrid = walk(*g, c).at(0);
    EXPECT_EQ(inGrid.cKikan, u"中央病院"_s);
    EXPECT_EQ(inGrid.cDaihyo, u"医事課御中"_s);
    c.bEnterAdd = true;
    const auto inList = walk(*g, c, {lineOf(3, u"中央病院"_s)}).at(0);
    EXPECT_EQ(inList.cKikan, QString());
    EXPECT_EQ(inList.cDaihyo, QString());
}

// --- envelope width -----------------------------------------------------------------

TEST(EnvelopeWidth, DigitsAndLettersWideHyphensNarrow)
{
    EXPECT_EQ(envelopeAddress(u"東京都港区芝5-10-2 Aビル3F"_s), u"東京都港区芝５-１０-２　Ａビル３Ｆ"_s);
    // A full-width hyphen typed into the address turns narrow too.
    EXPECT_EQ(envelopeAddress(u"本町1－2"_s), u"本町１-２"_s);
    EXPECT_EQ(envelopeAddress(QString()), QString());
}

TEST(EnvelopeWidth, OnlyInEnvelopeModeAndOnlyOnTheAddress)
{
    auto g = onePatient(9);
    LabelChoices c = gridWalk();
    EXPECT_EQ(walk(*g, c).at(0).sOutAddress, u"東京都千代田区1-1"_s);
    c.opPMode = {false, true};
    const auto r = walk(*g, c).at(0);
    EXPECT_EQ(r.sOutAddress, u"東京都千代田区１-１"_s);
    EXPECT_EQ(r.sOutYubin, u"100-0001"_s);
}

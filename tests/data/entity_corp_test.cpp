// The office table class: statements, filters, order, NULLs and failures on a real
// SQLite database.

#include "data/ct_corp.h"

#include "support/golden.h"
#include "support/param_names.h"
#include "support/table_class_test.h"

#include <vector>

namespace {

using data::cD_CORP;
using data::cT_CORP;

class CorpTest : public sealtest::TableClassTest<cT_CORP, cD_CORP, &cT_CORP::clsCORP> {
protected:
    void SetUp() override
    {
        TableClassTest::SetUp();
        run(QStringLiteral(
            "INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, iType, cShamei1, cShamei2, cShameiKana1, cYubinNo, "
            "cAddress1, cTelNo, cDaihyo, iKinSyubetsu, nLat, nLon, tUpDateTime, cEmail) VALUES "
            "(1, 2, 3, 1, '  さくら鍼灸院  ', '北口', 'ｻｸﾗ', '160-0022', '東京都新宿区新宿3-1', '03-1111-2222', "
            "'桜井　一郎', 1, 35.6895, 139.6917, '2026/11/20 09:15:30', 'kita@example.jp'),"
            "(1, 2, 1, 0, 'さくら鍼灸院', '本院', 'ｻｸﾗ ﾎﾝｲﾝ', '160-0023', '東京都新宿区西新宿1-1', NULL, NULL, 2,"
            " NULL, NULL, '2026/01/05', NULL),"
            "(1, 2, 2, 3, 'あおば治療院', NULL, 'ｱｵﾊﾞ', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),"
            "(1, 3, 9, 0, '別拠点', NULL, 'ﾍﾞﾂ', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)"));
    }
};

// The statements whole, in tests/data/fixtures/golden/corp_*.sql: the short list of
// this office; the full list with both conditions in their order, and with none; the
// search from the office with its three conditions.
TEST_F(CorpTest, StatementsAreTheirGoldenTexts)
{
    sealtest::expectGolden(QStringLiteral("corp_grid.sql"), cT_CORP::sqlDataReadGrid());
    cD_CORP filter;
    filter.nIDNo = 4;
    filter.iType = 2;
    sealtest::expectGolden(QStringLiteral("corp_read_number_and_type.sql"), cT_CORP::sqlDataRead(filter));
    filter.nIDNo = -1;
    filter.iType = -1;
    sealtest::expectGolden(QStringLiteral("corp_read_free.sql"), cT_CORP::sqlDataRead(filter));
    filter.nIDNo = 5;
    filter.cShamei1 = QStringLiteral("さくら");
    filter.cShameiKana1 = QStringLiteral("ｻｸﾗ");
    sealtest::expectGolden(QStringLiteral("corp_search.sql"), cT_CORP::sqlDataReadGrid_Jouken(filter));
}

TEST_F(CorpTest, GridReadsThisOfficeByNumberWithTheShortColumnsOnly)
{
    cT_CORP& corps = opened<cT_CORP>();
    ASSERT_EQ(corps.iDataReadGrid(), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(ids(corps), (std::vector<qint32>{1, 2, 3}));
    const cD_CORP& kita = corps.clsCORP(2);
    EXPECT_EQ(kita.cShamei1, QStringLiteral("さくら鍼灸院"));  // trimmed
    EXPECT_EQ(kita.cEmail, QStringLiteral("kita@example.jp"));
    EXPECT_EQ(kita.iType, 1);
    // Kana, bank kind and coordinates are not in the short list.
    EXPECT_EQ(kita.cShameiKana1, QString());
    EXPECT_EQ(kita.iKinSyubetsu, 0);
    EXPECT_EQ(kita.nLat, 0.0);
}

TEST_F(CorpTest, ReadFillsEveryColumnAndKeepsTheUpdateTimeAsText)
{
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.nIDNo = 3;
    filter.iType = -1;
    ASSERT_EQ(corps.iDataRead(filter), 0) << corps.sErrMsg().toStdString();
    ASSERT_EQ(corps.nデータ数(), 1);
    const cD_CORP& row = corps.clsCORP(0);
    EXPECT_EQ(row.cShamei1, QStringLiteral("さくら鍼灸院"));
    EXPECT_EQ(row.cShamei2, QStringLiteral("北口"));
    EXPECT_EQ(row.cShameiKana1, QStringLiteral("ｻｸﾗ"));
    EXPECT_EQ(row.cDaihyo, QStringLiteral("桜井　一郎"));
    EXPECT_EQ(row.iKinSyubetsu, 1);
    EXPECT_EQ(row.sKinSyubetsu(), QStringLiteral("銀行"));
    EXPECT_DOUBLE_EQ(row.nLat, 35.6895);
    EXPECT_DOUBLE_EQ(row.nLon, 139.6917);
    EXPECT_EQ(row.tUpDateTime, QStringLiteral("2026/11/20 9:15:30"));
}

TEST_F(CorpTest, NullColumnsReadAsEmptyTextAndZero)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 2, 7)"));
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.iType = -1;
    for (const qint32 id : {2, 7}) {  // some columns NULL; all but the key NULL
        filter.nIDNo = id;
        ASSERT_EQ(corps.iDataRead(filter), 0) << corps.sErrMsg().toStdString();
        ASSERT_EQ(corps.nデータ数(), 1);
        const cD_CORP& row = corps.clsCORP(0);
        EXPECT_EQ(row.cShamei2 + row.cAddress1 + row.cEmail + row.cPcName + row.tUpDateTime, QString()) << id;
        EXPECT_EQ(row.iKinSyubetsu + row.iKyotenToshiNo + row.iKozaType, 0) << id;
        EXPECT_EQ(row.nLat, 0.0) << id;
        EXPECT_EQ(row.iType, id == 2 ? 3 : 0);
    }
    EXPECT_EQ(corps.clsCORP(0).cShamei1, QString());
}

struct ReadFilterCase {
    const char* name;
    qint32 nIDNo;
    short iType;
    std::vector<qint32> expected;
};

class CorpReadFilterTest : public CorpTest, public ::testing::WithParamInterface<ReadFilterCase> {};

TEST_P(CorpReadFilterTest, MinusOneLeavesAColumnFreeAndZeroIsAValue)
{
    const ReadFilterCase& c = GetParam();
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.nIDNo = c.nIDNo;
    filter.iType = c.iType;
    ASSERT_EQ(corps.iDataRead(filter), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(ids(corps), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Filters, CorpReadFilterTest,
    ::testing::Values(ReadFilterCase{"AllOfTheOffice", -1, -1, {1, 2, 3}},
                      ReadFilterCase{"BelowMinusOneIsFreeToo", -5, -2, {1, 2, 3}},
                      ReadFilterCase{"NumberZeroMatchesNothing", 0, -1, {}}, ReadFilterCase{"OneNumber", 2, -1, {2}},
                      ReadFilterCase{"AnotherOfficesNumber", 9, -1, {}}, ReadFilterCase{"TypeZero", -1, 0, {1}},
                      ReadFilterCase{"TypeAndNumber", 3, 1, {3}}, ReadFilterCase{"TypeAndNumberDisagree", 3, 0, {}}),
    sealtest::ByName{});

TEST_F(CorpTest, DuplicateCheckReadsEveryOtherRowOfTheOffice)
{
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.nIDNo = 2;
    filter.iType = -1;
    ASSERT_EQ(corps.iDataReadChk(filter), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(ids(corps), (std::vector<qint32>{1, 3}));
    EXPECT_TRUE(cT_CORP::sqlDataRead(filter, true).contains(QStringLiteral("\r\n    nIDNo <> 2\r\n")));
}

TEST_F(CorpTest, NothingMatchingLeavesAnEmptyArrayAndSucceeds)
{
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.nIDNo = -1;
    ASSERT_EQ(corps.iDataRead(filter), 0);  // reads iType 0: row 1
    ASSERT_EQ(corps.nデータ数(), 1);
    filter.nIDNo = 77;
    filter.iType = -1;
    EXPECT_EQ(corps.iDataRead(filter), 0);
    EXPECT_EQ(corps.nデータ数(), 0);
    EXPECT_THROW(corps.clsCORP(0), base::VbError);
}

struct JoukenCase {
    const char* name;
    qint32 nIDNo;
    const char16_t* shamei;
    const char16_t* kana;
    std::vector<qint32> expected;
};

class CorpJoukenTest : public CorpTest, public ::testing::WithParamInterface<JoukenCase> {};

TEST_P(CorpJoukenTest, ConditionsNeedAValueAboveZeroOrAText)
{
    const JoukenCase& c = GetParam();
    cT_CORP& corps = opened<cT_CORP>();
    cD_CORP filter;
    filter.nIDNo = c.nIDNo;
    filter.cShamei1 = QString::fromUtf16(c.shamei);
    filter.cShameiKana1 = QString::fromUtf16(c.kana);
    ASSERT_EQ(corps.iDataReadGrid_Jouken(filter), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(ids(corps), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Conditions, CorpJoukenTest,
                         ::testing::Values(JoukenCase{"NoCondition", 0, u"", u"", {1, 2, 3}},
                                           JoukenCase{"NegativeNumberIsNoCondition", -1, u"", u"", {1, 2, 3}},
                                           JoukenCase{"Number", 2, u"", u"", {2}},
                                           JoukenCase{"NameContains", 0, u"鍼灸", u"", {1, 3}},
                                           JoukenCase{"KanaContains", 0, u"", u"ﾎﾝ", {1}},
                                           JoukenCase{"NameAndKana", 0, u"さくら", u"ｱｵ", {}},
                                           JoukenCase{"OtherOfficeNameNotFound", 0, u"別拠点", u"", {}}),
                         sealtest::ByName{});

TEST_F(CorpTest, ApostropheInASearchTextFailsTheReadAndChangesNothing)
{
    cT_CORP& corps = opened<cT_CORP>();
    ASSERT_EQ(corps.iDataReadGrid(), 0);
    cD_CORP filter;
    for (const QString& text : {QStringLiteral("O'Hara"), QStringLiteral("x%'; delete from CORP --")}) {
        filter.cShamei1 = text;
        EXPECT_EQ(corps.iDataReadGrid_Jouken(filter), -1) << text.toStdString();
        EXPECT_TRUE(corps.sErrMsg().startsWith(u'(')) << corps.sErrMsg().toStdString();
        EXPECT_TRUE(corps.sErrMsg().contains(QStringLiteral("SQL=")));
    }
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 4);
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(CorpTest, MissingColumnComesBackAsStatusAndText)
{
    run(QStringLiteral("DROP TABLE CORP; CREATE TABLE CORP (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER, "
                       "cShamei1 TEXT); INSERT INTO CORP VALUES (1, 2, 1, 'a')"));
    data::cT_ADODB db;
    connect(db);
    cT_CORP corps;
    corps.iInit(db);
    EXPECT_EQ(corps.iDataReadGrid(), -1);
    EXPECT_FALSE(corps.sErrMsg().isEmpty());
    EXPECT_EQ(corps.sErrMsg(), db.sErrMsg());
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(CorpTest, ReadingBeforeInitFails)
{
    cT_CORP corps;
    EXPECT_EQ(corps.iDataReadGrid(), -1);
    EXPECT_TRUE(corps.sErrMsg().startsWith(QStringLiteral("91\r\n")));
}

TEST_F(CorpTest, HighestNumberIsThisOfficesAndZeroForNone)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo) VALUES (2, 2, 50)"));
    cT_CORP& corps = opened<cT_CORP>();
    qint32 nMax = -1;
    ASSERT_EQ(corps.iGetMaxIDNo(nMax), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(nMax, 3);
    app::iKyotenEb = 8;
    ASSERT_EQ(corps.iGetMaxIDNo(nMax), 0);
    EXPECT_EQ(nMax, 0);
}

TEST_F(CorpTest, MachineNameFitsTheBufferOrFails)
{
    cT_CORP corps;
    QString name;
    platform_.setMachineName(QStringLiteral("OFFICE-PC01"));
    EXPECT_EQ(corps.iGetComputerName(name), 0);
    EXPECT_EQ(name, QStringLiteral("OFFICE-PC01"));
    platform_.setMachineName(QString(249, u'A'));
    EXPECT_EQ(corps.iGetComputerName(name), 0);
    EXPECT_EQ(name.size(), 249);
    platform_.setMachineName(QString(250, u'A'));
    EXPECT_EQ(corps.iGetComputerName(name), -1);
}

struct DerivedCase {
    int value;
    const char16_t* sType;
    const char16_t* sKinSyubetsu;
    const char16_t* sKinSiten;
    const char16_t* sKozaType;
};

class CorpDerivedTest : public ::testing::TestWithParam<DerivedCase> {};

TEST_P(CorpDerivedTest, EachNameFollowsItsNumber)
{
    const DerivedCase& c = GetParam();
    cD_CORP row;
    row.iType = static_cast<short>(c.value);
    row.iKinSyubetsu = static_cast<short>(c.value);
    row.iKinSiten = static_cast<short>(c.value);
    row.iKozaType = static_cast<short>(c.value);
    EXPECT_EQ(row.sType(), QString::fromUtf16(c.sType));
    EXPECT_EQ(row.sKinSyubetsu(), QString::fromUtf16(c.sKinSyubetsu));
    EXPECT_EQ(row.sKinSiten(), QString::fromUtf16(c.sKinSiten));
    EXPECT_EQ(row.sKozaType(), QString::fromUtf16(c.sKozaType));
}

INSTANTIATE_TEST_SUITE_P(
    Values, CorpDerivedTest,
    ::testing::Values(DerivedCase{-1, u"", u"", u"", u""}, DerivedCase{0, u"本社（往療基点）", u"", u"", u""},
                      DerivedCase{1, u"受領代理人", u"銀行", u"本店", u"普通"},
                      DerivedCase{2, u"受領代理人", u"金庫", u"支店", u"当座"},
                      DerivedCase{3, u"団体請求", u"農協", u"本所", u"通知"},
                      DerivedCase{4, u"", u"郵便局", u"支所", u"別段"}, DerivedCase{5, u"", u"", u"出張所", u""},
                      DerivedCase{6, u"", u"", u"", u""}),
    [](const auto& info) {
        return info.param.value < 0 ? std::string("Negative") : "Number" + std::to_string(info.param.value);
    });

}  // namespace

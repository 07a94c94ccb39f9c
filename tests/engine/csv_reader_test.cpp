// Reading the data files: the writer's quoting, titles, and what a broken file says.

#include "engine/csv_table.h"
#include "engine/engine_error.h"

#include "engine_test_support.h"

#include <gtest/gtest.h>

using engine::parseCsv;
using engine::parseCsvRecords;

namespace {

TEST(CsvRecords, BareFirstFieldAndQuotedOthers)
{
    const auto r = parseCsvRecords(QStringLiteral("12,\"山田 様\",\"\",\"〒 123-4567\"\r\n"));
    ASSERT_EQ(r.size(), 1);
    EXPECT_EQ(r[0], (QStringList{"12", "山田 様", "", "〒 123-4567"}));
}

TEST(CsvRecords, BlankLineHasTwentyEmptyFields)
{
    const auto r = parseCsvRecords(enginetest::kBlankLine + "\r\n");
    ASSERT_EQ(r.size(), 1);
    ASSERT_EQ(r[0].size(), 20);
    EXPECT_EQ(r[0][0], "0");
    for (int i = 1; i < 20; ++i) EXPECT_TRUE(r[0][i].isEmpty());
}

TEST(CsvRecords, QuoteInsideValueIsKeptWhenNotFollowedByComma)
{
    const auto r = parseCsvRecords(QStringLiteral("1,\"ab\"c\"d\",\"x\"\r\n"));
    ASSERT_EQ(r.size(), 1);
    EXPECT_EQ(r[0], (QStringList{"1", "ab\"c\"d", "x"}));
}

// A quote right before a comma ends the field: the writer's own file splits there.
TEST(CsvRecords, QuoteBeforeCommaInsideValueSplitsTheField)
{
    const auto r = parseCsvRecords(QStringLiteral("1,\"a\",b\",\"x\"\r\n"));
    ASSERT_EQ(r.size(), 1);
    EXPECT_EQ(r[0], (QStringList{"1", "a", "b\"", "x"}));
}

TEST(CsvRecords, LineBreakInsideQuotedValueStaysInTheValue)
{
    QList<int> lines;
    const auto r = parseCsvRecords(QStringLiteral("1,\"住所一\r\n住所二\",\"x\"\r\n2,\"y\",\"z\"\r\n"), &lines);
    ASSERT_EQ(r.size(), 2);
    EXPECT_EQ(r[0][1], "住所一\r\n住所二");
    EXPECT_EQ(r[1][0], "2");
    EXPECT_EQ(lines, (QList<int>{1, 3}));
}

TEST(CsvRecords, LastLineWithoutLineEndAndLoneLf)
{
    const auto r = parseCsvRecords(QStringLiteral("1,\"a\"\n2,\"b\""));
    ASSERT_EQ(r.size(), 2);
    EXPECT_EQ(r[1], (QStringList{"2", "b"}));
}

TEST(CsvRecords, StaffNumberBehindBlankLineLandsInTheLastField)
{
    const auto r = parseCsvRecords(enginetest::kBlankLine + "1234\r\n");
    ASSERT_EQ(r[0].size(), 20);
    EXPECT_EQ(r[0][19], "1234");
}

TEST(CsvTable, TitlesMatchWithoutSurroundingBlanks)
{
    const auto t = parseCsv(enginetest::kLabelTitle + "\r\n" + enginetest::labelLine({}) + "\r\n", "a.csv", true);
    EXPECT_EQ(t.titles.size(), 20);
    EXPECT_EQ(t.column(" 送付先郵便番号"), 15);
    EXPECT_EQ(t.column("送付先郵便番号"), 15);
    EXPECT_EQ(t.column("脚注"), 19);
    EXPECT_EQ(t.column("nothing"), -1);
    ASSERT_EQ(t.rows.size(), 1);
    EXPECT_EQ(t.rowLines[0], 2);
}

TEST(CsvTable, QuotedTitlesOfTheLedger)
{
    const auto t =
        parseCsv(QStringLiteral("\"枠線描画\",\"No\",\"患者名\"\r\n\"1\",1,\"佐藤\"\r\n"), "同意データ.csv", true);
    EXPECT_EQ(t.titles, (QStringList{"枠線描画", "No", "患者名"}));
    EXPECT_EQ(t.rows[0], (QStringList{"1", "1", "佐藤"}));
}

TEST(CsvTable, RowsArePaddedOrCutToTheTitles)
{
    const auto t = parseCsv(QStringLiteral("a,b,c\r\n1,\"x\"\r\n2,\"x\",\"y\",\"z\"\r\n"), "a.csv", true);
    EXPECT_EQ(t.rows[0], (QStringList{"1", "x", ""}));
    EXPECT_EQ(t.rows[1], (QStringList{"2", "x", "y"}));
}

struct EmptyCase {
    const char* name;
    const char* text;
    bool hasTitle;
    const char* messagePart;
};
class CsvEmpty : public ::testing::TestWithParam<EmptyCase> {};
TEST_P(CsvEmpty, IsAnErrorNamingTheFile)
{
    try {
        parseCsv(QString::fromUtf8(GetParam().text), "C:/TMP/シール.csv", GetParam().hasTitle);
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), "C:/TMP/シール.csv");
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().messagePart))) << e.text().toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(Empty, CsvEmpty,
                         ::testing::Values(EmptyCase{"NoBytes", "", true, "空"},
                                           EmptyCase{"OnlyBlanks", "\r\n\r\n", false, "空"},
                                           EmptyCase{"TitleOnly", "a,b,c\r\n", true, "タイトル行だけ"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(CsvFile, InvalidByteNamesItsLine)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("シール.csv");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(base::toCp932(enginetest::kLabelTitle) + "\r\n");
    f.write(base::toCp932(enginetest::labelLine({})) + "\r\n");
    f.write("2,\"\xFD\xFD\"\r\n");
    f.close();
    try {
        engine::readCsv(path, true);
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), path);
        EXPECT_EQ(e.line(), 3);
    }
}

TEST(CsvFile, MissingFileIsNamed)
{
    QTemporaryDir dir;
    EXPECT_THROW(engine::readCsv(dir.filePath("none.csv"), true), engine::EngineError);
}

}  // namespace

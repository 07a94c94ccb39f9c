// Reading the data files: the writer's quoting, titles, and what a broken file says.

#include "engine/csv_table.h"
#include "engine/engine_error.h"

#include "support/engine_job.h"

#include <gtest/gtest.h>

using engine::parseCsv;
using engine::parseCsvRecords;

namespace {

// The writer's quoting: a bare first field, the others quoted and never escaped, so a
// quote ends a value only before a comma or a line end.
TEST(CsvRecords, SplitAsTheWriterQuotes)
{
    QStringList blank(20);
    blank[0] = "0";
    QStringList staff = blank;
    staff[19] = "1234";  // a doctor's blank line carries a staff number in the last field
    const struct {
        const char* what;
        QString text;
        QList<QStringList> records;
        QList<int> lines;
    } cases[] = {
        {"bare first field, quoted others",
         "12,\"山田 様\",\"\",\"〒 123-4567\"\r\n",
         {{"12", "山田 様", "", "〒 123-4567"}},
         {1}},
        {"blank line has twenty empty fields", sealtest::kBlankLine + "\r\n", {blank}, {1}},
        {"staff number behind a blank line", sealtest::kBlankLine + "1234\r\n", {staff}, {1}},
        {"quote inside a value is kept", "1,\"ab\"c\"d\",\"x\"\r\n", {{"1", "ab\"c\"d", "x"}}, {1}},
        {"quote before a comma splits the field", "1,\"a\",b\",\"x\"\r\n", {{"1", "a", "b\"", "x"}}, {1}},
        {"line break inside a quoted value",
         "1,\"住所一\r\n住所二\",\"x\"\r\n2,\"y\",\"z\"\r\n",
         {{"1", "住所一\r\n住所二", "x"}, {"2", "y", "z"}},
         {1, 3}},
        {"lone LF and no line end at the end", "1,\"a\"\n2,\"b\"", {{"1", "a"}, {"2", "b"}}, {1, 2}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        QList<int> lines;
        EXPECT_EQ(parseCsvRecords(c.text, &lines), c.records);
        EXPECT_EQ(lines, c.lines);
    }
}

TEST(CsvTable, TitlesMatchWithoutSurroundingBlanks)
{
    const auto t = parseCsv(sealtest::kLabelTitle + "\r\n" + sealtest::labelLine({}) + "\r\n", "a.csv", true);
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
    sealtest::expectEngineError(
        [&] { parseCsv(QString::fromUtf8(GetParam().text), "C:/TMP/シール.csv", GetParam().hasTitle); },
        "C:/TMP/シール.csv", -1, {QString::fromUtf8(GetParam().messagePart)});
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
    sealtest::putBytes(path, sealtest::crlf({sealtest::kLabelTitle, sealtest::labelLine({})}) + "2,\"\xFD\xFD\"\r\n");
    sealtest::expectEngineError([&] { engine::readCsv(path, true); }, path, 3);
}

TEST(CsvFile, MissingFileIsNamed)
{
    QTemporaryDir dir;
    EXPECT_THROW(engine::readCsv(dir.filePath("none.csv"), true), engine::EngineError);
}

}  // namespace

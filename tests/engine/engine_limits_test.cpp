// Sizes, counts and repeats from a form, a script or a data file are held to the
// engine's limits before it computes with them: a hostile or mistyped number is a
// clear error naming the file, the key or line and the limit, never an overflow, a
// blank page, a page of the wrong size or a job that does not end.

#include "engine/csv_table.h"
#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/form.h"
#include "engine/limits.h"
#include "engine/page_output.h"
#include "engine/wfd_script.h"

#include "engine_test_support.h"

#include <gtest/gtest.h>

namespace {

struct Hostile {
    const char* name;
    const char* input;
    const char* where;  // the key or line kind the message names
    const char* limit;  // the limit it names
};

#define HEAD R"({"format": "sealprint-form/1", "paper": {"size": "A4"}, )"
#define FIELD R"("cellFields": [{"column": "cName", "x": 0, "y": 0, "width": 5, "height": 5}])"
#define GRID(c, r)                                                                                                     \
    R"("cells": {"columns": )" c R"(, "rows": )" r R"(, "left": 0, "top": 0, "width": 10, "height": 10}, )"

class FormLimit : public ::testing::TestWithParam<Hostile> {};
TEST_P(FormLimit, IsRefusedNamingTheKeyAndTheLimit)
{
    try {
        const engine::Form f = engine::parseForm(QByteArray(GetParam().input), "hostile.wfd");
        FAIL() << "read with paper " << f.paper.width() << " x " << f.paper.height();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), "hostile.wfd");
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().where))) << e.text().toStdString();
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().limit))) << e.text().toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(
    Forms, FormLimit,
    ::testing::Values(
        Hostile{"ColumnsBeyondAnyInteger", HEAD GRID("1e33", "1") FIELD "}", "\"columns\"", "1000"},
        Hostile{"BillionByBillionCells", HEAD GRID("1000000000", "1000000000") FIELD "}", "\"columns\"", "1000"},
        Hostile{"GridOverTheCellsPerSheet", HEAD GRID("40", "40") FIELD "}", "columns × rows", "1000"},
        Hostile{"FractionOfACell", HEAD GRID("2.5", "4") FIELD "}", "\"columns\"", "整数"},
        Hostile{
            "ListRowsBeyondAnyInteger",
            R"({"format": "sealprint-form/1", "paper": {"size": "A4"}, "list": {"top": 0, "rowHeight": 5, "rows": -1e300},
                    "rowFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5}]})",
            "\"rows\"", "1000"},
        Hostile{"CustomPaperOfAThousandKilometres",
                R"({"format": "sealprint-form/1", "paper": {"size": "custom", "width": 1e9, "height": 100}, )" GRID("1",
                                                                                                                    "1")
                    FIELD "}",
                "\"width\"", "3000"},
        Hostile{"FieldFarOffThePaper",
                HEAD GRID("1", "1") R"("cellFields": [{"column": "a", "x": 1e33, "y": 0, "width": 5, "height": 5}]})",
                "\"x\"", "3000"},
        Hostile{
            "FontOfAMillionPoints",
            HEAD GRID("1",
                      "1") R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5, "size": 1e6}]})",
            "\"size\"", "1000"},
        Hostile{"SmallestSizeOfAMillionPoints",
                HEAD GRID(
                    "1",
                    "1") R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5, "minSize": 1e6}]})",
                "\"minSize\"", "1000"},
        Hostile{
            "IndentBeyondAnyLine",
            HEAD GRID(
                "1",
                "1") R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5, "indent": 1e300}]})",
            "\"indent\"", "3000"},
        Hostile{
            "PostalGapBeyondThePaper",
            HEAD GRID("1",
                      "1") R"("cellFields": [{"type": "postal", "column": "a", "x": 0, "y": 0, "width": 50, "height": 9,
                    "boxes": {"top": 0, "right": 0, "width": 5, "height": 8, "gaps": [1, 1, 1, 1e300, 1, 1]}}]})",
            "\"gaps\"", "3000"}),
    [](const auto& info) { return std::string(info.param.name); });

class ScriptLimit : public ::testing::TestWithParam<Hostile> {};
TEST_P(ScriptLimit, IsRefusedNamingTheLineAndTheLimit)
{
    const QString text = QStringLiteral("FileName,\"a.wfd\"\r\nSetDataText,\"シール\",\"a.csv\"\r\n") +
                         QString::fromUtf8(GetParam().input) + QStringLiteral("\r\nShowWindow,2\r\n");
    try {
        engine::parseWfdScript(text, "WfdCom.dat");
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), "WfdCom.dat");
        EXPECT_EQ(e.line(), 3);
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().where))) << e.text().toStdString();
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().limit))) << e.text().toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(
    Scripts, ScriptLimit,
    ::testing::Values(
        Hostile{"RepeatStartAtTheIntegerLimit", "SectionRepeatStart, 2147483647", "SectionRepeatStart", "1000"},
        Hostile{"RepeatStartOfAHundredMillion", "SectionRepeatStart, 100000000", "SectionRepeatStart", "1000"},
        Hostile{"NegativeRepeatStart", "SectionRepeatStart, -3", "SectionRepeatStart", "0 から"},
        Hostile{"OffsetAcrossTheCountry", "PrintOffsetX, 2147483647", "PrintOffsetX", "30000"},
        Hostile{"NegativeOffsetBeyondThePaper", "PrintOffsetY, -30001", "PrintOffsetY", "-30000"},
        Hostile{"ZoomBeyondTheScreen", "PrintZoom, 99999", "PrintZoom", "1000"}),
    [](const auto& info) { return std::string(info.param.name); });

class JobLimit : public ::testing::Test {
protected:
    static void SetUpTestSuite() { enginetest::ensureGuiApp(); }
    QString write(const QString& name, const QStringList& lines)
    {
        const QString path = dir.filePath(name);
        enginetest::writeCp932(path, lines);
        return path;
    }
    engine::EngineError errorOf(const QString& script)
    {
        try {
            engine::Document doc(engine::readWfdScript(script), QString());
            ADD_FAILURE() << "a job of " << doc.nPages() << " pages";
        } catch (const engine::EngineError& e) {
            return e;
        }
        return {QString(), 0, QString()};
    }
    // A job of a form of one cell a sheet over a data file of n names: the script.
    QString oneCellJob(const QByteArray& formJson, int n)
    {
        QFile form(dir.filePath("一面.wfd"));
        EXPECT_TRUE(form.open(QIODevice::WriteOnly));
        form.write(formJson);
        form.close();
        QStringList lines{QStringLiteral("cName")};
        for (int i = 0; i < n; ++i) lines.append(QStringLiteral("\"山田\""));
        csv = write("封筒.csv", lines);
        return write("WfdCom.dat", enginetest::scriptLines(form.fileName(), csv));
    }
    QTemporaryDir dir;
    QString csv;
};

TEST_F(JobLimit, RepeatStartBeyondTheCellsOfTheSheetNamesTheScriptLine)
{
    // シール.wfd has ten cells: the eleventh would only ever print on a later sheet,
    // after blank ones.
    const QString csv = write("シール.csv", {enginetest::kLabelTitle, enginetest::labelLine({})});
    const QString script = write(
        "WfdCom.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), csv, {"SectionRepeatStart, 11"}));
    const engine::EngineError e = errorOf(script);
    EXPECT_EQ(e.file(), script);
    EXPECT_EQ(e.line(), 4);
    EXPECT_TRUE(e.message().contains(QStringLiteral("SectionRepeatStart"))) << e.text().toStdString();
    EXPECT_TRUE(e.message().contains(QStringLiteral("10"))) << e.text().toStdString();
}

TEST_F(JobLimit, MorePagesThanAJobMayHaveIsRefusedBeforeAnyIsDrawn)
{
    // One label to a sheet: one page per data line, one line over the limit.
    const engine::EngineError e = errorOf(oneCellJob(HEAD GRID("1", "1") FIELD "}", engine::limits::kPagesPerJob + 1));
    EXPECT_EQ(e.file(), csv);
    EXPECT_TRUE(e.message().contains(QString::number(engine::limits::kPagesPerJob + 1))) << e.text().toStdString();
    EXPECT_TRUE(e.message().contains(QString::number(engine::limits::kPagesPerJob))) << e.text().toStdString();
}

TEST_F(JobLimit, AJobAtTheLimitStillReads)
{
    engine::Document doc(engine::readWfdScript(oneCellJob(HEAD GRID("1", "1") FIELD "}", engine::limits::kPagesPerJob)),
                         QString());
    EXPECT_EQ(doc.nPages(), engine::limits::kPagesPerJob);
}

TEST_F(JobLimit, PaperAtTheLimitComesOutAtItsOwnSize)
{
    // The longest paper a form may have is still a page size a PDF can hold, never
    // the Letter sheet a writer falls back to for sizes it cannot take.
    const QString script = oneCellJob(
        R"({"format": "sealprint-form/1", "paper": {"size": "custom", "width": 3000, "height": 120}, )" GRID("1", "1")
            FIELD "}",
        1);
    engine::Document doc(engine::readWfdScript(script), QString());
    engine::writePdf(doc, dir.filePath("長い.pdf"));
    QFile pdf(dir.filePath("長い.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdf.readAll();
    EXPECT_TRUE(bytes.contains("/MediaBox [0 0 8504")) << bytes.left(2000).toStdString();
}

TEST(CsvUnterminatedQuote, IsRefusedWithTheLineTheValueOpenedOn)
{
    // A file cut short in the third label's address: the open value used to run to the
    // end of the file and the engine printed the labels before it as if all was well.
    const QString cut = enginetest::kLabelTitle + QStringLiteral("\r\n") + enginetest::labelLine({}) +
                        QStringLiteral("\r\n2,\"佐藤 様\",\"東京都新宿");
    // A quote opened on line 2 with no quoted value after it to close it.
    const QString open = QStringLiteral("a,b\r\n1,\"x\r\n2,y\r\n3,z\r\n");
    for (const auto& [text, line] : {std::pair{cut, 3}, std::pair{open, 2}}) {
        try {
            engine::parseCsv(text, "シール.csv", true);
            ADD_FAILURE() << "read";
        } catch (const engine::EngineError& e) {
            EXPECT_EQ(e.file(), "シール.csv");
            EXPECT_EQ(e.line(), line);
            EXPECT_TRUE(e.message().contains(u'"')) << e.text().toStdString();
        }
    }
    // A quote at the very end of the file opens a value too.
    EXPECT_THROW(engine::parseCsv(QStringLiteral("a,b\r\n1,\""), "x.csv", true), engine::EngineError);
    // A value closed at the very end of the file is whole, its inner quote kept.
    EXPECT_EQ(engine::parseCsv(QStringLiteral("a,b\r\n1,\"x\"y\""), "x.csv", true).rows[0][1], QStringLiteral("x\"y"));
}

}  // namespace

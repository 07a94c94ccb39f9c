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

#include "support/engine_job.h"

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
    sealtest::expectEngineError([&] { engine::parseForm(QByteArray(GetParam().input), "hostile.wfd"); }, "hostile.wfd",
                                -1, {QString::fromUtf8(GetParam().where), QString::fromUtf8(GetParam().limit)});
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
    sealtest::expectEngineError([&] { engine::parseWfdScript(text, "WfdCom.dat"); }, "WfdCom.dat", 3,
                                {QString::fromUtf8(GetParam().where), QString::fromUtf8(GetParam().limit)});
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
    // A job of a form of one cell a sheet over a data file of n names: the script.
    QString oneCellJob(const QByteArray& formJson, int n)
    {
        sealtest::putBytes(jobs.path("一面.wfd"), formJson);
        csv = jobs.write("封筒.csv", QStringList{"cName"} + QStringList(n, QStringLiteral("\"山田\"")));
        return jobs.script(jobs.path("一面.wfd"), csv);
    }
    sealtest::JobFolder jobs;
    QString csv;
};

TEST_F(JobLimit, MorePagesThanAJobMayHaveIsRefusedBeforeAnyIsDrawn)
{
    // One label to a sheet: one page per data line, one line over the limit.
    const QString script = oneCellJob(HEAD GRID("1", "1") FIELD "}", engine::limits::kPagesPerJob + 1);
    sealtest::expectEngineError(
        [&] { sealtest::JobFolder::document(script); }, csv, -1,
        {QString::number(engine::limits::kPagesPerJob + 1), QString::number(engine::limits::kPagesPerJob)});
}

TEST_F(JobLimit, AJobAtTheLimitStillReads)
{
    const QString script = oneCellJob(HEAD GRID("1", "1") FIELD "}", engine::limits::kPagesPerJob);
    EXPECT_EQ(sealtest::JobFolder::document(script)->nPages(), engine::limits::kPagesPerJob);
}

TEST_F(JobLimit, PaperAtTheLimitComesOutAtItsOwnSize)
{
    // The longest paper a form may have is still a page size a PDF can hold, never
    // the Letter sheet a writer falls back to for sizes it cannot take.
    const QString script = oneCellJob(
        R"({"format": "sealprint-form/1", "paper": {"size": "custom", "width": 3000, "height": 120}, )" GRID("1", "1")
            FIELD "}",
        1);
    engine::writePdf(*sealtest::JobFolder::document(script), jobs.path("長い.pdf"));
    const QByteArray bytes = sealtest::fileBytes(jobs.path("長い.pdf"));
    EXPECT_TRUE(bytes.contains("/MediaBox [0 0 8504")) << bytes.left(2000).toStdString();
}

TEST(CsvUnterminatedQuote, IsRefusedWithTheLineTheValueOpenedOn)
{
    // A file cut short in the third label's address: the open value used to run to the
    // end of the file and the engine printed the labels before it as if all was well.
    const QString cut = sealtest::kLabelTitle + QStringLiteral("\r\n") + sealtest::labelLine({}) +
                        QStringLiteral("\r\n2,\"佐藤 様\",\"東京都新宿");
    // A quote opened on line 2 with no quoted value after it to close it.
    const QString open = QStringLiteral("a,b\r\n1,\"x\r\n2,y\r\n3,z\r\n");
    for (const auto& c : {std::pair{cut, 3}, std::pair{open, 2}})
        sealtest::expectEngineError([&] { engine::parseCsv(c.first, "シール.csv", true); }, "シール.csv", c.second,
                                    {"\""});
    // A quote at the very end of the file opens a value too.
    EXPECT_THROW(engine::parseCsv(QStringLiteral("a,b\r\n1,\""), "x.csv", true), engine::EngineError);
    // A value closed at the very end of the file is whole, its inner quote kept.
    EXPECT_EQ(engine::parseCsv(QStringLiteral("a,b\r\n1,\"x\"y\""), "x.csv", true).rows[0][1], QStringLiteral("x\"y"));
}

}  // namespace

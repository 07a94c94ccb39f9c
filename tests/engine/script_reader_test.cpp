// Reading WfdCom.dat: every line kind the program writes, and the faults a script can have.

#include "engine/engine_error.h"
#include "engine/wfd_script.h"

#include "support/engine_job.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using engine::OutputMode;
using engine::Paper;
using engine::parseWfdScript;
using engine::WfdScript;

namespace {

WfdScript parse(const QStringList& lines)
{
    return parseWfdScript(lines.join(QStringLiteral("\r\n")) + "\r\n", "WfdCom.dat");
}

const QString kForm = QStringLiteral("C:\\Velmio\\SYS\\シール.wfd");

TEST(ScriptReader, SingleReportPreviewWithEveryOptionalLine)
{
    const WfdScript s = parse({"FileName,\"" + kForm + "\"", "Title,\"シール\"",
                               "SetDataText,\"シール\",\"C:\\Velmio\\TMP\\シール.csv\"", "PrintOffsetX, 15",
                               "PrintOffsetY, -20", "PrintZoom, 0", "SectionRepeatStart, 3", "PrintPaper, B5",
                               "SetItemValue,\"Header.Caption\",\"第1版\"", "ShowWindow,2"});
    EXPECT_EQ(s.formFile, kForm);
    EXPECT_EQ(s.formLine, 1);
    EXPECT_EQ(s.title, "シール");
    ASSERT_EQ(s.data.size(), 1);
    EXPECT_EQ(s.data[0].name, "シール");
    EXPECT_EQ(s.data[0].file, "C:\\Velmio\\TMP\\シール.csv");
    EXPECT_TRUE(s.data[0].hasTitle);
    EXPECT_EQ(s.data[0].line, 3);
    EXPECT_EQ(s.offsetX, 15);
    EXPECT_EQ(s.offsetY, -20);
    EXPECT_EQ(s.zoom, 0);
    EXPECT_EQ(s.repeatStart, 3);
    EXPECT_EQ(s.paper, Paper::B5);
    ASSERT_EQ(s.items.size(), 1);
    EXPECT_EQ(s.items[0].path, "Header.Caption");
    EXPECT_EQ(s.items[0].value, "第1版");
    EXPECT_EQ(s.mode, OutputMode::Preview);
    EXPECT_FALSE(s.joined);
}

TEST(ScriptReader, DefaultsWhenOptionalLinesAreAbsent)
{
    const WfdScript s = parse({"FileName,\"" + kForm + "\"", "PrintPaper, A4", "PrintOutFromDialog"});
    EXPECT_TRUE(s.title.isEmpty());
    EXPECT_TRUE(s.data.isEmpty());
    EXPECT_EQ(s.offsetX, 0);
    EXPECT_EQ(s.zoom, 2);
    EXPECT_EQ(s.repeatStart, 0);
    EXPECT_EQ(s.paper, Paper::A4);
    EXPECT_EQ(s.mode, OutputMode::PrintDialog);
}

TEST(ScriptReader, PaperAndModeLines)
{
    const struct {
        const char* paperLine;
        Paper paper;
        const char* modeLine;
        OutputMode mode;
    } cases[] = {{"PrintPaper, A4", Paper::A4, "ShowWindow,2", OutputMode::Preview},
                 {"PrintPaper, A5", Paper::A5, "PrintOut", OutputMode::PrintOut},
                 {"PrintPaper, B5", Paper::B5, "PrintOutFromDialog", OutputMode::PrintDialog}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.modeLine);
        const WfdScript s = parse({"FileName,\"" + kForm + "\"", c.paperLine, c.modeLine});
        EXPECT_EQ(s.paper, c.paper);
        EXPECT_EQ(s.mode, c.mode);
    }
}

TEST(ScriptReader, NoTitleTrailerBindsByPosition)
{
    const WfdScript s = parse(
        {"FileName,\"" + kForm + "\"", "SetDataText,\"シール\",\"C:\\TMP\\a.csv\",,,1", "PrintPaper, A4", "PrintOut"});
    ASSERT_EQ(s.data.size(), 1);
    EXPECT_EQ(s.data[0].file, "C:\\TMP\\a.csv");
    EXPECT_FALSE(s.data[0].hasTitle);
}

TEST(ScriptReader, FiveSlotsKeepTheirOrder)
{
    QStringList lines = {"FileName,\"" + kForm + "\""};
    for (int i = 1; i <= 5; ++i) lines.append(QStringLiteral("SetDataText,\"d%1\",\"f%1.csv\"").arg(i));
    lines += {"PrintPaper, A4", "PrintOut"};
    const WfdScript s = parse(lines);
    ASSERT_EQ(s.data.size(), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(s.data[i].file, QStringLiteral("f%1.csv").arg(i + 1));
}

// Paper -1 writes the last line a second time, whatever it was.
TEST(ScriptReader, DoubledLastLineOfPaperMinusOneChangesNothing)
{
    const WfdScript data = parse({"FileName,\"" + kForm + "\"", "Title,\"t\"", "SetDataText,\"シール\",\"a.csv\"",
                                  "SetDataText,\"シール\",\"a.csv\"", "ShowWindow,2"});
    EXPECT_EQ(data.data.size(), 1);
    const WfdScript title = parse({"FileName,\"" + kForm + "\"", "Title,\"t\"", "Title,\"t\"", "ShowWindow,2"});
    EXPECT_EQ(title.title, "t");
    const WfdScript file = parse({"FileName,\"" + kForm + "\"", "FileName,\"" + kForm + "\"", "PrintOut"});
    EXPECT_EQ(file.formFile, kForm);
    const WfdScript offset = parse({"FileName,\"" + kForm + "\"", "PrintOffsetY, 7", "PrintOffsetY, 7", "PrintOut"});
    EXPECT_EQ(offset.offsetY, 7);
}

TEST(ScriptReader, ItemPathWithSingleDotAndQuoteInsideValue)
{
    const WfdScript s = parse({"FileName,\"" + kForm + "\"", "SetItemValue,\"Page.Footer\",\"say \"hi\"\"",
                               "PrintPaper, A4", "ShowWindow,2"});
    ASSERT_EQ(s.items.size(), 1);
    EXPECT_EQ(s.items[0].path, "Page.Footer");
    EXPECT_EQ(s.items[0].value, "say \"hi\"");
    EXPECT_EQ(s.items[0].line, 2);
}

TEST(ScriptReader, JoinedPrintScriptListsReportsWithTheirData)
{
    const WfdScript s =
        parse({"setTitle,\"まとめ\"", "SetDataText,\"シール\",\"C:\\TMP\\a.csv\",\",\", \"\"\"\", True",
               "SetDataText,\"追加\",\"C:\\TMP\\b.csv\",\",\", \"\"\"\", True", "setreport,\"C:\\SYS\\シール.wfd\"",
               "AddReport", "SetDataText,\"シール\",\"C:\\TMP\\c.csv\",\",\", \"\"\"\", True",
               "setreport,\"C:\\SYS\\封筒印刷長3.wfd\""});
    EXPECT_TRUE(s.joined);
    EXPECT_EQ(s.title, "まとめ");
    ASSERT_EQ(s.reports.size(), 2);
    EXPECT_EQ(s.reports[0].form, "C:\\SYS\\シール.wfd");
    ASSERT_EQ(s.reports[0].data.size(), 2);
    EXPECT_EQ(s.reports[0].data[0].file, "C:\\TMP\\a.csv");
    EXPECT_EQ(s.reports[0].data[1].name, "追加");
    EXPECT_TRUE(s.reports[0].data[1].hasTitle);
    ASSERT_EQ(s.reports[1].data.size(), 1);
    EXPECT_EQ(s.reports[1].data[0].file, "C:\\TMP\\c.csv");
}

TEST(ScriptReader, JoinedScriptWithNoReportsStillReads)
{
    const WfdScript s = parse({"setTitle,\"t\""});
    EXPECT_TRUE(s.joined);
    EXPECT_TRUE(s.reports.isEmpty());
}

TEST(ScriptReader, ViewerScriptOfAJoinedPrint)
{
    const WfdScript s = parse({"Title,\"まとめ\"", "FileName,\"C:\\TMP\\tmp.wfd\"", "PrintOutFromDialog"});
    EXPECT_EQ(s.formFile, "C:\\TMP\\tmp.wfd");
    EXPECT_EQ(s.mode, OutputMode::PrintDialog);
}

struct BadScript {
    const char* name;
    QStringList lines;
    int line;
    const char* messagePart;
};
class ScriptFault : public ::testing::TestWithParam<BadScript> {};
TEST_P(ScriptFault, NamesTheLine)
{
    sealtest::expectEngineError([&] { parse(GetParam().lines); }, "WfdCom.dat", GetParam().line,
                                {QString::fromUtf8(GetParam().messagePart)});
}
INSTANTIATE_TEST_SUITE_P(
    Faults, ScriptFault,
    ::testing::Values(
        BadScript{"UnknownKind", {"FileName,\"a.wfd\"", "PrintColour, 2", "PrintOut"}, 2, "PrintColour"},
        BadScript{"OffsetNotANumber", {"FileName,\"a.wfd\"", "PrintOffsetX, ten", "PrintOut"}, 2, "PrintOffsetX"},
        BadScript{"UnknownPaper", {"FileName,\"a.wfd\"", "PrintPaper, Letter", "PrintOut"}, 2, "Letter"},
        BadScript{"UnquotedFileName", {"FileName,a.wfd", "PrintOut"}, 1, "FileName"},
        BadScript{"DataWithoutFile", {"FileName,\"a.wfd\"", "SetDataText,\"シール\"", "PrintOut"}, 2, "SetDataText"},
        BadScript{"UnknownTrailer", {"FileName,\"a.wfd\"", "SetDataText,\"a\",\"b.csv\",x", "PrintOut"}, 2, "末尾"},
        BadScript{"NoFileName", {"Title,\"t\"", "PrintOut"}, 0, "FileName"},
        BadScript{"ReportWithoutTitle", {"setreport,\"a.wfd\""}, 1, "setTitle"},
        BadScript{"DataAfterLastReport", {"setTitle,\"t\"", "SetDataText,\"a\",\"b.csv\""}, 2, "setreport"}),
    [](const auto& info) { return std::string(info.param.name); });

class ScriptFile : public ::testing::Test {
protected:
    QTemporaryDir dir;
    const QString path = dir.filePath("WfdCom.dat");
};

TEST_F(ScriptFile, MissingOrNotCp932IsRefusedNamingTheFile)
{
    const struct {
        const char* what;
        QByteArray bytes;  // none: no file
        int line;
        const char* part;
    } cases[] = {
        {"missing", {}, -1, "見つかりません"},
        {"not CP932", base::toCp932(u"FileName,\"シール.wfd\"\r\nTitle,\"") + "\x85\x20\"\r\nPrintOut\r\n", 2, "CP932"},
        {"UTF-8", QStringLiteral("FileName,\"シール.wfd\"\r\nPrintOut\r\n").toUtf8(), -1, "UTF-8"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        QFile::remove(path);
        if (!c.bytes.isEmpty()) sealtest::putBytes(path, c.bytes);
        sealtest::expectEngineError([&] { engine::readWfdScript(path); }, path, c.line, {QString::fromUtf8(c.part)});
    }
}

TEST_F(ScriptFile, Cp932ScriptReadsBack)
{
    sealtest::writeCrlf(path, {"FileName,\"C:\\SYS\\ビーコン用シール30M.wfd\"", "Title,\"シール\"", "PrintOut"});
    const WfdScript s = engine::readWfdScript(path);
    EXPECT_EQ(s.formFile, "C:\\SYS\\ビーコン用シール30M.wfd");
    EXPECT_EQ(s.path, path);
}

}  // namespace

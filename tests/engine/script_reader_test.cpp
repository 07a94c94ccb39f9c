// Reading WfdCom.dat: every line kind the program writes, and the faults a script can have.

#include "engine/engine_error.h"
#include "engine/wfd_script.h"

#include "engine_test_support.h"

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

struct ModeCase {
    const char* line;
    OutputMode mode;
};
class ScriptModeLine : public ::testing::TestWithParam<ModeCase> {};
TEST_P(ScriptModeLine, EndsTheScriptWithItsOutput)
{
    const WfdScript s = parse({"FileName,\"" + kForm + "\"", "PrintPaper, A4", QString::fromUtf8(GetParam().line)});
    EXPECT_EQ(s.mode, GetParam().mode);
}
INSTANTIATE_TEST_SUITE_P(
    Modes, ScriptModeLine,
    ::testing::Values(ModeCase{"ShowWindow,2", OutputMode::Preview}, ModeCase{"PrintOut", OutputMode::PrintOut},
                      ModeCase{"PrintOutFromDialog", OutputMode::PrintDialog}),
    ([](const auto& info) {
        return std::vector<std::string>{"ShowWindow", "PrintOut", "PrintOutFromDialog"}.at(info.index);
    }));

struct PaperCase {
    const char* line;
    Paper paper;
};
class ScriptPaperLine : public ::testing::TestWithParam<PaperCase> {};
TEST_P(ScriptPaperLine, ChoosesTheSheet)
{
    const WfdScript s = parse({"FileName,\"" + kForm + "\"", QString::fromUtf8(GetParam().line), "PrintOut"});
    EXPECT_EQ(s.paper, GetParam().paper);
}
INSTANTIATE_TEST_SUITE_P(Papers, ScriptPaperLine,
                         ::testing::Values(PaperCase{"PrintPaper, A4", Paper::A4},
                                           PaperCase{"PrintPaper, A5", Paper::A5},
                                           PaperCase{"PrintPaper, B5", Paper::B5}),
                         ([](const auto& info) {
                             return std::vector<std::string>{"A4", "A5", "B5"}.at(info.index);
                         }));

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
    try {
        parse(GetParam().lines);
        FAIL() << "no error";
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), "WfdCom.dat");
        EXPECT_EQ(e.line(), GetParam().line) << e.text().toStdString();
        EXPECT_TRUE(e.message().contains(QString::fromUtf8(GetParam().messagePart))) << e.text().toStdString();
    }
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
};

TEST_F(ScriptFile, MissingScriptIsNamed)
{
    const QString path = dir.filePath("WfdCom.dat");
    try {
        engine::readWfdScript(path);
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.file(), path);
        EXPECT_TRUE(e.message().contains("見つかりません"));
    }
}

TEST_F(ScriptFile, BytesThatAreNotCp932NameTheirLine)
{
    const QString path = dir.filePath("WfdCom.dat");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(base::toCp932(u"FileName,\"シール.wfd\"\r\nTitle,\"") + QByteArray("\x85\x20") + "\"\r\nPrintOut\r\n");
    f.close();
    try {
        engine::readWfdScript(path);
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_EQ(e.line(), 2);
        EXPECT_TRUE(e.message().contains("CP932"));
    }
}

TEST_F(ScriptFile, Utf8TextIsRefusedWithAHint)
{
    const QString path = dir.filePath("WfdCom.dat");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QStringLiteral("FileName,\"シール.wfd\"\r\nPrintOut\r\n").toUtf8());
    f.close();
    try {
        engine::readWfdScript(path);
        FAIL();
    } catch (const engine::EngineError& e) {
        EXPECT_TRUE(e.message().contains("UTF-8"));
    }
}

TEST_F(ScriptFile, Cp932ScriptReadsBack)
{
    const QString path = dir.filePath("WfdCom.dat");
    enginetest::writeCp932(path, {"FileName,\"C:\\SYS\\ビーコン用シール30M.wfd\"", "Title,\"シール\"", "PrintOut"});
    const WfdScript s = engine::readWfdScript(path);
    EXPECT_EQ(s.formFile, "C:\\SYS\\ビーコン用シール30M.wfd");
    EXPECT_EQ(s.path, path);
}

}  // namespace

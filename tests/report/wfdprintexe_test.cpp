// The command script and program starts of the report viewer driver, checked on the
// bytes of WfdCom.dat in a throw-away program directory.

#include "report/cls_wfdprintexe.h"

#include "support/globals_scope.h"

#include "app/globals.h"
#include "base/text_codec.h"
#include "controls/recording_platform.h"
#include "support/files.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <optional>

using report::cls_WfdPrintExe;
using namespace Qt::StringLiterals;

namespace {

// The recording platform, keeping besides a copy of the script as it stood at each
// program start, since a joined print replaces it right after.
class StartRecorder : public controls::RecordingPlatform {
public:
    QList<QByteArray> scriptAtStart;
    QString scriptPath;

    bool startProgram(const QString& commandLine, int windowStyle) override
    {
        scriptAtStart << sealtest::fileBytes(scriptPath);
        return RecordingPlatform::startProgram(commandLine, windowStyle);
    }
    QStringList runs() const { return transcript().filter(QRegularExpression(u"^run "_s)); }
};

using sealtest::crlf;

class WfdPrintExeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        app::gsAppPath = dir.path();
        writeSystemSettings(QStringLiteral("\\TMP"));
        ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("TMP")));
        tmp = app::gsAppPath + QStringLiteral("\\TMP\\");
        recorder.scriptPath = dir.path() + QStringLiteral("/TMP/WfdCom.dat");
        app::setPlatform(&recorder);
    }

    void writeSystemSettings(const QString& tmpValue)
    {
        sealtest::writeCrlf(dir.filePath("Tavrine.ini"), {"[SYSTEM]", "SYSTEM_SYS=\\SYS", "SYSTEM_TMP=" + tmpValue});
    }

    QByteArray script() const { return sealtest::fileBytes(recorder.scriptPath); }

    // A driver with the calls the seal screen makes before its output operation.
    cls_WfdPrintExe sealDriver()
    {
        cls_WfdPrintExe d;
        EXPECT_EQ(d.iInit(form, QStringLiteral("シール")), 0);
        EXPECT_EQ(d.iSetDataText(1, QStringLiteral("シール"), QStringLiteral("シール.csv")), 0);
        return d;
    }

    QTemporaryDir dir;
    QString tmp;
    StartRecorder recorder;
    sealtest::GlobalsScope globals;
    const QString form = QStringLiteral("C:\\Velmio\\SYS\\シール.wfd");
};

// --- the single-report operations -----------------------------------------------

TEST_F(WfdPrintExeTest, PreviewWritesTheSealScriptAndStartsTheViewerMinimised)
{
    cls_WfdPrintExe d = sealDriver();
    d.iPreview(0);

    EXPECT_EQ(script(),
              crlf({u"FileName,\""_s + form + u"\""_s, u"Title,\"シール\""_s,
                    u"SetDataText,\"シール\",\""_s + tmp + u"シール.csv\""_s, u"PrintPaper, A4"_s, u"ShowWindow,2"_s}));
    EXPECT_EQ(recorder.runs(), QStringList{u"run 2 wfrfv10.exe /c "_s + tmp + u"WfdCom.dat"_s});
    EXPECT_TRUE(d.sErrMsg.isEmpty());
}

TEST_F(WfdPrintExeTest, ScriptIsShiftJisWithCrLf)
{
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("a.wfd"), QStringLiteral("シール"));
    d.iPrintBk();
    EXPECT_EQ(script(), QByteArray("FileName,\"a.wfd\"\r\n"
                                   "Title,\"\x83\x56\x81\x5b\x83\x8b\"\r\n"
                                   "PrintPaper, A4\r\n"
                                   "PrintOut\r\n"));
}

struct ModeCase {
    const char* name;
    void (*run)(cls_WfdPrintExe&);
    const char* paperLine;
    const char* modeLine;
    const char* started;  // %1 the temporary folder; empty: nothing started
};

class WfdModeTest : public WfdPrintExeTest, public ::testing::WithParamInterface<ModeCase> {};

TEST_P(WfdModeTest, WritesPaperAndModeLineAndStartsTheRightProgram)
{
    const ModeCase& c = GetParam();
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("f.wfd"), QString());
    c.run(d);
    EXPECT_EQ(script(), crlf({u"FileName,\"f.wfd\""_s, QString::fromUtf8(c.paperLine), QString::fromUtf8(c.modeLine)}));
    const QString expected = QString::fromUtf8(c.started).replace(u"%1"_s, tmp);
    EXPECT_EQ(recorder.runs(), expected.isEmpty() ? QStringList{} : QStringList{expected});
    EXPECT_TRUE(d.sErrMsg.isEmpty()) << d.sErrMsg.toStdString();
}

const char* const kViewerRun = "run 2 wfrfv10.exe /c %1WfdCom.dat";

INSTANTIATE_TEST_SUITE_P(
    Operations, WfdModeTest,
    ::testing::Values(
        ModeCase{"Preview", [](cls_WfdPrintExe& d) { d.iPreview(1); }, "PrintPaper, A5", "ShowWindow,2", kViewerRun},
        ModeCase{"PreviewData", [](cls_WfdPrintExe& d) { d.iPreviewData(); }, "PrintPaper, A4", "ShowWindow,2", ""},
        ModeCase{"PreviewActX", [](cls_WfdPrintExe& d) { d.iPreviewActX(); }, "PrintPaper, A4", "ShowWindow,2",
                 "run 3 WrVb6Viewer.exe /c ./TMP\\WfdCom.dat"},
        ModeCase{"PrintBk", [](cls_WfdPrintExe& d) { d.iPrintBk(); }, "PrintPaper, A4", "PrintOut", kViewerRun},
        ModeCase{"PrintDialog", [](cls_WfdPrintExe& d) { d.iPrintDialog(2); }, "PrintPaper, B5", "PrintOutFromDialog",
                 kViewerRun}),
    [](const auto& info) { return std::string(info.param.name); });

// --- the paper line -------------------------------------------------------------

struct PaperCase {
    const char* name;
    int16_t paper;
    void (*setup)(cls_WfdPrintExe&);
    QStringList middle;  // lines between FileName and the mode line
};

class WfdPaperTest : public WfdPrintExeTest, public ::testing::WithParamInterface<PaperCase> {};

TEST_P(WfdPaperTest, PaperLine)
{
    const PaperCase& c = GetParam();
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("f.wfd"), QString());
    c.setup(d);
    d.iPrintDialog(c.paper);
    QStringList lines{u"FileName,\"f.wfd\""_s};
    lines << c.middle << u"PrintOutFromDialog"_s;
    EXPECT_EQ(script(), crlf(lines));
}

void noSetup(cls_WfdPrintExe&) {}

INSTANTIATE_TEST_SUITE_P(
    Papers, WfdPaperTest,
    ::testing::Values(PaperCase{"A5", 1, noSetup, {u"PrintPaper, A5"_s}},
                      PaperCase{"B5", 2, noSetup, {u"PrintPaper, B5"_s}},
                      PaperCase{"ZeroIsA4", 0, noSetup, {u"PrintPaper, A4"_s}},
                      PaperCase{"ThreeIsA4", 3, noSetup, {u"PrintPaper, A4"_s}},
                      PaperCase{"MinusOneRepeatsFileName", -1, noSetup, {u"FileName,\"f.wfd\""_s}},
                      PaperCase{"MinusOneRepeatsDataLine",
                                -1,
                                [](cls_WfdPrintExe& d) { d.iSetDataTextNoTitle(2, u"d"_s, u"/x/d.csv"_s); },
                                {u"SetDataText,\"d\",\"/x/d.csv\",,,1"_s, u"SetDataText,\"d\",\"/x/d.csv\",,,1"_s}},
                      PaperCase{"MinusOneRepeatsRepeatStart",
                                -1,
                                [](cls_WfdPrintExe& d) {
                                    d.iSetOffset(5, -7);
                                    d.iSetRepeatStart(3);
                                },
                                {u"PrintOffsetX, 5"_s, u"PrintOffsetY, -7"_s, u"SectionRepeatStart, 3"_s,
                                 u"SectionRepeatStart, 3"_s}},
                      PaperCase{"MinusOneRepeatsTitle",
                                -1,
                                [](cls_WfdPrintExe& d) { d.iInit(QStringLiteral("f.wfd"), QStringLiteral("封筒")); },
                                {u"Title,\"封筒\""_s, u"Title,\"封筒\""_s}},
                      // Items come after the paper line, so they are never the line repeated.
                      PaperCase{"MinusOneIgnoresItems",
                                -1,
                                [](cls_WfdPrintExe& d) { d.iSetItemValue(u"a"_s, u"b"_s, u"c"_s, u"v"_s); },
                                {u"FileName,\"f.wfd\""_s, u"SetItemValue,\"a.b.c\",\"v\""_s}}),
    [](const auto& info) { return std::string(info.param.name); });

// --- optional lines -------------------------------------------------------------

TEST_F(WfdPrintExeTest, OptionalLinesOnlyWhenTheyDifferFromTheEngineDefaults)
{
    struct Case {
        int32_t x, y;
        int16_t zoom, repeat;
        QStringList lines;
    };
    const QList<Case> cases{
        {0, 0, 2, 0, {}},
        {0, 0, 0, 0, {u"PrintZoom, 0"_s}},
        {0, 0, -3, -1, {u"PrintZoom, -3"_s}},
        {0, 0, 2, 1, {u"SectionRepeatStart, 1"_s}},
        {12, 0, 2, 0, {u"PrintOffsetX, 12"_s}},
        {0, -40, 2, 0, {u"PrintOffsetY, -40"_s}},
        {100000,
         7,
         150,
         2,
         {u"PrintOffsetX, 100000"_s, u"PrintOffsetY, 7"_s, u"PrintZoom, 150"_s, u"SectionRepeatStart, 2"_s}},
    };
    for (const Case& c : cases) {
        cls_WfdPrintExe d;
        d.iInit(QStringLiteral("f.wfd"), QString());
        EXPECT_EQ(d.iSetOffset(c.x, c.y), 0);
        EXPECT_EQ(d.iSetPrintZoom(c.zoom), 0);
        EXPECT_EQ(d.iSetRepeatStart(c.repeat), 0);
        d.iPreviewData();
        QStringList lines{u"FileName,\"f.wfd\""_s};
        lines << c.lines << u"PrintPaper, A4"_s << u"ShowWindow,2"_s;
        EXPECT_EQ(script(), crlf(lines)) << c.x << " " << c.y << " " << c.zoom << " " << c.repeat;
    }
}

TEST_F(WfdPrintExeTest, DataSlotsAreWrittenInSlotOrderAndOnlyWithAName)
{
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("f.wfd"), QString());
    EXPECT_EQ(d.iSetDataText(5, u"五"_s, u"e.csv"_s), 0);
    EXPECT_EQ(d.iSetDataTextNoTitle(2, u"二"_s, u"D:\\data\\b.csv"_s), 0);
    EXPECT_EQ(d.iSetDataText(3, QString(), u"ignored.csv"_s), 0);
    EXPECT_EQ(d.iSetDataTextNoTitle(1, u"一"_s, u"x.csv"_s), 0);
    EXPECT_EQ(d.iSetDataText(1, u"一"_s, u"a.csv"_s), 0);  // clears the no-title flag again
    d.iPreviewData();
    EXPECT_EQ(script(),
              crlf({u"FileName,\"f.wfd\""_s, u"SetDataText,\"一\",\""_s + tmp + u"a.csv\""_s,
                    u"SetDataText,\"二\",\"D:\\data\\b.csv\",,,1"_s, u"SetDataText,\"五\",\""_s + tmp + u"e.csv\""_s,
                    u"PrintPaper, A4"_s, u"ShowWindow,2"_s}));
}

TEST_F(WfdPrintExeTest, SlotOutsideOneToFiveIsAFaultOfTheSetter)
{
    for (int16_t slot : {int16_t(0), int16_t(6), int16_t(-1)}) {
        cls_WfdPrintExe d;
        d.iInit(QStringLiteral("f.wfd"), QString());
        EXPECT_EQ(d.iSetDataText(slot, u"n"_s, u"f.csv"_s), -1);
        EXPECT_EQ(d.sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
        d.sErrMsg.clear();
        EXPECT_EQ(d.iSetDataTextNoTitle(slot, u"n"_s, u"f.csv"_s), -1);
        EXPECT_EQ(d.sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
        d.iPreviewData();
        EXPECT_EQ(script(), crlf({u"FileName,\"f.wfd\""_s, u"PrintPaper, A4"_s, u"ShowWindow,2"_s}));
    }
}

TEST_F(WfdPrintExeTest, ItemPathsAndValuesInTheOrderOfAdding)
{
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("f.wfd"), QString());
    d.iSetItemValue(u"Page"_s, u"Header"_s, u"lblDate"_s, u"2026/11/21"_s);
    d.iSetItemValue(u"Page"_s, u"   "_s, u"lblName"_s, u"山田 \"太郎\""_s);
    d.iSetItemValue(u"Page"_s, QString(), u"lblEmpty"_s, QString());
    d.iSetItemValue(u"Page"_s, u" S "_s, u"x"_s, u"v"_s);
    d.iPreview(0);
    EXPECT_EQ(
        script(),
        crlf({u"FileName,\"f.wfd\""_s, u"PrintPaper, A4"_s, u"SetItemValue,\"Page.Header.lblDate\",\"2026/11/21\""_s,
              u"SetItemValue,\"Page.lblName\",\"山田 \"太郎\"\""_s, u"SetItemValue,\"Page.lblEmpty\",\"\""_s,
              u"SetItemValue,\"Page. S .x\",\"v\""_s, u"ShowWindow,2"_s}));
}

TEST_F(WfdPrintExeTest, InitResetsEverythingButAGivenTitle)
{
    cls_WfdPrintExe d;
    d.iInit(QStringLiteral("f.wfd"), QString());
    d.iPreviewData();
    EXPECT_FALSE(script().contains("Title"));

    // A later init without a title leaves the earlier one standing but clears the rest.
    d.iInit(QStringLiteral("a.wfd"), u"同意書"_s);
    d.iSetItemValue(u"a"_s, u"b"_s, u"c"_s, u"d"_s);
    d.iSetOffset(1, 2);
    d.iSetPrintZoom(5);
    d.iSetRepeatStart(4);
    d.iInit(QStringLiteral("c.wfd"), QString());
    d.iPreviewData();
    EXPECT_EQ(script(), crlf({u"FileName,\"c.wfd\""_s, u"Title,\"同意書\""_s, u"PrintPaper, A4"_s, u"ShowWindow,2"_s}));
    EXPECT_EQ(d.fields().sExeName, u"wfrfv10.exe"_s);
    EXPECT_EQ(d.fields().sTmpPath, tmp);
}

TEST_F(WfdPrintExeTest, ASecondOutputRewritesTheScriptFromTheSameState)
{
    cls_WfdPrintExe d = sealDriver();
    d.iPreview(-1);
    d.iPrintDialog(0);
    EXPECT_EQ(script(), crlf({u"FileName,\""_s + form + u"\""_s, u"Title,\"シール\""_s,
                              u"SetDataText,\"シール\",\""_s + tmp + u"シール.csv\""_s, u"PrintPaper, A4"_s,
                              u"PrintOutFromDialog"_s}));
    EXPECT_EQ(recorder.runs().size(), 2);
}

// --- the file on disk and faults ------------------------------------------------

TEST_F(WfdPrintExeTest, ScriptIsReadableByTheUserAlone)
{
    const QString path = recorder.scriptPath;
    auto mode = [&] { return sealtest::fileMode(path); };
    cls_WfdPrintExe d = sealDriver();
    d.iPreview(0);
    EXPECT_EQ(mode(), 0600);

    // A script left by an older run with wider rights is narrowed when replaced.
    ASSERT_TRUE(sealtest::setFileMode(path, 0644));
    d.iPreview(0);
    EXPECT_EQ(mode(), 0600);
}

TEST_F(WfdPrintExeTest, MissingTemporaryFolderIsReportedAndNothingStarts)
{
    writeSystemSettings(QStringLiteral("\\NOWHERE"));
    cls_WfdPrintExe d = sealDriver();
    d.iPreview(0);
    EXPECT_EQ(d.sErrMsg, u"(76)パスが見つかりません。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());

    d.sErrMsg.clear();
    d.addPrint(1, u"d"_s, {QString(), u"a.csv"_s}, {QString(), u"a.wfd"_s}, u"t"_s);
    EXPECT_EQ(d.sErrMsg, u"(76)パスが見つかりません。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());
}

TEST_F(WfdPrintExeTest, UnwritableTemporaryFolderIsReportedAndNothingStarts)
{
    if (sealtest::rightsDoNotBind()) GTEST_SKIP() << "the superuser writes into any folder";
    const QString tmpDir = dir.path() + QStringLiteral("/TMP");
    QFile::setPermissions(tmpDir, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    cls_WfdPrintExe d = sealDriver();
    d.iPrintDialog(0);
    QFile::setPermissions(tmpDir, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(d.sErrMsg, u"(75)パス名が無効です。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());
    EXPECT_FALSE(QFile::exists(recorder.scriptPath));
}

TEST_F(WfdPrintExeTest, ScriptNameTakenByAFolderIsReportedAndNothingStarts)
{
    ASSERT_TRUE(QDir().mkdir(recorder.scriptPath));
    cls_WfdPrintExe d = sealDriver();
    d.iPreview(0);
    EXPECT_EQ(d.sErrMsg, u"(75)パス名が無効です。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());
}

TEST_F(WfdPrintExeTest, AProgramThatWillNotStartLeavesItsTextAndTheScript)
{
    recorder.setStartFails(true);
    cls_WfdPrintExe d = sealDriver();
    d.iPreviewActX();
    EXPECT_EQ(d.sErrMsg, u"(53)ファイルが見つかりません。"_s);
    EXPECT_EQ(recorder.runs().size(), 1);
    EXPECT_TRUE(script().endsWith("ShowWindow,2\r\n"));
}

// --- joined printing ------------------------------------------------------------

class WfdJoinedTest : public WfdPrintExeTest {
protected:
    QStringList joinRuns() const
    {
        return {u"run 2 wfrimg10.exe "_s + tmp + u"tmp.wfd /c "_s + tmp + u"WfdCom.dat"_s,
                u"run 2 wfrfv10.exe /c "_s + tmp + u"WfdCom.dat"_s};
    }
    QByteArray viewerScript(const QString& title) const
    {
        return crlf(
            {u"Title,\""_s + title + u"\""_s, u"FileName,\""_s + tmp + u"tmp.wfd\""_s, u"PrintOutFromDialog"_s});
    }
    static QString dataLine(const QString& name, const QString& file)
    {
        return u"SetDataText,\""_s + name + u"\",\""_s + file + u"\",\",\", \"\"\"\", True"_s;
    }
};

TEST_F(WfdJoinedTest, TwoReportsAreJoinedThenShownInThePrintDialog)
{
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint(2, u"同意"_s, {QString(), u"C:\\T\\1.csv"_s, u"C:\\T\\2.csv"_s},
               {QString(), u"C:\\S\\A.wfd"_s, u"C:\\S\\B.wfd"_s}, u"同意書"_s);

    EXPECT_EQ(recorder.runs(), joinRuns());
    ASSERT_EQ(recorder.scriptAtStart.size(), 2);
    EXPECT_EQ(recorder.scriptAtStart[0],
              crlf({u"setTitle,\"同意書\""_s, dataLine(u"同意"_s, u"C:\\T\\1.csv"_s), u"setreport,\"C:\\S\\A.wfd\""_s,
                    u"AddReport"_s, dataLine(u"同意"_s, u"C:\\T\\2.csv"_s), u"setreport,\"C:\\S\\B.wfd\""_s}));
    EXPECT_EQ(recorder.scriptAtStart[1], viewerScript(u"同意書"_s));
    EXPECT_EQ(script(), viewerScript(u"同意書"_s));
    EXPECT_TRUE(d.sErrMsg.isEmpty());
}

TEST_F(WfdJoinedTest, OneReportHasNoAddReport)
{
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint(1, u"d"_s, {QString(), u"1.csv"_s}, {QString(), u"A.wfd"_s}, u"t"_s);
    ASSERT_EQ(recorder.scriptAtStart.size(), 2);
    EXPECT_EQ(recorder.scriptAtStart[0],
              crlf({u"setTitle,\"t\""_s, dataLine(u"d"_s, u"1.csv"_s), u"setreport,\"A.wfd\""_s}));
}

TEST_F(WfdJoinedTest, NoReportsStillWritesTheTitleAndStartsBothPrograms)
{
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint(0, u"d"_s, {}, {}, QString());
    EXPECT_EQ(recorder.runs(), joinRuns());
    ASSERT_EQ(recorder.scriptAtStart.size(), 2);
    EXPECT_EQ(recorder.scriptAtStart[0], crlf({u"setTitle,\"\""_s}));
    EXPECT_EQ(recorder.scriptAtStart[1], viewerScript(QString()));
}

TEST_F(WfdJoinedTest, AddedCsvOnlyForReportsFlaggedOne)
{
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint_addCSV(3, u"主"_s, {QString(), u"m1.csv"_s, u"m2.csv"_s, u"m3.csv"_s}, u"副"_s,
                      {QString(), u"s1.csv"_s, u"s2.csv"_s, u"s3.csv"_s},
                      {QString(), u"A.wfd"_s, u"B.wfd"_s, u"C.wfd"_s}, {0, 1, -1, 0}, u"t"_s);
    EXPECT_EQ(recorder.runs(), joinRuns());
    ASSERT_EQ(recorder.scriptAtStart.size(), 2);
    EXPECT_EQ(recorder.scriptAtStart[0],
              crlf({u"setTitle,\"t\""_s, dataLine(u"主"_s, u"m1.csv"_s), dataLine(u"副"_s, u"s1.csv"_s),
                    u"setreport,\"A.wfd\""_s, u"AddReport"_s, dataLine(u"主"_s, u"m2.csv"_s), u"setreport,\"B.wfd\""_s,
                    u"AddReport"_s, dataLine(u"主"_s, u"m3.csv"_s), u"setreport,\"C.wfd\""_s}));
}

TEST_F(WfdJoinedTest, ArraysShorterThanTheCountAreAFaultAndNothingStarts)
{
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint(3, u"d"_s, {QString(), u"1.csv"_s, u"2.csv"_s}, {QString(), u"A"_s, u"B"_s, u"C"_s}, u"t"_s);
    EXPECT_EQ(d.sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());

    d.sErrMsg.clear();
    d.addPrint_addCSV(1, u"d"_s, {QString(), u"1.csv"_s}, u"e"_s, {QString(), u"x.csv"_s}, {QString(), u"A"_s}, {0},
                      u"t"_s);
    EXPECT_EQ(d.sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
    EXPECT_TRUE(recorder.runs().isEmpty());
}

TEST_F(WfdJoinedTest, JoiningProgramThatWillNotStartStopsTheJob)
{
    recorder.setStartFails(true);
    cls_WfdPrintExe d;
    d.iInit(u"unused.wfd"_s, QString());
    d.addPrint(1, u"d"_s, {QString(), u"1.csv"_s}, {QString(), u"A.wfd"_s}, u"t"_s);
    EXPECT_EQ(d.sErrMsg, u"(53)ファイルが見つかりません。"_s);
    EXPECT_EQ(recorder.runs(), QStringList{joinRuns().first()});
    EXPECT_TRUE(script().startsWith("setTitle"));
}

}  // namespace

// The engine's programs run as the program starts them: headless export, the PDF beside
// the script, the joined print, and a clear message with a non-zero exit for bad input.

#include "engine/viewer_app.h"

#include "app/program_start.h"

#include "support/engine_job.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <gtest/gtest.h>

using namespace sealtest;

namespace {

QString program(const QString& name) { return QStringLiteral(SEAL_BINARY_DIR "/src/main/") + name; }

struct ProgramRun {
    int code = -1;
    QString out;
    QString err;
};

ProgramRun runProgram(const QString& name, const QStringList& args)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    env.remove("WAYLAND_DISPLAY");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("LC_ALL", "C.UTF-8");
    p.setProcessEnvironment(env);
    p.start(program(name), args);
    if (!p.waitForFinished(60000)) return {};
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

class ViewerProgram : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFileInfo::exists(program("wfrfv10"))) GTEST_SKIP() << "wfrfv10 is not built";
    }
    // A joined print's script: the forms, each over the one data file.
    QString joinScript(const QString& name, const QString& csv, const QStringList& forms)
    {
        QStringList lines{"setTitle,\"まとめ\""};
        for (const QString& form : forms) {
            if (lines.size() > 1) lines.append("AddReport");
            lines << QStringLiteral("SetDataText,\"シール\",\"%1\",\",\", \"\"\"\", True").arg(csv)
                  << QStringLiteral("setreport,\"%1\"").arg(formPath(form));
        }
        return jobs.write(name, lines);
    }
    // The viewer's script of a joined print, over the joiner's form.
    QString viewerScript()
    {
        return jobs.write(
            "WfdCom.dat",
            {"Title,\"まとめ\"", QStringLiteral("FileName,\"%1\"").arg(jobs.path("tmp.wfd")), "PrintOutFromDialog"});
    }
    JobFolder jobs;
};

TEST_F(ViewerProgram, ExportsPdfAndPngPages)
{
    const QString s = jobs.script("シール.wfd", jobs.labels(12));
    const ProgramRun r = runProgram("wfrfv10", {"/c", s, "--pdf", jobs.path("out.pdf"), "--png", jobs.path("png")});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_GT(QFileInfo(jobs.path("out.pdf")).size(), 1000);
    EXPECT_TRUE(QFileInfo::exists(jobs.path("png/page-001.png")));
    EXPECT_TRUE(QFileInfo::exists(jobs.path("png/page-002.png")));
    EXPECT_FALSE(QFileInfo::exists(jobs.path("png/page-003.png")));
}

TEST_F(ViewerProgram, WithoutADisplayThePdfGoesBesideTheScript)
{
    const QString s = jobs.script("封筒印刷長3.wfd", jobs.labels(2));
    for (const char* prog : {"wfrfv10", "WrVb6Viewer", "wfrfv10.exe"}) {
        QFile::remove(jobs.path("シール.pdf"));
        const ProgramRun r = runProgram(QString::fromUtf8(prog), {"/c", s});
        EXPECT_EQ(r.code, 0) << prog << r.err.toStdString();
        EXPECT_TRUE(QFileInfo::exists(jobs.path("シール.pdf"))) << prog;
        EXPECT_TRUE(r.out.contains(QStringLiteral("シール.pdf"))) << r.out.toStdString();
    }
}

TEST_F(ViewerProgram, JoinedPrintRunsThroughTheJoinerAndTheViewer)
{
    const QString joined = joinScript("WfdCom.dat", jobs.labels(3), {"シール.wfd", "封筒印刷長3.wfd"});
    const ProgramRun j = runProgram("wfrimg10", {jobs.path("tmp.wfd"), "/c", joined});
    ASSERT_EQ(j.code, 0) << j.err.toStdString();
    viewerScript();
    const ProgramRun v = runProgram("wfrfv10", {"/c", joined, "--png", jobs.path("png")});
    EXPECT_EQ(v.code, 0) << v.err.toStdString();
    // One label sheet, then three envelopes.
    EXPECT_TRUE(QFileInfo::exists(jobs.path("png/page-004.png")));
    EXPECT_FALSE(QFileInfo::exists(jobs.path("png/page-005.png")));
}

// The program starts the joiner and the viewer at once; the viewer may come first.
TEST_F(ViewerProgram, ViewerWaitsForTheJoinersForm)
{
    const QString joined = joinScript("join.dat", jobs.labels(3), {"シール.wfd"});
    const QString viewer = viewerScript();
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    p.setProcessEnvironment(env);
    p.start(program("wfrfv10"), {"/c", viewer, "--pdf", jobs.path("j.pdf")});
    ASSERT_TRUE(p.waitForStarted());
    EXPECT_FALSE(p.waitForFinished(700)) << "the viewer gave up before the joiner ran";
    EXPECT_EQ(runProgram("wfrimg10", {jobs.path("tmp.wfd"), "/c", joined}).code, 0);
    ASSERT_TRUE(p.waitForFinished(30000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    EXPECT_TRUE(QFileInfo::exists(jobs.path("j.pdf")));
}

TEST_F(ViewerProgram, JoinerThatFindsTheScriptAlreadyReplacedSaysSo)
{
    const QString s = jobs.write("WfdCom.dat", {"Title,\"まとめ\"", "FileName,\"tmp.wfd\"", "PrintOutFromDialog"});
    const ProgramRun r = runProgram("wfrimg10", {jobs.path("tmp.wfd"), "/c", s});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains("setreport")) << r.err.toStdString();
}

// One fault of each stage of reading a job; the faults of each stage are told apart by
// the in-process tests, the program reports them all alike.
struct FaultCase {
    const char* name;
    const char* fileInMessage;  // file name the message must name
    const char* linePart;       // "(N行目)" where the line is known, else ""
};
class ViewerFault : public ViewerProgram, public ::testing::WithParamInterface<FaultCase> {
protected:
    // Builds the faulty job; returns the script to run.
    QString prepare(const std::string& name)
    {
        const QString goodCsv = jobs.labels(1);
        if (name == "MissingScript") return jobs.path("WfdCom.dat");
        if (name == "UnknownLineKind") return jobs.script("シール.wfd", goodCsv, {"PrintColour, 1"});
        if (name == "MalformedForm") {
            putBytes(jobs.path("壊れた.wfd"),
                     "{\n\"format\": \"sealprint-form/1\",\n\"paper\": {\"size\": \"A4\"},,\n}\n");
            return jobs.script(jobs.path("壊れた.wfd"), goodCsv);
        }
        if (name == "NotCp932") putBytes(goodCsv, crlf({kLabelTitle, labelLine({})}) + "1,\"\x82\"\r\n");
        if (name == "OnlyBlankLines") jobs.write("シール.csv", {kLabelTitle, kBlankLine});
        return jobs.script("シール.wfd", goodCsv);
    }
};

TEST_P(ViewerFault, SaysWhichFileAndLineAndFails)
{
    const QString s = prepare(GetParam().name);
    for (const QStringList& extra : {QStringList{}, QStringList{"--pdf", jobs.path("x.pdf")}}) {
        const ProgramRun r = runProgram("wfrfv10", QStringList{"/c", s} + extra);
        EXPECT_EQ(r.code, 1) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QString::fromUtf8(GetParam().fileInMessage))) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QString::fromUtf8(GetParam().linePart))) << r.err.toStdString();
        EXPECT_FALSE(QFileInfo::exists(jobs.path("x.pdf")));
        EXPECT_FALSE(QFileInfo::exists(jobs.path("シール.pdf")));
    }
}
INSTANTIATE_TEST_SUITE_P(Faults, ViewerFault,
                         ::testing::Values(FaultCase{"MissingScript", "WfdCom.dat", "見つかりません"},
                                           FaultCase{"UnknownLineKind", "PrintColour", "(4行目)"},
                                           FaultCase{"MalformedForm", "壊れた.wfd", "(3行目)"},
                                           FaultCase{"NotCp932", "シール.csv", "(3行目)"},
                                           FaultCase{"OnlyBlankLines", "シール.csv", "印刷するデータがありません"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ViewerProgram, TenThousandLabelsMakeAThousandPages)
{
    QStringList lines{kLabelTitle};
    for (int i = 0; i < 10000; ++i) {
        Label l;
        l.id = QString::number(i + 1);
        l.name = QStringLiteral("利用者%1 様").arg(i);
        lines.append(labelLine(l));
    }
    const QString s = jobs.script("シール.wfd", jobs.write("シール.csv", lines));
    const ProgramRun r = runProgram("wfrfv10", {"/c", s, "--pdf", jobs.path("big.pdf")});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(fileBytes(jobs.path("big.pdf")).contains("/Count 1000"));
}

TEST(ViewerArgs, CommandLineForms)
{
    QString err;
    auto a = engine::parseViewerArgs({"/c", "C:\\TMP\\WfdCom.dat"}, &err);
    ASSERT_TRUE(a);
    EXPECT_EQ(a->script, "C:\\TMP\\WfdCom.dat");
    a = engine::parseViewerArgs({"/C", "./TMP\\WfdCom.dat", "--png", "out"}, &err);
    ASSERT_TRUE(a);
    EXPECT_EQ(a->png, "out");
    EXPECT_FALSE(engine::parseViewerArgs({}, &err));
    EXPECT_FALSE(engine::parseViewerArgs({"/c"}, &err));
    EXPECT_FALSE(engine::parseViewerArgs({"/c", "a", "--colour"}, &err));
    EXPECT_TRUE(err.contains("--colour"));
    auto j = engine::parseJoinArgs({"C:\\TMP\\tmp.wfd", "/c", "C:\\TMP\\WfdCom.dat"}, &err);
    ASSERT_TRUE(j);
    EXPECT_EQ(j->output, "C:\\TMP\\tmp.wfd");
    EXPECT_FALSE(engine::parseJoinArgs({"/c", "x"}, &err));
}

TEST(ViewerArgs, AnUnquotedScriptPathWithBlanksIsTakenWhole)
{
    QString err;
    auto a =
        engine::parseViewerArgs({"/c", "C:\\Program", "Files\\訪問 鍼灸\\TMP\\WfdCom.dat", "--pdf", "out.pdf"}, &err);
    ASSERT_TRUE(a) << err.toStdString();
    EXPECT_EQ(a->script, "C:\\Program Files\\訪問 鍼灸\\TMP\\WfdCom.dat");
    EXPECT_EQ(a->pdf, "out.pdf");
    // Quoted, the path is one word already.
    a = engine::parseViewerArgs({"/c", "C:\\Program Files\\TMP\\WfdCom.dat"}, &err);
    ASSERT_TRUE(a);
    EXPECT_EQ(a->script, "C:\\Program Files\\TMP\\WfdCom.dat");
    // An option right after "/c" is no path.
    EXPECT_FALSE(engine::parseViewerArgs({"/c", "--pdf", "x.pdf"}, &err));
    EXPECT_FALSE(engine::parseViewerArgs({"/c", "a", "--pdf"}, &err));

    auto j = engine::parseJoinArgs(
        {"C:\\Program", "Files\\TMP\\tmp.wfd", "/c", "C:\\Program", "Files\\TMP\\WfdCom.dat"}, &err);
    ASSERT_TRUE(j);
    EXPECT_EQ(j->output, "C:\\Program Files\\TMP\\tmp.wfd");
    EXPECT_EQ(j->script, "C:\\Program Files\\TMP\\WfdCom.dat");
    EXPECT_FALSE(engine::parseJoinArgs({"out.wfd", "/c"}, &err));
}

// Both sides together: the command line the program writes for a folder with a blank
// and Japanese characters, split as the program splits it, reaches the engine whole.
TEST_F(ViewerProgram, RunsAScriptInAFolderWithABlankStartedTheProgramsWay)
{
    const QString tmp = jobs.path("訪問 鍼灸/TMP");
    ASSERT_TRUE(QDir().mkpath(tmp));
    const QString csv = jobs.write("訪問 鍼灸/TMP/シール.csv", {kLabelTitle, labelLine({})});
    jobs.write("訪問 鍼灸/TMP/WfdCom.dat", scriptLines(formPath("シール.wfd"), csv));
    const app::ProgramCommand cmd = app::parseCommandLine("wfrfv10.exe /c " + tmp + "/WfdCom.dat");
    ASSERT_GT(cmd.arguments.size(), 2);  // the blank splits the path
    const ProgramRun r = runProgram("wfrfv10", cmd.arguments);
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_GT(QFileInfo(tmp + "/シール.pdf").size(), 0) << r.out.toStdString();
}

TEST_F(ViewerProgram, UnwritablePdfIsAnOutputFailure)
{
    const QString s = jobs.script("シール.wfd", jobs.labels(1));
    const ProgramRun r = runProgram("wfrfv10", {"/c", s, "--pdf", jobs.path("no/such/folder/x.pdf")});
    EXPECT_EQ(r.code, 3);
    EXPECT_TRUE(r.err.contains("x.pdf")) << r.err.toStdString();
}

TEST_F(ViewerProgram, BadCommandLineExitsWithTwo)
{
    const ProgramRun r = runProgram("wfrfv10", {"--png"});
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(r.err.isEmpty());
}

}  // namespace

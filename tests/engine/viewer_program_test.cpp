// The engine's programs run as the program starts them: headless export, the PDF beside
// the script, the joined print, and a clear message with a non-zero exit for bad input.

#include "engine/viewer_app.h"

#include "app/program_start.h"

#include "engine_test_support.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>
#include <gtest/gtest.h>

using enginetest::Label;

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
    QString write(const QString& name, const QStringList& lines)
    {
        const QString path = dir.filePath(name);
        enginetest::writeCp932(path, lines);
        return path;
    }
    QString labels(int n)
    {
        QStringList lines{enginetest::kLabelTitle};
        for (int i = 0; i < n; ++i) lines.append(enginetest::labelLine({}));
        return write("シール.csv", lines);
    }
    QString script(const QString& form, const QString& csv, const QStringList& extra = {})
    {
        return write("WfdCom.dat", enginetest::scriptLines(enginetest::formPath(form), csv, extra));
    }
    QTemporaryDir dir;
};

TEST_F(ViewerProgram, ExportsPdfAndPngPages)
{
    const QString s = script("シール.wfd", labels(12));
    const ProgramRun r =
        runProgram("wfrfv10", {"/c", s, "--pdf", dir.filePath("out.pdf"), "--png", dir.filePath("png")});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_GT(QFileInfo(dir.filePath("out.pdf")).size(), 1000);
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("png/page-001.png")));
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("png/page-002.png")));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("png/page-003.png")));
}

TEST_F(ViewerProgram, WithoutADisplayThePdfGoesBesideTheScript)
{
    const QString s = script("封筒印刷長3.wfd", labels(2));
    for (const char* prog : {"wfrfv10", "WrVb6Viewer", "wfrfv10.exe"}) {
        QFile::remove(dir.filePath("シール.pdf"));
        const ProgramRun r = runProgram(QString::fromUtf8(prog), {"/c", s});
        EXPECT_EQ(r.code, 0) << prog << r.err.toStdString();
        EXPECT_TRUE(QFileInfo::exists(dir.filePath("シール.pdf"))) << prog;
        EXPECT_TRUE(r.out.contains(QStringLiteral("シール.pdf"))) << r.out.toStdString();
    }
}

TEST_F(ViewerProgram, JoinedPrintRunsThroughTheJoinerAndTheViewer)
{
    const QString csv = labels(3);
    const QString joined =
        write("WfdCom.dat",
              {"setTitle,\"まとめ\"", QStringLiteral("SetDataText,\"シール\",\"%1\",\",\", \"\"\"\", True").arg(csv),
               QStringLiteral("setreport,\"%1\"").arg(enginetest::formPath("シール.wfd")), "AddReport",
               QStringLiteral("SetDataText,\"封筒\",\"%1\",\",\", \"\"\"\", True").arg(csv),
               QStringLiteral("setreport,\"%1\"").arg(enginetest::formPath("封筒印刷長3.wfd"))});
    const QString tmpWfd = dir.filePath("tmp.wfd");
    const ProgramRun j = runProgram("wfrimg10", {tmpWfd, "/c", joined});
    ASSERT_EQ(j.code, 0) << j.err.toStdString();
    write("WfdCom.dat", {"Title,\"まとめ\"", QStringLiteral("FileName,\"%1\"").arg(tmpWfd), "PrintOutFromDialog"});
    const ProgramRun v = runProgram("wfrfv10", {"/c", joined, "--png", dir.filePath("png")});
    EXPECT_EQ(v.code, 0) << v.err.toStdString();
    // One label sheet, then three envelopes.
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("png/page-004.png")));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("png/page-005.png")));
}

// The program starts the joiner and the viewer at once; the viewer may come first.
TEST_F(ViewerProgram, ViewerWaitsForTheJoinersForm)
{
    const QString csv = labels(3);
    const QString joined =
        write("join.dat",
              {"setTitle,\"まとめ\"", QStringLiteral("SetDataText,\"シール\",\"%1\",\",\", \"\"\"\", True").arg(csv),
               QStringLiteral("setreport,\"%1\"").arg(enginetest::formPath("シール.wfd"))});
    const QString tmpWfd = dir.filePath("tmp.wfd");
    const QString viewer =
        write("WfdCom.dat", {"Title,\"まとめ\"", QStringLiteral("FileName,\"%1\"").arg(tmpWfd), "PrintOutFromDialog"});
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    p.setProcessEnvironment(env);
    p.start(program("wfrfv10"), {"/c", viewer, "--pdf", dir.filePath("j.pdf")});
    ASSERT_TRUE(p.waitForStarted());
    QThread::msleep(700);
    EXPECT_EQ(runProgram("wfrimg10", {tmpWfd, "/c", joined}).code, 0);
    ASSERT_TRUE(p.waitForFinished(30000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("j.pdf")));
}

TEST_F(ViewerProgram, JoinerThatFindsTheScriptAlreadyReplacedSaysSo)
{
    const QString s = write("WfdCom.dat", {"Title,\"まとめ\"", "FileName,\"tmp.wfd\"", "PrintOutFromDialog"});
    const ProgramRun r = runProgram("wfrimg10", {dir.filePath("tmp.wfd"), "/c", s});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.err.contains("setreport")) << r.err.toStdString();
}

struct FaultCase {
    const char* name;
    int code;
    const char* fileInMessage;  // file name the message must name
    const char* linePart;       // "(N行目)" where the line is known, else ""
};
class ViewerFault : public ViewerProgram, public ::testing::WithParamInterface<FaultCase> {
protected:
    // Builds the faulty job; returns the script to run.
    QString prepare(const std::string& name)
    {
        const QString goodCsv = labels(1);
        if (name == "MissingScript") return dir.filePath("WfdCom.dat");
        if (name == "MissingForm") return script("無い.wfd", goodCsv);
        if (name == "MissingData") return script("シール.wfd", dir.filePath("無い.csv"));
        if (name == "UnknownLineKind") return script("シール.wfd", goodCsv, {"PrintColour, 1"});
        if (name == "MalformedForm") {
            QFile f(dir.filePath("壊れた.wfd"));
            f.open(QIODevice::WriteOnly);
            f.write("{\n\"format\": \"sealprint-form/1\",\n\"paper\": {\"size\": \"A4\"},,\n}\n");
            f.close();
            return write("WfdCom.dat", enginetest::scriptLines(dir.filePath("壊れた.wfd"), goodCsv));
        }
        if (name == "TitlesDoNotMatch") {
            const QString csv = write("シール.csv", {"a,b,c", "1,\"x\",\"y\""});
            return script("シール.wfd", csv);
        }
        if (name == "NotCp932") {
            QFile f(dir.filePath("シール.csv"));
            f.open(QIODevice::WriteOnly);
            f.write(base::toCp932(enginetest::kLabelTitle) + "\r\n" + base::toCp932(enginetest::labelLine({})) +
                    "\r\n1,\"\x82\"\r\n");
            f.close();
            return script("シール.wfd", f.fileName());
        }
        if (name == "EmptyCsv") {
            QFile f(dir.filePath("シール.csv"));
            f.open(QIODevice::WriteOnly);
            f.close();
            return script("シール.wfd", f.fileName());
        }
        if (name == "RepeatStartAtTheIntegerLimit")
            return script("シール.wfd", goodCsv, {"SectionRepeatStart, 2147483647"});
        if (name == "UnterminatedQuote") {
            // Cut short inside the third line's address.
            QFile f(dir.filePath("シール.csv"));
            f.open(QIODevice::WriteOnly);
            f.write(base::toCp932(enginetest::kLabelTitle + "\r\n" + enginetest::labelLine({}) +
                                  "\r\n2,\"佐藤 様\",\"東京都新宿"));
            f.close();
            return script("シール.wfd", f.fileName());
        }
        if (name == "OnlyBlankLines") {
            return script("シール.wfd", write("シール.csv", {enginetest::kLabelTitle, enginetest::kBlankLine}));
        }
        return QString();
    }
};

TEST_P(ViewerFault, SaysWhichFileAndLineAndFails)
{
    const QString s = prepare(GetParam().name);
    for (const QStringList& extra : {QStringList{}, QStringList{"--pdf", dir.filePath("x.pdf")}}) {
        const ProgramRun r = runProgram("wfrfv10", QStringList{"/c", s} + extra);
        EXPECT_EQ(r.code, GetParam().code) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QString::fromUtf8(GetParam().fileInMessage))) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QString::fromUtf8(GetParam().linePart))) << r.err.toStdString();
        EXPECT_FALSE(QFileInfo::exists(dir.filePath("x.pdf")));
        EXPECT_FALSE(QFileInfo::exists(dir.filePath("シール.pdf")));
    }
}
INSTANTIATE_TEST_SUITE_P(Faults, ViewerFault,
                         ::testing::Values(FaultCase{"MissingScript", 1, "WfdCom.dat", "見つかりません"},
                                           FaultCase{"MissingForm", 1, "無い.wfd", "(1行目)"},
                                           FaultCase{"MissingData", 1, "無い.csv", "(3行目)"},
                                           FaultCase{"UnknownLineKind", 1, "PrintColour", "(4行目)"},
                                           FaultCase{"MalformedForm", 1, "壊れた.wfd", "(3行目)"},
                                           FaultCase{"TitlesDoNotMatch", 1, "シール.csv", "(1行目)"},
                                           FaultCase{"NotCp932", 1, "シール.csv", "(3行目)"},
                                           FaultCase{"EmptyCsv", 1, "シール.csv", "空"},
                                           FaultCase{"OnlyBlankLines", 1, "シール.csv", "印刷するデータがありません"},
                                           FaultCase{"RepeatStartAtTheIntegerLimit", 1, "WfdCom.dat", "(4行目)"},
                                           FaultCase{"UnterminatedQuote", 1, "シール.csv", "(3行目)"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ViewerProgram, TenThousandLabelsMakeAThousandPages)
{
    QStringList lines{enginetest::kLabelTitle};
    for (int i = 0; i < 10000; ++i) {
        Label l;
        l.id = QString::number(i + 1);
        l.name = QStringLiteral("利用者%1 様").arg(i);
        lines.append(enginetest::labelLine(l));
    }
    const QString s = script("シール.wfd", write("シール.csv", lines));
    const ProgramRun r = runProgram("wfrfv10", {"/c", s, "--pdf", dir.filePath("big.pdf")});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    QFile f(dir.filePath("big.pdf"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray pdf = f.readAll();
    EXPECT_TRUE(pdf.contains("/Count 1000"));
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
    const QString tmp = dir.filePath("訪問 鍼灸/TMP");
    ASSERT_TRUE(QDir().mkpath(tmp));
    const QString csv = tmp + "/シール.csv";
    enginetest::writeCp932(csv, {enginetest::kLabelTitle, enginetest::labelLine({})});
    enginetest::writeCp932(tmp + "/WfdCom.dat", enginetest::scriptLines(enginetest::formPath("シール.wfd"), csv, {}));
    const app::ProgramCommand cmd = app::parseCommandLine("wfrfv10.exe /c " + tmp + "/WfdCom.dat");
    ASSERT_GT(cmd.arguments.size(), 2);  // the blank splits the path
    const ProgramRun r = runProgram("wfrfv10", cmd.arguments);
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_GT(QFileInfo(tmp + "/シール.pdf").size(), 0) << r.out.toStdString();
}

TEST_F(ViewerProgram, UnwritablePdfIsAnOutputFailure)
{
    const QString s = script("シール.wfd", labels(1));
    const ProgramRun r = runProgram("wfrfv10", {"/c", s, "--pdf", dir.filePath("no/such/folder/x.pdf")});
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

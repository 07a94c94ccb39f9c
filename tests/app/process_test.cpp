// The start of the process as the scenario runner records it: the background window,
// the run mode, and the failures that end the process before any screen of work.

#include "app/globals.h"
#include "app/process.h"
#include "app/scenario_runner.h"
#include "base/text_codec.h"
#include "controls/recording_platform.h"
#include "support/files.h"
#include "support/globals_scope.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace app;

namespace {

// A screen that records the run mode it was opened in, standing in for the seal screen.
class ProbeScreen : public controls::Screen {
public:
    explicit ProbeScreen(controls::Platform& p) : Screen(QStringLiteral("frmProbe"), p) {}
    static inline short seenMode = -1;

protected:
    void Form_Load() override { seenMode = gnRunMode; }
};

class ProcessStartTest : public ::testing::Test {
protected:
    void writeSettings(const QByteArray& utf8)
    {
        sealtest::putBytes(dir.filePath(QStringLiteral("Tavrine.ini")), base::toCp932(QString::fromUtf8(utf8)));
    }

    QStringList run(const QString& script, int* rc = nullptr)
    {
        QStringList out, err;
        ScenarioRunner runner(script.split(u'\n'), dir.path(),
                              [](controls::Platform& p) { return std::make_unique<ProbeScreen>(p); });
        const int code = runner.run([&](const QString& l) { out << l; }, [&](const QString& l) { err << l; });
        if (rc) *rc = code;
        if (code != 0) out << err;
        return out;
    }

    QTemporaryDir dir;
    sealtest::GlobalsScope globals;  // the start sets the run mode, the office and the platform
    const QByteArray goodSettings = "[SYSTEM]\r\nSYSTEM_ICON=\\ICON\r\nWALLPAPER=wall.png\r\nBASEID=0102\r\n";
};

}  // namespace

TEST_F(ProcessStartTest, AnEmptyCommandLineShowsTwoBoxesAndEnds)
{
    writeSettings(goodSettings);
    EXPECT_EQ(run(QStringLiteral("today 2026/11/21\nstart")),
              (QStringList{QStringLiteral("screen open frmBack"),
                           QStringLiteral("box 48 　エラー！！|処理モードが設定されていません。"),
                           QStringLiteral("box 16 　エラー！！|起動できません！"), QStringLiteral("end 0")}));
}

TEST_F(ProcessStartTest, AMissingSettingsFileEndsTheProcessAtTheFirstRead)
{
    EXPECT_EQ(
        run(QStringLiteral("start 1")),
        (QStringList{QStringLiteral("screen open frmBack"),
                     QStringLiteral("box 16 警告！|システム設定ファイルが見つかりません。"), QStringLiteral("end 0")}));
}

TEST_F(ProcessStartTest, TheRunModeIsTheLeadingNumberTruncated)
{
    writeSettings(goodSettings);
    const std::pair<QString, short> cases[] = {{QStringLiteral("1000.9"), 1000},
                                               {QStringLiteral("abc"), 0},
                                               {QStringLiteral("5abc"), 5},
                                               {QStringLiteral("7"), 7}};
    for (const auto& [arg, mode] : cases) {
        const QStringList t = run(QStringLiteral("start ") + arg);
        EXPECT_EQ(ProbeScreen::seenMode, mode) << arg.toStdString();
        EXPECT_EQ(t, (QStringList{QStringLiteral("screen open frmBack"), QStringLiteral("screen open frmProbe"),
                                  QStringLiteral("screen close frmProbe"), QStringLiteral("end 0")}));
    }
    EXPECT_EQ(iKyotenCd, 1);
    EXPECT_EQ(iKyotenEb, 2);
    EXPECT_EQ(QDir(gsAppPath).canonicalPath(), QDir(dir.path()).canonicalPath());
}

TEST_F(ProcessStartTest, ABlankBeforeTheSiteDigitsShiftsThem)
{
    writeSettings("SYSTEM_ICON=\\ICON\r\nWALLPAPER=w.png\r\nBASEID= 0102\r\n");
    run(QStringLiteral("start 1"));
    EXPECT_EQ(iKyotenCd, 0);   // " 0"
    EXPECT_EQ(iKyotenEb, 10);  // "10"
}

TEST_F(ProcessStartTest, AMissingWallpaperKeyWarnsAndAMissingPictureIsSilent)
{
    writeSettings("SYSTEM_ICON=\\ICON\r\nBASEID=0101\r\n");
    QStringList t = run(QStringLiteral("start 1"));
    EXPECT_EQ(t.at(1),
              QStringLiteral("box 16 警告！|システム設定ファイルに、指定の項目が見つかりません。\\r[WALLPAPER]"));
    EXPECT_EQ(t.last(), QStringLiteral("end 0"));

    writeSettings(goodSettings);  // names a picture that does not exist
    t = run(QStringLiteral("start 1"));
    EXPECT_FALSE(t.join(u'\n').contains(QStringLiteral("box")));
}

TEST_F(ProcessStartTest, ABadSiteKeyIsTheSystemsReportAndEndsTheProcess)
{
    for (const QByteArray& line : {QByteArray("BASEID=01x1\r\n"), QByteArray("OTHER=1\r\n")}) {
        writeSettings("SYSTEM_ICON=\\ICON\r\nWALLPAPER=w.png\r\n" + line);
        const QStringList t = run(QStringLiteral("start 1"));
        EXPECT_EQ(t.at(1), QStringLiteral("box 16 |実行時エラー '13':\\r\\n\\r\\n型が一致しません。"))
            << line.constData();
        EXPECT_EQ(t.last(), QStringLiteral("end 1"));
    }
}

TEST_F(ProcessStartTest, ARunModeBeyondSixteenBitsIsAnOverflow)
{
    writeSettings(goodSettings);
    const QStringList t = run(QStringLiteral("start 40000"));
    EXPECT_EQ(t.at(1), QStringLiteral("box 16 |実行時エラー '6':\\r\\n\\r\\nオーバーフローしました。"));
}

TEST_F(ProcessStartTest, AWrongScriptIsReportedWithItsLine)
{
    writeSettings(goodSettings);
    int rc = 0;
    QStringList t = run(QStringLiteral("start 1\nclick btnNothing"), &rc);
    EXPECT_EQ(rc, 2);
    EXPECT_EQ(t.last(), QStringLiteral("script line 2: frmProbe has no control btnNothing"));
    run(QStringLiteral("# no start here"), &rc);
    EXPECT_EQ(rc, 2);
}

TEST(ProcessValues, ThePlatformAskedForBeforeTheStartSetsItIsAFaultInEveryBuild)
{
    sealtest::GlobalsScope globals;
    setPlatform(nullptr);
    EXPECT_THROW(platform(), std::logic_error);
}

TEST(ProcessValues, ATestsScopePutsBackEveryValueAndThePlatform)
{
    controls::RecordingPlatform outer;
    controls::RecordingPlatform inner;
    sealtest::GlobalsScope outside(outer);
    gsAppPath = QStringLiteral("/before");
    iKyotenCd = 1;
    gnRunMode = 5;
    gsLastError.clear();
    {
        sealtest::GlobalsScope scope(inner);
        gsAppPath = QStringLiteral("/inside");
        iKyotenCd = 9;
        gnRunMode = 1000;
        gsLastError = QStringLiteral("x");
        EXPECT_EQ(&platform(), &inner);
    }
    EXPECT_EQ(gsAppPath, QStringLiteral("/before"));
    EXPECT_EQ(iKyotenCd, 1);
    EXPECT_EQ(gnRunMode, 5);
    EXPECT_EQ(gsLastError, QString());
    EXPECT_EQ(&platform(), &outer);
}

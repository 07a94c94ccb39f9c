// The system settings file: how a key is found, what a missing file or key shows,
// the folders composed from it, and the report form lookup.

#include "app/system_settings.h"

#include "support/files.h"
#include "support/globals_scope.h"
#include "support/printers.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "controls/recording_platform.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace {

class SystemSettings : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        app::gsAppPath = dir.path();
        app::setPlatform(&platform);
    }

    void writeFile(const QString& relative, const QByteArray& bytes)
    {
        const QString path = dir.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        sealtest::putBytes(path, bytes);
    }

    void writeSettings(const QString& text) { writeFile(QStringLiteral("Tavrine.ini"), base::toCp932(text)); }

    QTemporaryDir dir;
    controls::RecordingPlatform platform;
    sealtest::GlobalsScope globals;
};

QString boxLine(const QString& text) { return QStringLiteral("box 16 警告！|") + text; }

// A settings file as the suite keeps it, with the oddities a hand-edited file has.
const QString kSettings = QStringLiteral("[SYSTEM]\r\n"
                                         "; パスの設定\r\n"
                                         "SYSTEM_SYS=\\SYS\r\n"
                                         "SYSTEM_TMP=\\TMP\r\n"
                                         "SYSTEM_ICON=\\ICON\r\n"
                                         "SYSTEM_DATA=\\DATA\r\n"
                                         "WALLPAPER=wall.bmp\r\n"
                                         "  BASEID  =0102\r\n"
                                         "和タイプ= 5 和暦\r\n"
                                         "コメント行には等号がない\r\n"
                                         "紹介者=0\r\n"
                                         "=値だけの行\r\n"
                                         "紹介者=1\r\n"
                                         "URL=http://example.jp/?a=1&b=2\r\n"
                                         "Lower=small\r\n"
                                         "\tTAB=tabbed\r\n"
                                         "[OTHER]\r\n"
                                         "同意記録1出力=1\r\n");

struct KeyCase {
    const char* name;
    QString key;
    std::optional<QString> expected;
};

class SettingsKey : public SystemSettings, public ::testing::WithParamInterface<KeyCase> {};

TEST_P(SettingsKey, FirstLineWhoseTrimmedKeyMatchesGivesTheRestOfTheLine)
{
    writeSettings(kSettings);
    EXPECT_EQ(app::csGetSystemSetting(GetParam().key, false), GetParam().expected);
    EXPECT_TRUE(platform.transcript().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Lines, SettingsKey,
    ::testing::Values(KeyCase{"plain", "WALLPAPER", QStringLiteral("wall.bmp")},
                      KeyCase{"blanksAroundTheKeyInTheFile", "BASEID", QStringLiteral("0102")},
                      KeyCase{"valueKeepsItsBlanks", "和タイプ", QStringLiteral(" 5 和暦")},
                      KeyCase{"firstOfTwoWins", "紹介者", QStringLiteral("0")},
                      KeyCase{"onlyTheFirstEqualsSplits", "URL", QStringLiteral("http://example.jp/?a=1&b=2")},
                      KeyCase{"sectionHeadersAreOrdinaryLines", "同意記録1出力", QStringLiteral("1")},
                      KeyCase{"emptyKeyMatchesALineStartingWithEquals", "", QStringLiteral("値だけの行")},
                      KeyCase{"caseMatters", "LOWER", std::nullopt}, KeyCase{"tabsAreNotBlanks", "TAB", std::nullopt},
                      KeyCase{"aLineWithoutEqualsIsSkipped", "コメント行には等号がない", std::nullopt},
                      KeyCase{"absent", "同意更新医師TEL出力", std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SystemSettings, ABlankBeforeTheSiteDigitsShiftsThem)
{
    writeSettings(QStringLiteral("BASEID= 0102\r\n"));
    const QString v = app::csGetSystemSetting(QStringLiteral("BASEID"), false).value_or(QString());
    EXPECT_EQ(v, QStringLiteral(" 0102"));
    EXPECT_EQ(base::CInt(base::Mid(v, 1, 2)), 0);   // the blank and "0"
    EXPECT_EQ(base::CInt(base::Mid(v, 3, 2)), 10);  // "10"
}

TEST_F(SystemSettings, TheStyleNumberTakesTheLeadingNumberOfItsValue)
{
    writeSettings(kSettings);
    const std::optional<QString> v = app::csGetSystemSetting(QStringLiteral("和タイプ"), false);
    EXPECT_EQ(base::CStr(base::Val(v.value_or(QString()))), QStringLiteral("5"));
}

TEST_F(SystemSettings, AMissingKeyWithoutWarningFailsANumberConversion)
{
    writeSettings(kSettings);
    const std::optional<QString> v = app::csGetSystemSetting(QStringLiteral("同意更新医師TEL出力"), false);
    ASSERT_FALSE(v.has_value());
    try {
        base::CInt(v.value_or(QString()));
        ADD_FAILURE() << "no fault raised";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), 13);
    }
}

TEST_F(SystemSettings, AMissingKeyWithWarningShowsTheKeyAndGivesEmptyText)
{
    writeSettings(kSettings);
    const std::optional<QString> v = app::csGetSystemSetting(QStringLiteral("NO_SUCH"), true);
    ASSERT_TRUE(v.has_value());
    EXPECT_EQ(*v, QString());
    EXPECT_EQ(platform.transcript(),
              QStringList{boxLine(QStringLiteral("システム設定ファイルに、指定の項目が見つかりません。\\r[NO_SUCH]"))});
}

TEST_F(SystemSettings, AMissingFileShowsTheBoxAndEndsTheProcess)
{
    bool ended = false;
    try {
        app::csGetSystemSetting(QStringLiteral("BASEID"), false);
    } catch (const controls::ProcessEnd& end) {
        ended = true;
        EXPECT_EQ(end.exitCode, 0);
    }
    EXPECT_TRUE(ended);
    EXPECT_EQ(platform.transcript(), QStringList{boxLine(QStringLiteral("システム設定ファイルが見つかりません。"))});
}

TEST_F(SystemSettings, AFolderNamedLikeTheFileIsNoSettingsFile)
{
    QDir(dir.path()).mkdir(QStringLiteral("Tavrine.ini"));
    EXPECT_THROW(app::csGetSystemSetting(QStringLiteral("BASEID"), true), controls::ProcessEnd);
    EXPECT_EQ(platform.transcript(), QStringList{boxLine(QStringLiteral("システム設定ファイルが見つかりません。"))});
}

TEST_F(SystemSettings, EveryCallReadsTheFileAgain)
{
    writeSettings(QStringLiteral("WALLPAPER=a.bmp\r\n"));
    EXPECT_EQ(app::csGetSystemSetting(QStringLiteral("WALLPAPER"), true), QStringLiteral("a.bmp"));
    writeSettings(QStringLiteral("WALLPAPER=b.bmp\r\n"));
    EXPECT_EQ(app::csGetSystemSetting(QStringLiteral("WALLPAPER"), true), QStringLiteral("b.bmp"));
}

TEST_F(SystemSettings, BadBytesOnOtherLinesDoNotStopTheRead)
{
    writeFile(QStringLiteral("Tavrine.ini"), QByteArray("NOTE=\xFF\x81\r\nBASEID=0305\r\n"));
    EXPECT_EQ(app::csGetSystemSetting(QStringLiteral("BASEID"), false), QStringLiteral("0305"));
    EXPECT_EQ(app::csGetSystemSetting(QStringLiteral("NOTE"), false), QString(QChar(0xFFFD)) + QChar(0xFFFD));
}

TEST_F(SystemSettings, FoldersAreTheProgramDirectoryPlusTheValuePlusABackslash)
{
    writeSettings(kSettings);
    const QString base = dir.path();
    EXPECT_EQ(app::csSystemSysPath(), base + QStringLiteral("\\SYS\\"));
    EXPECT_EQ(app::csSystemTmpPath(), base + QStringLiteral("\\TMP\\"));
    EXPECT_EQ(app::csSystemIconPath(), base + QStringLiteral("\\ICON\\"));
    EXPECT_EQ(app::csSystemDataPath(), base + QStringLiteral("\\DATA\\"));
    EXPECT_TRUE(platform.transcript().isEmpty());
}

TEST_F(SystemSettings, FolderValuesAreNotNormalised)
{
    writeSettings(QStringLiteral("SYSTEM_TMP=TMP\\\r\n"));
    EXPECT_EQ(app::csSystemTmpPath(), dir.path() + QStringLiteral("TMP\\\\"));
}

TEST_F(SystemSettings, AMissingFolderKeyIsWarnedAboutAndLeavesTheProgramDirectory)
{
    writeSettings(QStringLiteral("SYSTEM_SYS=\\SYS\r\n"));
    EXPECT_EQ(app::csSystemDataPath(), dir.path() + QStringLiteral("\\"));
    EXPECT_EQ(
        platform.transcript(),
        QStringList{boxLine(QStringLiteral("システム設定ファイルに、指定の項目が見つかりません。\\r[SYSTEM_DATA]"))});
}

TEST_F(SystemSettings, FormLookupReadsTheDataFolderFileCutAndRightTrimmed)
{
    writeSettings(kSettings);
    writeFile(QStringLiteral("DATA/帳票Format.ini"),
              base::toCp932(QStringLiteral("[同意書更新]\r\n同意書更新=同意台帳_TKZK.wfd   \r\n空=\r\n")));
    EXPECT_EQ(app::csFormatLookup(QStringLiteral("同意書更新"), QStringLiteral("同意書更新")),
              QStringLiteral("同意台帳_TKZK.wfd"));
    EXPECT_EQ(app::csFormatLookup(QStringLiteral("同意書更新"), QStringLiteral("空")), QString());
    EXPECT_EQ(app::csFormatLookup(QStringLiteral("同意書更新"), QStringLiteral("無い")), QString());
    EXPECT_EQ(app::csFormatLookup(QStringLiteral("無い"), QStringLiteral("同意書更新")), QString());
}

TEST_F(SystemSettings, FormLookupWithoutItsFileGivesEmptyTextQuietly)
{
    writeSettings(kSettings);
    EXPECT_EQ(app::csFormatLookup(QStringLiteral("同意書更新"), QStringLiteral("同意書更新")), QString());
    EXPECT_TRUE(platform.transcript().isEmpty());
}

}  // namespace

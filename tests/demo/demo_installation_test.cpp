// The demo installation's folder: its settings files byte for byte, its folders and
// picture, what a second run replaces and keeps, and the command line.

#include "base/text_codec.h"
#include "demo_installation.h"
#include "support/files.h"
#include "support/param_names.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using sealtest::crlf;
using sealtest::fileBytes;

class DemoSettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir_.isValid());
        demo::writeSettingsFiles(dir_.path());
    }
    QString path(const QString& name) const { return dir_.filePath(name); }

    QTemporaryDir dir_;
};

// The system settings name the first office and the folders, the connection points at
// the database beside the program, the report forms lie in the data folder.
TEST_F(DemoSettingsTest, SettingsFilesAreTheirLinesInCp932)
{
    const std::pair<const char*, QStringList> files[] = {
        {"Tavrine.ini",
         {QStringLiteral("SYSTEM_SYS=\\SYS"), QStringLiteral("SYSTEM_TMP=\\TMP"), QStringLiteral("SYSTEM_ICON=\\ICON"),
          QStringLiteral("SYSTEM_DATA=\\DATA"), QStringLiteral("WALLPAPER=wallpaper.png"),
          QStringLiteral("BASEID=0101"), QStringLiteral("和タイプ=1"), QStringLiteral("紹介者=1"),
          QStringLiteral("同意更新医師TEL出力=1"), QStringLiteral("同意記録1出力=1")}},
        {"adodb.ini",
         {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=Provider=SQLite;Data Source=DATA\\sealdemo.db")}},
        {"DATA/帳票Format.ini", {QStringLiteral("[同意書更新]"), QStringLiteral("同意書更新=同意台帳_TKZK.wfd")}},
        {"EmapUser.ini", {QStringLiteral("ZENRIN_USER=demo-office"), QStringLiteral("ZENRIN_PWD=demo-pass")}}};
    for (const auto& [name, lines] : files) EXPECT_EQ(fileBytes(path(QString::fromUtf8(name))), crlf(lines)) << name;
}

TEST_F(DemoSettingsTest, FoldersAndWallpaperExist)
{
    for (const char* folder : {"SYS", "TMP", "ICON", "DATA"})
        EXPECT_TRUE(QDir(path(QString::fromLatin1(folder))).exists()) << folder;
    const QImage picture(path(QStringLiteral("ICON/wallpaper.png")));
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.size(), QSize(1280, 800));
}

TEST_F(DemoSettingsTest, OnlyTheProgressReportMarkerIsWrittenAndItIsEmpty)
{
    EXPECT_EQ(fileBytes(path(QStringLiteral("MGNT.CID"))), QByteArray());
    for (const char* other : {"FRAS.CID", "SGRB.CID"})
        EXPECT_FALSE(QFile::exists(path(QString::fromLatin1(other)))) << other;
}

TEST_F(DemoSettingsTest, AnOfficeThatHasPrintedOnceHasItsSettingsVersionAndHelpAccount)
{
    const QByteArray saved = fileBytes(path(QStringLiteral("DATA/印刷設定.ini")));
    bool lossy = false;
    const QString text = base::fromCp932(saved, &lossy);
    EXPECT_FALSE(lossy);
    EXPECT_EQ(saved.count('\n'), saved.count("\r\n"));
    EXPECT_TRUE(saved.endsWith("\r\n"));
    EXPECT_TRUE(text.startsWith(QStringLiteral("[タックシール]\r\n"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Enter=1\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("[タックシール脚注]\r\n脚注数=5\r\n脚注1=療養費支給申請書在中\r\n")));
    const QString version = base::fromCp932(fileBytes(path(QStringLiteral("Velmio.Ver"))));
    EXPECT_TRUE(version.contains(QStringLiteral("VERSION=")));
    EXPECT_TRUE(version.contains(QStringLiteral("[OnlineHelp]\r\nADDRESS=http")));
}

TEST(DemoInstallationTest, ASecondRunReplacesItsOwnFilesAndKeepsOthers)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    demo::DemoOptions options;
    options.outDir = dir.filePath(QStringLiteral("install"));
    options.patients = 20;
    options.today = QDate(2026, 11, 21);
    demo::writeInstallation(options);

    const QString saved = options.outDir + QStringLiteral("/DATA/印刷設定.ini");
    const QString tavrine = options.outDir + QStringLiteral("/Tavrine.ini");
    sealtest::putBytes(saved, "[タックシール]\r\n");
    sealtest::putBytes(tavrine, fileBytes(tavrine) + "EXTRA=1\r\n");
    const QByteArray firstDb = fileBytes(options.outDir + QStringLiteral("/DATA/sealdemo.db"));

    options.patients = 30;
    demo::writeInstallation(options);
    EXPECT_EQ(fileBytes(saved), QByteArray("[タックシール]\r\n"));
    EXPECT_FALSE(fileBytes(tavrine).contains("EXTRA"));
    EXPECT_NE(fileBytes(options.outDir + QStringLiteral("/DATA/sealdemo.db")), firstDb);
    EXPECT_FALSE(QFile::exists(options.outDir + QStringLiteral("/DATA/sealdemo.db.building")));
}

TEST(DemoInstallationTest, AnUnwritableFolderIsReportedWithItsName)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString blocker = dir.filePath(QStringLiteral("file"));
    sealtest::putBytes(blocker, QByteArray());
    demo::DemoOptions options;
    options.outDir = blocker + QStringLiteral("/install");
    options.patients = 20;
    options.today = QDate(2026, 11, 21);
    try {
        demo::writeInstallation(options);
        FAIL() << "no error for a folder inside a file";
    } catch (const demo::DemoError& e) {
        EXPECT_TRUE(e.text().contains(options.outDir)) << e.text().toStdString();
    }
}

struct ArgumentCase {
    const char* name;
    const char* commandLine;  // the arguments, split at blanks
    const char* errorPart;    // part of the message; null when the line is good
};

class DemoArgumentsTest : public ::testing::TestWithParam<ArgumentCase> {};

TEST_P(DemoArgumentsTest, ParsesOrSaysWhatIsWrong)
{
    const ArgumentCase& c = GetParam();
    QString error;
    const QStringList arguments = QString::fromLatin1(c.commandLine).split(u' ');
    EXPECT_EQ(demo::parseArguments(arguments, &error).has_value(), !c.errorPart) << error.toStdString();
    if (c.errorPart) {
        EXPECT_TRUE(error.contains(QString::fromLatin1(c.errorPart))) << error.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, DemoArgumentsTest,
    ::testing::Values(ArgumentCase{"OutOnly", "--out d", nullptr},
                      ArgumentCase{"AllOptions", "--out d --patients 100000 --seed 42 --today 2026/02/28", nullptr},
                      ArgumentCase{"NoOut", "--seed 1", "--out"}, ArgumentCase{"MissingValue", "--out", "--out"},
                      ArgumentCase{"TooFewPatients", "--out d --patients 19", "--patients"},
                      ArgumentCase{"PatientsNotANumber", "--out d --patients many", "many"},
                      ArgumentCase{"NegativeSeed", "--out d --seed -1", "--seed"},
                      ArgumentCase{"ImpossibleDay", "--out d --today 2026/02/30", "2026/02/30"},
                      ArgumentCase{"Unknown", "--out d --fast 1", "--fast"}),
    sealtest::ByName{});

TEST(DemoArgumentsTest, ParsedValuesArriveInTheOptions)
{
    const std::optional<demo::DemoOptions> options = demo::parseArguments(
        {QStringLiteral("--today"), QStringLiteral("2026/02/28"), QStringLiteral("--out"), QStringLiteral("x/y"),
         QStringLiteral("--seed"), QStringLiteral("4000000000"), QStringLiteral("--patients"), QStringLiteral("250")},
        nullptr);
    ASSERT_TRUE(options.has_value());
    EXPECT_EQ(options->outDir, QStringLiteral("x/y"));
    EXPECT_EQ(options->patients, 250);
    EXPECT_EQ(options->seed, 4000000000u);
    EXPECT_EQ(options->today, QDate(2026, 2, 28));
}

}  // namespace

// The demo installation's folder: its settings files byte for byte, its folders and
// picture, what a second run replaces and keeps, and the command line.

#include "base/text_codec.h"
#include "demo_installation.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

QByteArray cp932Lines(const QStringList& lines)
{
    return base::toCp932(lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
}

void expectCrLfCp932(const QByteArray& bytes, const QString& name)
{
    bool bad = false;
    base::fromCp932(bytes, &bad);
    EXPECT_FALSE(bad) << name.toStdString();
    for (qsizetype i = 0; i < bytes.size(); ++i)
        if (bytes.at(i) == '\n') {
            ASSERT_TRUE(i > 0 && bytes.at(i - 1) == '\r') << name.toStdString() << " at " << i;
        }
    EXPECT_TRUE(bytes.endsWith("\r\n")) << name.toStdString();
}

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

TEST_F(DemoSettingsTest, SystemSettingsNameTheFirstOfficeAndTheFolders)
{
    const QByteArray bytes = readAll(path(QStringLiteral("Tavrine.ini")));
    expectCrLfCp932(bytes, QStringLiteral("Tavrine.ini"));
    EXPECT_EQ(bytes, cp932Lines({QStringLiteral("SYSTEM_SYS=\\SYS"), QStringLiteral("SYSTEM_TMP=\\TMP"),
                                 QStringLiteral("SYSTEM_ICON=\\ICON"), QStringLiteral("SYSTEM_DATA=\\DATA"),
                                 QStringLiteral("WALLPAPER=wallpaper.png"), QStringLiteral("BASEID=0101"),
                                 QStringLiteral("和タイプ=1"), QStringLiteral("紹介者=1"),
                                 QStringLiteral("同意更新医師TEL出力=1"), QStringLiteral("同意記録1出力=1")}));
}

TEST_F(DemoSettingsTest, ConnectionPointsAtTheDatabaseBesideTheProgram)
{
    const QByteArray bytes = readAll(path(QStringLiteral("adodb.ini")));
    expectCrLfCp932(bytes, QStringLiteral("adodb.ini"));
    EXPECT_EQ(bytes, cp932Lines({QStringLiteral("[接続情報]"),
                                 QStringLiteral("接続情報=Provider=SQLite;Data Source=DATA\\sealdemo.db")}));
}

TEST_F(DemoSettingsTest, ReportFormNamesLieInTheDataFolder)
{
    const QByteArray bytes = readAll(path(QStringLiteral("DATA/帳票Format.ini")));
    expectCrLfCp932(bytes, QStringLiteral("帳票Format.ini"));
    EXPECT_EQ(bytes, cp932Lines({QStringLiteral("[同意書更新]"), QStringLiteral("同意書更新=同意台帳_TKZK.wfd")}));
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
    EXPECT_EQ(readAll(path(QStringLiteral("MGNT.CID"))), QByteArray());
    for (const char* other : {"FRAS.CID", "SGRB.CID"})
        EXPECT_FALSE(QFile::exists(path(QString::fromLatin1(other)))) << other;
}

TEST_F(DemoSettingsTest, AnOfficeThatHasPrintedOnceHasItsSettingsVersionAndHelpAccount)
{
    const QByteArray saved = readAll(path(QStringLiteral("DATA/印刷設定.ini")));
    expectCrLfCp932(saved, QStringLiteral("印刷設定.ini"));
    const QString text = base::fromCp932(saved);
    EXPECT_TRUE(text.startsWith(QStringLiteral("[タックシール]\r\n"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Enter=1\r\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("[タックシール脚注]\r\n脚注数=5\r\n脚注1=療養費支給申請書在中\r\n")));
    const QString version = base::fromCp932(readAll(path(QStringLiteral("Velmio.Ver"))));
    EXPECT_TRUE(version.contains(QStringLiteral("VERSION=")));
    EXPECT_TRUE(version.contains(QStringLiteral("[OnlineHelp]\r\nADDRESS=http")));
    EXPECT_EQ(readAll(path(QStringLiteral("EmapUser.ini"))),
              cp932Lines({QStringLiteral("ZENRIN_USER=demo-office"), QStringLiteral("ZENRIN_PWD=demo-pass")}));
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
    QFile settings(saved);
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("[タックシール]\r\n");
    settings.close();
    QFile tavrine(options.outDir + QStringLiteral("/Tavrine.ini"));
    ASSERT_TRUE(tavrine.open(QIODevice::Append));
    tavrine.write("EXTRA=1\r\n");
    tavrine.close();
    const QByteArray firstDb = readAll(options.outDir + QStringLiteral("/DATA/sealdemo.db"));

    options.patients = 30;
    demo::writeInstallation(options);
    EXPECT_EQ(readAll(saved), QByteArray("[タックシール]\r\n"));
    EXPECT_FALSE(readAll(options.outDir + QStringLiteral("/Tavrine.ini")).contains("EXTRA"));
    EXPECT_NE(readAll(options.outDir + QStringLiteral("/DATA/sealdemo.db")), firstDb);
    EXPECT_FALSE(QFile::exists(options.outDir + QStringLiteral("/DATA/sealdemo.db.building")));
}

TEST(DemoInstallationTest, AnUnwritableFolderIsReportedWithItsName)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString blocker = dir.filePath(QStringLiteral("file"));
    QFile f(blocker);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
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
    QStringList arguments;
    bool ok;
    const char* errorPart;  // part of the message, when not ok
};

class DemoArgumentsTest : public ::testing::TestWithParam<ArgumentCase> {};

TEST_P(DemoArgumentsTest, ParsesOrSaysWhatIsWrong)
{
    const ArgumentCase& c = GetParam();
    QString error;
    const std::optional<demo::DemoOptions> options = demo::parseArguments(c.arguments, &error);
    EXPECT_EQ(options.has_value(), c.ok) << error.toStdString();
    if (!c.ok) {
        EXPECT_TRUE(error.contains(QString::fromUtf8(c.errorPart))) << error.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, DemoArgumentsTest,
    ::testing::Values(
        ArgumentCase{"OutOnly", {QStringLiteral("--out"), QStringLiteral("d")}, true, ""},
        ArgumentCase{"AllOptions",
                     {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--patients"),
                      QStringLiteral("100000"), QStringLiteral("--seed"), QStringLiteral("42"),
                      QStringLiteral("--today"), QStringLiteral("2026/02/28")},
                     true,
                     ""},
        ArgumentCase{"NoOut", {QStringLiteral("--seed"), QStringLiteral("1")}, false, "--out"},
        ArgumentCase{"MissingValue", {QStringLiteral("--out")}, false, "--out"},
        ArgumentCase{"TooFewPatients",
                     {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--patients"), QStringLiteral("19")},
                     false,
                     "--patients"},
        ArgumentCase{
            "PatientsNotANumber",
            {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--patients"), QStringLiteral("many")},
            false,
            "many"},
        ArgumentCase{"NegativeSeed",
                     {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--seed"), QStringLiteral("-1")},
                     false,
                     "--seed"},
        ArgumentCase{
            "ImpossibleDay",
            {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--today"), QStringLiteral("2026/02/30")},
            false,
            "2026/02/30"},
        ArgumentCase{"Unknown",
                     {QStringLiteral("--out"), QStringLiteral("d"), QStringLiteral("--fast"), QStringLiteral("1")},
                     false,
                     "--fast"}),
    [](const ::testing::TestParamInfo<ArgumentCase>& info) { return std::string(info.param.name); });

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

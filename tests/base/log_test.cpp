// The log: every message of the process into a file in the log folder, rotated when it
// would grow too large, no patient data at the default level, and a program that runs
// on when the folder cannot be written.

#include "base/log.h"

#include "support/files.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace base;

namespace {

class LogFileTest : public ::testing::Test {
protected:
    void TearDown() override { setLogLevel(QtInfoMsg); }

    LogOptions options(qint64 maxBytes = 1024 * 1024, int keep = 5) const
    {
        LogOptions o;
        o.folder = dir.filePath(QStringLiteral("ログ フォルダ"));
        o.fileName = QStringLiteral("sealprint.log");
        o.maxBytes = maxBytes;
        o.keep = keep;
        o.consoleLevel = QtCriticalMsg;  // keep the test's own output clean
        return o;
    }
    QString file(const QString& suffix = {}) const
    {
        return dir.filePath(QStringLiteral("ログ フォルダ/sealprint.log") + suffix);
    }

    QTemporaryDir dir;
};

TEST_F(LogFileTest, WritesEachMessageWithItsLevelAndLayer)
{
    {
        LogFile log(options());
        ASSERT_TRUE(log.writing()) << log.problem().toStdString();
        EXPECT_EQ(log.path(), file());
        qCInfo(lcApp) << "started wfrfv10";
        qCWarning(lcEngine) << "フォームファイルが見つかりません";
    }
    const QString text = QString::fromUtf8(sealtest::fileBytes(file()));
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << text.toStdString();
    EXPECT_TRUE(lines[0].endsWith(QStringLiteral(" info sealprint.app: started wfrfv10"))) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral(" warning sealprint.engine: フォームファイルが見つかりません")));
    // Once the log is gone, messages no longer reach the file.
    qCInfo(lcApp) << "after";
    EXPECT_FALSE(sealtest::fileBytes(file()).contains("after"));
}

TEST_F(LogFileTest, ALaterRunAppendsToTheSameFile)
{
    {
        LogFile log(options());
        qCInfo(lcApp) << "first run";
    }
    {
        LogFile log(options());
        qCInfo(lcApp) << "second run";
    }
    const QByteArray bytes = sealtest::fileBytes(file());
    EXPECT_TRUE(bytes.contains("first run"));
    EXPECT_TRUE(bytes.contains("second run"));
}

TEST_F(LogFileTest, RotatesBeforeTheFileOutgrowsItsLimitAndKeepsTheNewest)
{
    {
        LogFile log(options(400, 2));
        for (int i = 0; i < 40; ++i) qCInfo(lcData) << "message number" << i;
    }
    for (const QString& suffix : {QString(), QStringLiteral(".1"), QStringLiteral(".2")}) {
        ASSERT_TRUE(QFile::exists(file(suffix))) << suffix.toStdString();
        EXPECT_LE(QFile(file(suffix)).size(), 400) << suffix.toStdString();
    }
    EXPECT_FALSE(QFile::exists(file(QStringLiteral(".3"))));
    // The current file ends with the last message; the oldest ones are gone.
    EXPECT_TRUE(sealtest::fileBytes(file()).endsWith("message number 39\n"));
    const QByteArray all = sealtest::fileBytes(file()) + sealtest::fileBytes(file(QStringLiteral(".1"))) +
                           sealtest::fileBytes(file(QStringLiteral(".2")));
    EXPECT_FALSE(all.contains("message number 0\n"));
    // .1 holds what came just before the current file.
    const QByteArray previous = sealtest::fileBytes(file(QStringLiteral(".1")));
    const QByteArray current = sealtest::fileBytes(file());
    const int lastBefore = previous.trimmed().split(' ').last().toInt();
    const int firstNow = current.split('\n').first().split(' ').last().toInt();
    EXPECT_EQ(firstNow, lastBefore + 1);
}

TEST_F(LogFileTest, DebugMessagesStayOutAtTheDefaultLevelAndComeInWhenRaised)
{
    setLogLevel(QtInfoMsg);
    {
        LogFile log(options());
        qCDebug(lcExtract) << "山田 太郎";
        qCInfo(lcExtract) << "search done";
    }
    EXPECT_FALSE(sealtest::fileBytes(file()).contains("山田"));
    setLogLevel(QtDebugMsg);
    {
        LogFile log(options());
        qCDebug(lcExtract) << "山田 太郎";
    }
    EXPECT_TRUE(QString::fromUtf8(sealtest::fileBytes(file())).contains(QStringLiteral("山田 太郎")));
    setLogLevel(QtWarningMsg);
    {
        LogFile log(options());
        qCInfo(lcExtract) << "quiet now";
    }
    EXPECT_FALSE(sealtest::fileBytes(file()).contains("quiet now"));
}

TEST_F(LogFileTest, AFolderThatCannotBeMadeLeavesNoFileAndTheProgramRunsOn)
{
    // A file where the folder should be: no folder can be made there, superuser or not.
    sealtest::putBytes(dir.filePath(QStringLiteral("ログ フォルダ")), "not a folder");
    LogFile log(options());
    EXPECT_FALSE(log.writing());
    EXPECT_TRUE(log.problem().contains(QStringLiteral("ログ フォルダ"))) << log.problem().toStdString();
    qCWarning(lcApp) << "still running";  // must not crash or throw
    EXPECT_EQ(log.path(), QString());
}

TEST_F(LogFileTest, AFileThatCannotBeWrittenIsReported)
{
    if (sealtest::rightsDoNotBind()) GTEST_SKIP() << "the superuser writes any file";
    ASSERT_TRUE(QDir().mkpath(options().folder));
    sealtest::putBytes(file(), "old\n");
    ASSERT_TRUE(sealtest::setFileMode(file(), 0400));
    LogFile log(options());
    EXPECT_FALSE(log.writing());
    EXPECT_TRUE(log.problem().contains(QStringLiteral("sealprint.log")));
}

TEST(LogLevel, NamesTheLevels)
{
    EXPECT_EQ(logLevelFromName(QStringLiteral("debug")), QtDebugMsg);
    EXPECT_EQ(logLevelFromName(QStringLiteral("INFO")), QtInfoMsg);
    EXPECT_EQ(logLevelFromName(QStringLiteral("warning")), QtWarningMsg);
    EXPECT_EQ(logLevelFromName(QStringLiteral("critical")), QtCriticalMsg);
    EXPECT_EQ(logLevelFromName(QStringLiteral("fatal")), std::nullopt);
    EXPECT_EQ(logLevelFromName(QStringLiteral("verbose")), std::nullopt);
}

}  // namespace

// The query export to CSV, run for real on a SQLite database in a throw-away program
// directory, and checked on the bytes of the file it leaves.

#include "report/cls_jetdb2csv.h"

#include "app/globals.h"
#include "controls/recording_platform.h"
#include "data/ado/ado_constants.h"
#include "support/files.h"
#include "support/globals_scope.h"
#include "support/installation.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <functional>
#include <memory>

using report::cls_JetDB2CSV;
using sealtest::crlf;
using namespace Qt::StringLiterals;
namespace ado = data::ado;

namespace {

// --- one column by its type -----------------------------------------------------

struct ColumnCase {
    const char* name;
    int type;
    QVariant value;
    QString expected;
};

class CsvColumnTest : public ::testing::TestWithParam<ColumnCase> {};

TEST_P(CsvColumnTest, WrittenByItsType)
{
    EXPECT_EQ(report::csvColumnText(GetParam().type, GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Types, CsvColumnTest,
    ::testing::Values(ColumnCase{"SmallInt", ado::adSmallInt, QVariant(-7), u"-7"_s},
                      ColumnCase{"Currency", ado::adCurrency, QVariant(1200.25), u"1200.25"_s},
                      ColumnCase{"Decimal", ado::adDecimal, QVariant(1e20), u"1E+20"_s},
                      ColumnCase{"BooleanFromBool", ado::adBoolean, QVariant(true), u"True"_s},
                      ColumnCase{"BooleanFromMinusOne", ado::adBoolean, QVariant(-1), u"True"_s},
                      ColumnCase{"Date", ado::adDate, QVariant(QDate(2026, 2, 3)), u"2026/02/03"_s},
                      ColumnCase{"TimeStamp", ado::adDBTimeStamp,
                                 QVariant(QDateTime(QDate(2026, 11, 21), QTime(8, 5, 9))), u"2026/11/21 8:05:09"_s},
                      ColumnCase{"TimeStampMidnight", ado::adDBTimeStamp,
                                 QVariant(QDateTime(QDate(2026, 11, 21), QTime(0, 0))), u"2026/11/21"_s},
                      ColumnCase{"VarChar", ado::adVarChar, QVariant(u"a\"b,c"_s), u"\"a\"b,c\""_s},
                      ColumnCase{"LongVarWChar", ado::adLongVarWChar, QVariant(u"一\r\n二"_s), u"\"一\r\n二\""_s},
                      // Types outside the table are quoted, numbers among them.
                      ColumnCase{"TinyInt", ado::adTinyInt, QVariant(5), u"\"5\""_s},
                      ColumnCase{"BigInt", ado::adBigInt, QVariant(qlonglong(9000000000)), u"\"9000000000\""_s},
                      ColumnCase{"Guid", ado::adGUID, QVariant(u"{0F2A8C3E-1B7D-4E55-9A21-5C6D7E8F9A0B}"_s),
                                 u"\"{0F2A8C3E-1B7D-4E55-9A21-5C6D7E8F9A0B}\""_s},
                      ColumnCase{"NullNumber", ado::adInteger, QVariant(), QString()},
                      ColumnCase{"NullText", ado::adVarWChar, QVariant(), QString()},
                      ColumnCase{"NullOther", ado::adBinary, QVariant(), QString()}),
    [](const auto& info) { return std::string(info.param.name); });

// --- the export on a real database ----------------------------------------------

class JetDb2CsvTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        app::gsAppPath = dir.path();
        app::setPlatform(&platform);
        dbPath = dir.filePath(u"seal.db"_s);
        sealtest::execSql(dbPath, QStringLiteral(R"(
CREATE TABLE EXPORT (nID INTEGER, cName TEXT, nRate REAL, tDay DATETIME, tStamp DATETIME,
  bFlag BIT, nAmount NUMERIC, nBig BIGINT, bData BLOB, iSmall SMALLINT);
INSERT INTO EXPORT VALUES (1, '山田 "太郎"', 1.5, '2026/11/21', '2026/11/20 09:15:30', 1, 1234.5,
  9000000000, x'4142', 3);
INSERT INTO EXPORT VALUES (2, NULL, NULL, NULL, NULL, 0, NULL, NULL, NULL, NULL);
INSERT INTO EXPORT VALUES (3, 'a,b', -0.25, '2026/01/05', '2026/01/05 00:00:00', NULL, 0, 1, NULL, -2);
CREATE TABLE SITE (nID INTEGER, cOffice TEXT);
INSERT INTO SITE VALUES (1, '本店');
INSERT INTO SITE VALUES (2, NULL);
INSERT INTO SITE VALUES (3, '支店');
INSERT INTO SITE VALUES (4, '余り');
)"));
        writeAdodbIni(u"Provider=SQLite;Data Source="_s + dbPath);
        csvPath = app::gsAppPath + u"\\out.csv"_s;
    }

    void writeAdodbIni(const QString& connect)
    {
        sealtest::writeCrlf(dir.filePath(u"adodb.ini"_s), {u"[接続情報]"_s, u"接続情報="_s + connect});
    }

    QByteArray csv() const { return sealtest::fileBytes(dir.filePath(u"out.csv"_s)); }

    // A converter bound to one query, or to two side by side; count holds what it counted.
    std::unique_ptr<cls_JetDB2CSV> init(const QString& sql, const QString& second = QString())
    {
        auto j = std::make_unique<cls_JetDB2CSV>();
        count = -1;
        EXPECT_EQ(second.isNull() ? j->iInitJ2C(sql, csvPath, count) : j->iInitJ2C_WSQL(sql, second, csvPath, count), 0)
            << j->sErrMsg.toStdString();
        return j;
    }

    QStringList boxes() const { return platform.transcript().filter(QRegularExpression(u"^box "_s)); }

    // SELECT 1 AS c1, ..., n AS cn
    static QString wideSelect(int n, const QString& from = QString())
    {
        QStringList cols;
        for (int i = 1; i <= n; ++i) cols << QString::number(i) + u" AS c"_s + QString::number(i);
        return u"SELECT "_s + cols.join(u", "_s) + from;
    }

    QTemporaryDir dir;
    controls::RecordingPlatform platform;
    sealtest::GlobalsScope globals;
    QString dbPath;
    QString csvPath;
    qint32 count = -1;
    const QString kAll = u"SELECT * FROM EXPORT ORDER BY nID"_s;
    const QString kHeader =
        u"\"nID\",\"cName\",\"nRate\",\"tDay\",\"tStamp\",\"bFlag\",\"nAmount\",\"nBig\",\"bData\",\"iSmall\""_s;
    const QString kRow1 =
        u"1,\"山田 \"太郎\"\",1.5,2026/11/21,2026/11/20 9:15:30,True,1234.5,\"9000000000\",\"AB\",3"_s;
    const QString kRow2 = u"2,,,,,False,,,,"_s;
    const QString kRow3 = u"3,\"a,b\",-0.25,2026/01/05,2026/01/05,,0,\"1\",,-2"_s;
};

TEST_F(JetDb2CsvTest, EachColumnIsWrittenByItsTypeWithHeader)
{
    const auto j = init(kAll);
    EXPECT_EQ(count, 3);
    QList<qint32> progress;
    j->evtCnvProcessUp = [&](qint32& n) { progress << n; };
    EXPECT_EQ(j->nExecJ2C(-1, QString()), 3);
    EXPECT_EQ(csv(), crlf({kHeader, kRow1, kRow2, kRow3}));
    EXPECT_EQ(progress, (QList<qint32>{1, 2, 3}));
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(JetDb2CsvTest, FileIsShiftJisAndTheUsersAlone)
{
    const auto j = init(u"SELECT cOffice FROM SITE WHERE nID = 1"_s);
    EXPECT_EQ(j->iExecJ2C(0), 0);
    EXPECT_EQ(csv(), QByteArray("\"\x96\x7b\x93\x58\"\r\n"));
    EXPECT_EQ(sealtest::fileMode(dir.filePath(u"out.csv"_s)), 0600);
}

TEST_F(JetDb2CsvTest, HeaderOnlyWhenTheFlagIsExactlyTrue)
{
    for (int16_t flag : {int16_t(-1), int16_t(1), int16_t(0), int16_t(2)}) {
        const auto j = init(kAll + u" LIMIT 1"_s);
        EXPECT_EQ(j->iExecJ2C(flag), 0);
        EXPECT_EQ(csv(), flag == -1 ? crlf({kHeader, kRow1}) : crlf({kRow1})) << flag;
    }
}

TEST_F(JetDb2CsvTest, SiteColumn)
{
    struct Case {
        int16_t header;
        QString site;
        QByteArray expected;
    };
    const QString sql = u"SELECT nID, cOffice FROM SITE WHERE nID <= 2 ORDER BY nID"_s;
    const QList<Case> cases{
        {-1, u"本店"_s, crlf({u"\"nID\",\"cOffice\",\"拠点名\""_s, u"1,\"本店\",本店"_s, u"2,,本店"_s})},
        // Without a header the rows still carry the site, untrimmed.
        {0, u" 第二 "_s, crlf({u"1,\"本店\", 第二 "_s, u"2,, 第二 "_s})},
        {-1, u"   "_s, crlf({u"\"nID\",\"cOffice\""_s, u"1,\"本店\""_s, u"2,"_s})},
        {-1, QString(), crlf({u"\"nID\",\"cOffice\""_s, u"1,\"本店\""_s, u"2,"_s})},
    };
    for (const Case& c : cases) {
        const auto j = init(sql);
        EXPECT_EQ(j->nExecJ2C(c.header, c.site), 2);
        EXPECT_EQ(csv(), c.expected) << c.site.toStdString();
    }
}

TEST_F(JetDb2CsvTest, NullInTheFirstColumnStartsTheLineWithAComma)
{
    const auto j = init(u"SELECT cOffice, nID FROM SITE WHERE nID = 2"_s);
    EXPECT_EQ(j->nExecJ2C(0, QString()), 1);
    EXPECT_EQ(csv(), crlf({u",2"_s}));
}

TEST_F(JetDb2CsvTest, QueryWithoutRowsWritesTheHeaderAlone)
{
    const auto j = init(u"SELECT * FROM EXPORT WHERE nID > 99"_s);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(j->nExecJ2C(-1, u"本店"_s), 0);
    EXPECT_EQ(csv(), crlf({kHeader + u",\"拠点名\""_s}));
}

TEST_F(JetDb2CsvTest, ASecondExecOnTheSameInitWritesNoRows)
{
    const auto j = init(kAll);
    EXPECT_EQ(j->nExecJ2C(-1, QString()), 3);
    EXPECT_EQ(j->nExecJ2C(-1, QString()), 0);
    EXPECT_EQ(csv(), crlf({kHeader}));
}

TEST_F(JetDb2CsvTest, ColumnsBeyondTheTypeTableAreAFault)
{
    {
        const auto j = init(wideSelect(cls_JetDB2CSV::kMaxColumns));
        EXPECT_EQ(j->nExecJ2C(0, QString()), 1);
        EXPECT_TRUE(csv().startsWith("1,2,3,"));
        EXPECT_TRUE(csv().endsWith(",257\r\n"));
    }
    const auto j = init(wideSelect(cls_JetDB2CSV::kMaxColumns + 1));
    EXPECT_EQ(j->nExecJ2C(-1, QString()), -1);
    EXPECT_EQ(j->sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
    EXPECT_EQ(csv(), QByteArray());  // created, then nothing written
}

TEST_F(JetDb2CsvTest, ExecAfterAFailedInitFaultsOnTheMissingQuery)
{
    writeAdodbIni(QString());
    cls_JetDB2CSV j;
    qint32 count = 0;
    EXPECT_EQ(j.iInitJ2C(kAll, csvPath, count), -1);
    EXPECT_EQ(j.iExecJ2C(-1), -1);
    EXPECT_EQ(j.sErrMsg, u"(91)オブジェクト変数または With ブロック変数が設定されていません。"_s);
    EXPECT_EQ(csv(), QByteArray());  // the file is made before the query is read

    // Without any init there is not even a file name.
    cls_JetDB2CSV k;
    EXPECT_EQ(k.nExecJ2C(-1, QString()), -1);
    EXPECT_EQ(k.sErrMsg, u"(75)パス名が無効です。"_s);
}

TEST_F(JetDb2CsvTest, OutputFolderThatDoesNotExist)
{
    cls_JetDB2CSV j;
    qint32 count = 0;
    ASSERT_EQ(j.iInitJ2C(kAll, app::gsAppPath + u"\\NOWHERE\\out.csv"_s, count), 0);
    EXPECT_EQ(j.nExecJ2C(-1, QString()), -1);
    EXPECT_EQ(j.sErrMsg, u"(76)パスが見つかりません。"_s);
}

TEST_F(JetDb2CsvTest, EndTwiceAndExecAfterEnd)
{
    const auto j = init(kAll);
    EXPECT_EQ(j->iEndJ2C(), 0);
    EXPECT_EQ(j->iEndJ2C(), 0);
    EXPECT_EQ(j->nExecJ2C(-1, QString()), -1);
    EXPECT_EQ(j->sErrMsg, u"(91)オブジェクト変数または With ブロック変数が設定されていません。"_s);
}

// --- init failures ----------------------------------------------------------------

TEST_F(JetDb2CsvTest, InitShowsWhyItFailed)
{
    struct Case {
        const char* what;
        std::function<void()> prepare;
        QString sql;
        QString boxStart;  // the box text, escaped as the transcript writes it
    };
    const QList<Case> cases{
        {"no settings file", [this] { QFile::remove(dir.filePath(u"adodb.ini"_s)); }, kAll,
         u"box 16 シール印刷|iInitJ2C() でエラー\\r\\n指定されたIni（"_s},
        {"empty connection text", [this] { writeAdodbIni(QString()); }, kAll,
         u"box 16 シール印刷|iInitJ2C() でエラー\\r\\n接続文字列取得できません。"_s},
        {"database that is not there", [this] { writeAdodbIni(u"Provider=SQLite;Data Source=missing.db"_s); }, kAll,
         u"box 16 シール印刷|iInitJ2C() でエラー\\r\\n("_s},
        {"bad query", [] {}, u"SELECT nope FROM EXPORT"_s, u"box 16 シール印刷|iInitJ2C() でエラー\\r\\n("_s},
    };
    for (const Case& c : cases) {
        writeAdodbIni(u"Provider=SQLite;Data Source="_s + dbPath);
        platform.clearTranscript();
        c.prepare();
        cls_JetDB2CSV j;
        qint32 count = 77;
        EXPECT_EQ(j.iInitJ2C(c.sql, csvPath, count), -1) << c.what;
        const QStringList shown = boxes();
        ASSERT_EQ(shown.size(), 1) << c.what;
        EXPECT_TRUE(shown[0].startsWith(c.boxStart)) << c.what << ": " << shown[0].toStdString();
        // Only a failed query names its statement.
        EXPECT_EQ(shown[0].contains(u"SQL=SELECT nope FROM EXPORT"_s), c.sql != kAll) << c.what;
        EXPECT_FALSE(j.sErrMsg.isEmpty()) << c.what;
    }
}

// --- two queries side by side -----------------------------------------------------

TEST_F(JetDb2CsvTest, TwoQueriesOnOneLine)
{
    const auto j = init(u"SELECT nID, cName FROM EXPORT ORDER BY nID"_s,
                        u"SELECT cOffice FROM SITE WHERE nID <= 3 ORDER BY nID"_s);
    EXPECT_EQ(count, 3);
    QList<qint32> progress;
    j->evtCnvProcessUp = [&](qint32& n) { progress << n; };
    EXPECT_EQ(j->nExecJ2C_WSQL(-1), 3);
    EXPECT_EQ(csv(), crlf({u"\"nID\",\"cName\",\"cOffice\""_s, u"1,\"山田 \"太郎\"\",\"本店\""_s, u"2,,"_s,
                           u"3,\"a,b\",\"支店\""_s}));
    EXPECT_EQ(progress, (QList<qint32>{1, 2, 3}));
}

TEST_F(JetDb2CsvTest, CountIsTheSecondQuerysAndLongerSecondIsCut)
{
    const auto j =
        init(u"SELECT nID FROM EXPORT WHERE nID <= 2 ORDER BY nID"_s, u"SELECT cOffice FROM SITE ORDER BY nID"_s);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(j->nExecJ2C_WSQL(0), 2);
    EXPECT_EQ(csv(), crlf({u"1,\"本店\""_s, u"2,"_s}));
}

TEST_F(JetDb2CsvTest, ShorterSecondQueryFailsWithTheEarlierRowsOnDisk)
{
    const auto j = init(kAll, u"SELECT cOffice FROM SITE WHERE nID <= 2 ORDER BY nID"_s);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(j->nExecJ2C_WSQL(0), -1);
    EXPECT_TRUE(j->sErrMsg.startsWith(u"(3021)"_s)) << j->sErrMsg.toStdString();
    EXPECT_EQ(csv(), crlf({kRow1 + u",\"本店\""_s, kRow2 + u","_s}));
    EXPECT_EQ(j->iEndJ2C(), 0);
    EXPECT_EQ(csv(), crlf({kRow1 + u",\"本店\""_s, kRow2 + u","_s}));
}

TEST_F(JetDb2CsvTest, TwoQueriesShareTheLargerTypeTable)
{
    // 257 + 256 columns fit; one more does not.
    const QString from = u" FROM SITE WHERE nID = 1"_s;
    {
        const auto j = init(wideSelect(257, from), wideSelect(256, from));
        EXPECT_EQ(j->nExecJ2C_WSQL(0), 1);
        EXPECT_TRUE(csv().endsWith(",255,256\r\n"));
    }
    const auto j = init(wideSelect(257, from), wideSelect(257, from));
    EXPECT_EQ(j->nExecJ2C_WSQL(0), -1);
    EXPECT_EQ(j->sErrMsg, u"(9)インデックスが有効範囲にありません。"_s);
}

TEST_F(JetDb2CsvTest, TwoQueryInitShowsNothingAndKeepsTheFirstCountOnFailure)
{
    cls_JetDB2CSV j;
    qint32 count = 0;
    EXPECT_EQ(j.iInitJ2C_WSQL(kAll, u"SELECT nope FROM SITE"_s, csvPath, count), -1);
    EXPECT_EQ(count, 3);
    EXPECT_TRUE(j.sErrMsg.contains(u"SQL=SELECT nope FROM SITE"_s)) << j.sErrMsg.toStdString();

    writeAdodbIni(QString());
    cls_JetDB2CSV k;
    EXPECT_EQ(k.iInitJ2C_WSQL(kAll, kAll, csvPath, count), -1);
    EXPECT_EQ(k.sErrMsg, u"接続文字列取得できません。"_s);
    EXPECT_TRUE(boxes().isEmpty());
}

}  // namespace

// The ADO surface over the SQLite driver: values and type numbers by the storage
// conventions, the client-side cursor, faults, time-outs and transactions.

#include "ado_test_db.h"

#include "app/globals.h"
#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/faults.h"
#include "data/ado/recordset.h"

#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

class SqliteAdo : public ::testing::Test {
protected:
    void SetUp() override { connection.Open(db.sqliteConnect()); }

    Recordset open(const QString& sql)
    {
        Recordset rs;
        rs.setCursorLocation(adUseClient);
        rs.Open(sql, connection, adOpenForwardOnly, adLockReadOnly, adCmdText);
        return rs;
    }

    // The fault a call raises, or number 0 when it raises none.
    template <typename F>
    static base::VbError faultOf(F&& call)
    {
        try {
            call();
        } catch (const base::VbError& e) {
            return e;
        }
        return {0, QString()};
    }

    adotest::TestDb db;
    Connection connection;
};

TEST_F(SqliteAdo, ValuesAndTypeNumbersFollowTheColumnKinds)
{
    Recordset rs = open(QStringLiteral("SELECT s.nIDNo, s.cName, tBirthday, nLat, tUpDateTime FROM STAFF s "
                                       "JOIN RIYOUSHA r ON r.nTantou = s.nIDNo WHERE r.nIDNo = 10 AND r.iKyotenEb = 2"));
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("cName")).Type(), adVarWChar);
    EXPECT_EQ(rs.Fields(QStringLiteral("tBirthday")).Type(), adDBTimeStamp);
    EXPECT_EQ(rs.Fields(QStringLiteral("nLat")).Type(), adDouble);
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(5));
    EXPECT_EQ(rs.Fields(QStringLiteral("cName")).Value(), QVariant(QStringLiteral("佐藤　花子")));
    EXPECT_EQ(rs.Fields(QStringLiteral("tBirthday")).Value().toDateTime(), QDateTime(QDate(1940, 4, 1), QTime(0, 0)));
    EXPECT_EQ(rs.Fields(QStringLiteral("tUpDateTime")).Value().toDateTime(),
              QDateTime(QDate(2026, 11, 20), QTime(9, 15, 30)));
    EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("nLat")).Value().toDouble(), 35.681236);
}

// A long result: texts that repeat, texts that never do, and datetime columns holding
// text that is no date, each read back as stored, row by row.
TEST_F(SqliteAdo, EveryRowOfALongResultKeepsItsOwnValues)
{
    db.run(R"(
WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1999)
INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cAdress1, tBirthday)
SELECT 9, 1, i, '患者' || i, CASE i % 3 WHEN 0 THEN '' WHEN 1 THEN 'ｶﾅ' ELSE NULL END,
       '東京都' || (i % 7),
       CASE i % 5 WHEN 0 THEN '不明' WHEN 1 THEN '2026/13/01' ELSE printf('19%02d/%02d/%02d', i % 90, 1 + i % 12, 1 + i % 28) END
FROM n;
)");
    Recordset rs = open(QStringLiteral("SELECT nIDNo, cName, cNameKana, cAdress1, tBirthday FROM RIYOUSHA "
                                       "WHERE iKyotenCd = 9 ORDER BY nIDNo"));
    ASSERT_EQ(rs.RecordCount(), 2000);
    EXPECT_EQ(rs.Fields(QStringLiteral("tBirthday")).Type(), adDBTimeStamp);
    int i = 0;
    for (; !rs.Eof(); rs.MoveNext(), ++i) {
        SCOPED_TRACE(i);
        ASSERT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(i));
        EXPECT_EQ(rs.Fields(QStringLiteral("cName")).Value(), QVariant(QStringLiteral("患者") + QString::number(i)));
        const QVariant kana = rs.Fields(QStringLiteral("cNameKana")).Value();
        if (i % 3 == 2) {
            EXPECT_TRUE(kana.isNull());
        } else {
            EXPECT_EQ(kana.typeId(), QMetaType::QString);
            EXPECT_EQ(kana.toString(), i % 3 == 0 ? QString() : QStringLiteral("ｶﾅ"));
        }
        EXPECT_EQ(rs.Fields(QStringLiteral("cAdress1")).Value(),
                  QVariant(QStringLiteral("東京都") + QString::number(i % 7)));
        const QVariant birthday = rs.Fields(QStringLiteral("tBirthday")).Value();
        if (i % 5 == 0) {
            EXPECT_EQ(birthday, QVariant(QStringLiteral("不明")));
        } else if (i % 5 == 1) {
            EXPECT_EQ(birthday, QVariant(QStringLiteral("2026/13/01")));
        } else {
            EXPECT_EQ(birthday.typeId(), QMetaType::QDateTime);
            EXPECT_EQ(birthday.toDateTime(), QDateTime(QDate(1900 + i % 90, 1 + i % 12, 1 + i % 28), QTime(0, 0)));
        }
    }
    EXPECT_EQ(i, 2000);
}

TEST_F(SqliteAdo, NullInEveryKindOfColumnIsANullVariant)
{
    Recordset rs = open(QStringLiteral("SELECT nTantou, cName, tBirthday, iChusiFlg, cAdress1 FROM RIYOUSHA WHERE nIDNo = 12"));
    ASSERT_FALSE(rs.Eof());
    for (int i = 0; i < rs.FieldCount(); ++i)
        EXPECT_TRUE(rs.Fields(i).Value().isNull()) << rs.Fields(i).Name().toStdString();
    EXPECT_EQ(rs.Fields(QStringLiteral("tBirthday")).Type(), adDBTimeStamp);
    EXPECT_EQ(rs.Fields(QStringLiteral("nTantou")).Type(), adInteger);
}

TEST_F(SqliteAdo, ExpressionColumnsTakeTheTypeOfTheirValues)
{
    Recordset rs = open(QStringLiteral(
        "SELECT 0 as ShokaiFlg, isnull(iChusiFlg, 0) AS f, max(tBirthday) AS last, count(*) AS n, 'x' AS c "
        "FROM RIYOUSHA WHERE iKyotenEb = 2"));
    EXPECT_EQ(rs.Fields(QStringLiteral("ShokaiFlg")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("f")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("last")).Type(), adDBTimeStamp);
    EXPECT_EQ(rs.Fields(QStringLiteral("last")).Value().toDateTime().date(), QDate(1951, 12, 31));
    EXPECT_EQ(rs.Fields(QStringLiteral("n")).Value(), QVariant(3));
    EXPECT_EQ(rs.Fields(QStringLiteral("c")).Type(), adVarWChar);
}

TEST_F(SqliteAdo, TheClientSideCursorMovesEveryWay)
{
    Recordset rs = open(QStringLiteral("SELECT nIDNo FROM RIYOUSHA WHERE iKyotenEb = 2 ORDER BY nIDNo"));
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_FALSE(rs.Bof());
    rs.MoveLast();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(12));
    rs.MoveFirst();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(10));
    rs.MoveNext();
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(faultOf([&] { rs.MoveNext(); }).number(), 3021);
    EXPECT_EQ(faultOf([&] { rs.Fields(0).Value(); }).number(), 3021);
    rs.MovePrevious();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(12));
}

TEST_F(SqliteAdo, AnEmptyResultIsAtEofAndBof)
{
    Recordset rs = open(QStringLiteral("SELECT nIDNo FROM RIYOUSHA WHERE nIDNo < 0"));
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(rs.FieldCount(), 1);
}

TEST_F(SqliteAdo, FieldsAreFoundByNameWithoutRegardToCase)
{
    Recordset rs = open(QStringLiteral("SELECT cIDno_x.nIDNo, cName FROM STAFF cIDno_x WHERE nIDNo = 5"));
    EXPECT_EQ(rs.Fields(QStringLiteral("NIDNO")).Value(), QVariant(5));
    EXPECT_EQ(rs.Fields(QStringLiteral("cname")).Name(), QStringLiteral("cName"));
    const base::VbError missing = faultOf([&] { rs.Fields(QStringLiteral("cNameKana")); });
    EXPECT_EQ(missing.number(), 3265);
    EXPECT_EQ(faultOf([&] { rs.Fields(2); }).number(), 3265);
}

TEST_F(SqliteAdo, ANameSharedByTwoColumnsAlwaysFindsTheFirst)
{
    Recordset rs = open(QStringLiteral("SELECT r.nIDNo, s.cName, s.nIDNo FROM RIYOUSHA r JOIN STAFF s "
                                       "ON s.nIDNo = r.nTantou WHERE r.nIDNo = 11"));
    ASSERT_EQ(rs.RecordCount(), 1);
    // Read in select-list order, as a reader of every field does: the name after
    // cName is the first column's, not the third's.
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
    EXPECT_EQ(rs.Fields(QStringLiteral("cName")).Value().toString(), QStringLiteral("鈴木　一郎"));
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
    EXPECT_EQ(rs.Fields(2).Value(), QVariant(6));
}

TEST_F(SqliteAdo, AnOpenOnAClosedConnectionFaults)
{
    connection.Close();
    Recordset rs;
    EXPECT_EQ(faultOf([&] { rs.Open(QStringLiteral("SELECT 1"), connection); }).number(), 3709);
    qint32 affected = 0;
    EXPECT_EQ(faultOf([&] { connection.Execute(QStringLiteral("DELETE FROM STAFF"), affected); }).number(), 3709);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
}

TEST_F(SqliteAdo, TextWithAnApostropheComesBackWhole)
{
    Recordset rs = open(QStringLiteral("SELECT cName FROM RIYOUSHA WHERE cName = 'O''Brien'"));
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(rs.Fields(0).Value().toString(), QStringLiteral("O'Brien"));
}

TEST_F(SqliteAdo, AClosedRecordsetFaultsOnEveryRead)
{
    Recordset rs = open(QStringLiteral("SELECT nIDNo FROM STAFF"));
    rs.Close();
    EXPECT_EQ(rs.State(), adStateClosed);
    EXPECT_EQ(faultOf([&] { rs.Eof(); }).number(), 3704);
    EXPECT_EQ(faultOf([&] { rs.Close(); }).number(), 3704);
    EXPECT_EQ(faultOf([&] { rs.Fields(0); }).number(), 3704);
}

TEST_F(SqliteAdo, AMissingColumnFailsWithTheProvidersRecord)
{
    Recordset rs;
    const base::VbError fault = faultOf([&] { rs.Open(QStringLiteral("SELECT cNoSuch FROM STAFF"), connection); });
    EXPECT_EQ(fault.number(), DB_E_ERRORSINCOMMAND);
    EXPECT_TRUE(fault.description().contains(QStringLiteral("no such column: cNoSuch")));
    ASSERT_EQ(connection.Errors().Count(), 1);
    const Error& error = connection.Errors().Item(0);
    EXPECT_EQ(error.SQLState, QStringLiteral("42S22"));
    EXPECT_EQ(error.Source, QStringLiteral("SQLite"));
    EXPECT_EQ(error.NativeError, 1);
    EXPECT_EQ(rs.State(), adStateClosed);
}

TEST_F(SqliteAdo, ANewFailureReplacesTheErrorsOfTheLastOne)
{
    Recordset rs;
    faultOf([&] { rs.Open(QStringLiteral("SELECT x FROM STAFF"), connection); });
    faultOf([&] { rs.Open(QStringLiteral("SELECT * FROM NO_TABLE"), connection); });
    ASSERT_EQ(connection.Errors().Count(), 1);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("42S02"));
    EXPECT_EQ(connection.Errors().Item(0).Number, DB_E_NOTABLE);
}

TEST_F(SqliteAdo, TheDialectStepLetsTheProgramsTsqlRun)
{
    Recordset rs = open(QStringLiteral(
        "SELECT nIDNo, cName FROM STAFF WHERE isnull(iChusiFlg, 0) = 0 AND iKyotenCd = 1 AND iKyotenEb = 2 "
        "AND CONVERT(VARCHAR, isnull(tUpDateTime, GetDate()), 112) >= '20250101' ORDER BY nIDNo "));
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(5));
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(6));
}

TEST_F(SqliteAdo, AnAmbiguousOrderByNameIsTakenFromTheSelectList)
{
    Recordset rs = open(QStringLiteral(
        " select RIYOUSHA.nIDNo, RIYOUSHA.nTantou, STAFF.cName AS StaffName, 0 as EmptyFlg from RIYOUSHA "
        " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo WHERE RIYOUSHA.iKyotenEb = 2 AND STAFF.nIDNo >= 0"
        " ORDER BY nTantou, EmptyFlg, nIDNo "));
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(10));
    EXPECT_EQ(rs.Fields(QStringLiteral("StaffName")).Value().toString(), QStringLiteral("佐藤　花子"));
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
}

TEST_F(SqliteAdo, ExecuteCountsChangedRowsAndTransactionsHold)
{
    qint32 affected = -1;
    connection.Execute(QStringLiteral("UPDATE STAFF SET cName = 'x' WHERE iKyotenEb = 2"), affected, adExecuteNoRecords);
    EXPECT_EQ(affected, 3);
    EXPECT_EQ(connection.BeginTrans(), 1);
    connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    EXPECT_EQ(affected, 1);
    connection.RollbackTrans();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    connection.CommitTrans();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 2);
}

TEST_F(SqliteAdo, TransactionMisuseFailsAsTheProviderSays)
{
    EXPECT_EQ(faultOf([&] { connection.CommitTrans(); }).number(), XACT_E_NOTRANSACTION);
    EXPECT_EQ(faultOf([&] { connection.RollbackTrans(); }).number(), XACT_E_NOTRANSACTION);
    connection.BeginTrans();
    EXPECT_EQ(faultOf([&] { connection.BeginTrans(); }).number(), XACT_E_XTIONEXISTS);
    EXPECT_EQ(connection.Errors().Count(), 1);
}

TEST_F(SqliteAdo, DefaultDatabaseIsTheFilesName)
{
    EXPECT_EQ(connection.DefaultDatabase(), QStringLiteral("seal.db"));
    connection.Close();
    EXPECT_EQ(connection.State(), adStateClosed);
    EXPECT_EQ(faultOf([&] { connection.Close(); }).number(), 3704);
}

TEST_F(SqliteAdo, ARelativeDataSourceIsFoundInTheProgramsFolder)
{
    const QString saved = app::gsAppPath;
    app::gsAppPath = db.folder();
    Connection relative;
    relative.Open(QStringLiteral("Provider=SQLite;Data Source=seal.db"));
    EXPECT_EQ(relative.State(), adStateOpen);
    app::gsAppPath = saved;
}

TEST(SqliteAdoOpen, AMissingFileFailsAndIsNeverCreated)
{
    adotest::TestDb db;
    const QString missing = db.folder() + QStringLiteral("/none.db");
    Connection connection;
    try {
        connection.Open(QStringLiteral("Provider=SQLite;Data Source=") + missing);
        FAIL() << "opened a missing file";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), E_FAIL_);
        EXPECT_TRUE(e.description().contains(missing));
    }
    EXPECT_EQ(connection.State(), adStateClosed);
    EXPECT_EQ(connection.Errors().Count(), 1);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("08001"));
    EXPECT_FALSE(QFile::exists(missing));
}

TEST(SqliteAdoOpen, AFileThatIsNoDatabaseFailsAtOpen)
{
    adotest::TestDb db;
    const QString path = db.folder() + QStringLiteral("/text.db");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    Connection connection;
    EXPECT_THROW(connection.Open(QStringLiteral("Provider=SQLite;Data Source=") + path), base::VbError);
    EXPECT_EQ(connection.State(), adStateClosed);
    EXPECT_EQ(connection.Errors().Item(0).NativeError, 26);  // SQLITE_NOTADB
}

TEST(SqliteAdoTimeout, ALockedFileFailsWithinTheCommandTimeout)
{
    adotest::TestDb db;
    Connection connection;
    connection.Open(db.sqliteConnect());
    connection.setCommandTimeout(1);
    adotest::ExclusiveLock lock(db.path());
    ASSERT_TRUE(lock.locked());
    QElapsedTimer timer;
    timer.start();
    qint32 affected = 0;
    try {
        connection.Execute(QStringLiteral("UPDATE STAFF SET cName = 'y'"), affected);
        FAIL() << "wrote through an exclusive lock";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), DB_E_ABORTLIMITREACHED);
    }
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("HYT00"));
}

TEST(SqliteAdoTimeout, ALongStatementIsStoppedAtTheCommandTimeout)
{
    adotest::TestDb db;
    Connection connection;
    connection.Open(db.sqliteConnect());
    connection.setCommandTimeout(1);
    QElapsedTimer timer;
    timer.start();
    Recordset rs;
    try {
        rs.Open(QStringLiteral("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) "
                               "SELECT count(*) FROM c"),
                connection);
        FAIL() << "an endless statement returned";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), DB_E_ABORTLIMITREACHED);
    }
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_THROW(connection.setCommandTimeout(-1), base::VbError);
    EXPECT_EQ(connection.CommandTimeout(), 1);
}

TEST(SqliteAdoTimeout, ACommitWaitsForReadersNoLongerThanTheCommandTimeout)
{
    adotest::TestDb db;
    Connection connection;
    connection.Open(db.sqliteConnect());
    connection.setCommandTimeout(1);
    qint32 affected = 0;
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM STAFF"), affected);
    adotest::ReadingElsewhere reader(db.path());
    ASSERT_TRUE(reader.reading());
    QElapsedTimer timer;
    timer.start();
    try {
        connection.CommitTrans();
        FAIL() << "committed under another reader";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), DB_E_ABORTLIMITREACHED);
        EXPECT_EQ(e.description(), QStringLiteral("database is locked"));
    }
    EXPECT_LT(timer.elapsed(), 5000);
    // The work is still open and can be rolled back.
    EXPECT_NO_THROW(connection.RollbackTrans());
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
}

}  // namespace

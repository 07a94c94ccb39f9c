// What is particular to the SQLite road (the C API): a long result, opening files, and
// time-outs. What every road shares is in ado_roads_test.cpp.

#include "support/ado_test_db.h"

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

using adotest::faultOf;

class SqliteAdo : public ::testing::Test {
protected:
    void SetUp() override { connection.Open(db.sqliteConnect()); }

    Recordset open(const QString& sql) { return adotest::openReadOnly(connection, sql); }

    adotest::TestDb db;
    Connection connection;
};

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
    const base::VbError fault =
        faultOf([&] { connection.Open(QStringLiteral("Provider=SQLite;Data Source=") + missing); });
    EXPECT_EQ(fault.number(), E_FAIL_);
    EXPECT_TRUE(fault.description().contains(missing));
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

// A connection with a one-second command time-out; each failure must come well
// within five.
class SqliteAdoTimeout : public SqliteAdo {
protected:
    void SetUp() override
    {
        SqliteAdo::SetUp();
        connection.setCommandTimeout(1);
        timer.start();
    }
    void TearDown() override { EXPECT_LT(timer.elapsed(), 5000); }

    QElapsedTimer timer;
    qint32 affected = 0;
};

TEST_F(SqliteAdoTimeout, ALockedFileFailsWithinTheCommandTimeout)
{
    adotest::ExclusiveLock lock(db.path());
    ASSERT_TRUE(lock.locked());
    EXPECT_EQ(faultOf([&] { connection.Execute(QStringLiteral("UPDATE STAFF SET cName = 'y'"), affected); }).number(),
              DB_E_ABORTLIMITREACHED);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("HYT00"));
}

TEST_F(SqliteAdoTimeout, ALongStatementIsStoppedAtTheCommandTimeout)
{
    EXPECT_EQ(faultOf([&] {
                  Recordset rs;
                  rs.Open(QStringLiteral("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) "
                                         "SELECT count(*) FROM c"),
                          connection);
              }).number(),
              DB_E_ABORTLIMITREACHED);
    EXPECT_THROW(connection.setCommandTimeout(-1), base::VbError);
    EXPECT_EQ(connection.CommandTimeout(), 1);
}

TEST_F(SqliteAdoTimeout, ACommitWaitsForReadersNoLongerThanTheCommandTimeout)
{
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM STAFF"), affected);
    adotest::ReadingElsewhere reader(db.path());
    ASSERT_TRUE(reader.reading());
    const base::VbError fault = faultOf([&] { connection.CommitTrans(); });
    EXPECT_EQ(fault.number(), DB_E_ABORTLIMITREACHED);
    EXPECT_EQ(fault.description(), QStringLiteral("database is locked"));
    // The work is still open and can be rolled back.
    EXPECT_NO_THROW(connection.RollbackTrans());
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
}

}  // namespace

// The ADO surface over the ODBC driver, run for real through the SQLite ODBC driver on
// the same file the SQLite driver reads: the same statements must give the same rows
// and values both ways, and every diagnostic record must become one error.

#include "ado_test_db.h"

#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/faults.h"
#include "data/ado/recordset.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

template <typename F>
base::VbError faultOf(F&& call)
{
    try {
        call();
    } catch (const base::VbError& e) {
        return e;
    }
    return {0, QString()};
}

class OdbcAdo : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFile::exists(QString::fromLatin1(adotest::kOdbcSqliteDriver)))
            GTEST_SKIP() << "the SQLite ODBC driver is not installed";
        connection.Open(db.odbcConnect());
    }

    adotest::TestDb db;
    Connection connection;
};

struct Table {
    std::vector<QString> names;
    std::vector<int> types;
    std::vector<std::vector<QVariant>> rows;
};

Table readAll(Connection& connection, const QString& sql)
{
    Recordset rs;
    rs.setCursorLocation(adUseClient);
    rs.Open(sql, connection, adOpenForwardOnly, adLockReadOnly, adCmdText);
    Table table;
    for (int i = 0; i < rs.FieldCount(); ++i) {
        table.names.push_back(rs.Fields(i).Name());
        table.types.push_back(rs.Fields(i).Type());
    }
    while (!rs.Eof()) {
        std::vector<QVariant> row;
        for (int i = 0; i < rs.FieldCount(); ++i)
            row.push_back(rs.Fields(i).Value());
        table.rows.push_back(std::move(row));
        rs.MoveNext();
    }
    return table;
}

std::string show(const QVariant& v)
{
    return v.isNull() ? std::string("NULL") : (QString::fromLatin1(v.typeName()) + u':' + v.toString()).toStdString();
}

class SameRowsBothWays : public OdbcAdo, public ::testing::WithParamInterface<const char*> {};

TEST_P(SameRowsBothWays, SqliteAndOdbcAgree)
{
    const QString sql = QString::fromUtf8(GetParam());
    Connection direct;
    direct.Open(db.sqliteConnect());
    const Table viaSqlite = readAll(direct, sql);
    const Table viaOdbc = readAll(connection, sql);
    EXPECT_EQ(viaOdbc.names, viaSqlite.names);
    EXPECT_EQ(viaOdbc.types, viaSqlite.types);
    ASSERT_EQ(viaOdbc.rows.size(), viaSqlite.rows.size());
    ASSERT_FALSE(viaSqlite.rows.empty());
    for (size_t r = 0; r < viaSqlite.rows.size(); ++r) {
        for (size_t c = 0; c < viaSqlite.names.size(); ++c) {
            EXPECT_EQ(show(viaOdbc.rows[r][c]), show(viaSqlite.rows[r][c]))
                << "row " << r << " column " << viaSqlite.names[c].toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Statements, SameRowsBothWays,
    ::testing::Values(
        "SELECT * FROM RIYOUSHA ORDER BY iKyotenEb, nIDNo",
        "SELECT nIDNo, cName, nLat, nLon, tUpDateTime FROM STAFF WHERE isnull(iChusiFlg, 0) = 0 "
        "AND iKyotenCd = 1 AND iKyotenEb = 2 ORDER BY nIDNo ",
        "SELECT cName FROM RIYOUSHA WHERE cName = 'O''Brien'",
        " select RIYOUSHA.nIDNo, RIYOUSHA.nTantou, STAFF.cName AS StaffName from RIYOUSHA "
        " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo WHERE STAFF.nIDNo >= 0 ORDER BY nTantou, nIDNo "),
                         ([](const auto& info) { return std::vector<std::string>{"EveryPatient", "CurrentStaff", "QuotedName", "JoinedStaff"}.at(info.index); }));

TEST_F(OdbcAdo, TheServerIsKnownAsSqliteAndItsCatalogIsRead)
{
    // The dialect step runs: isnull and GetDate exist only after it.
    Recordset rs;
    rs.Open(QStringLiteral("SELECT isnull(NULL, 7) AS v, GetDate() AS d"), connection);
    EXPECT_EQ(rs.Fields(QStringLiteral("v")).Value(), QVariant(7));
    EXPECT_TRUE(rs.Fields(QStringLiteral("d")).Value().toDateTime().isValid());
    // The SQLite ODBC driver has no catalogs; asking must not fail.
    EXPECT_NO_THROW(connection.DefaultDatabase());
}

TEST_F(OdbcAdo, EveryDiagnosticRecordBecomesOneError)
{
    Recordset rs;
    const base::VbError fault = faultOf([&] { rs.Open(QStringLiteral("SELECT cNoSuch FROM STAFF"), connection); });
    EXPECT_NE(fault.number(), 0);
    ASSERT_GE(connection.Errors().Count(), 1);
    const Error& error = connection.Errors().Item(0);
    EXPECT_EQ(fault.number(), error.Number);
    EXPECT_EQ(fault.description(), error.Description);
    EXPECT_TRUE(error.Description.contains(QStringLiteral("no such column"))) << error.Description.toStdString();
    EXPECT_EQ(error.Source, QStringLiteral("ODBC"));
    EXPECT_EQ(error.SQLState.size(), 5);
}

TEST_F(OdbcAdo, ExecuteCountsRowsAndTransactionsHold)
{
    qint32 affected = -1;
    connection.Execute(QStringLiteral("UPDATE STAFF SET cName = 'x' WHERE iKyotenEb = 2"), affected, adExecuteNoRecords);
    EXPECT_EQ(affected, 3);
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    EXPECT_EQ(affected, 1);
    connection.RollbackTrans();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    connection.CommitTrans();
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 2);
    // Back in autocommit: a later change stands without a commit.
    connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 6"), affected, adExecuteNoRecords);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 1);
}

TEST_F(OdbcAdo, ALockedFileFailsWithTheDriversRecord)
{
    // The SQLite ODBC driver waits for a lock by its own Timeout (milliseconds), not by
    // the statement time-out.
    Connection impatient;
    impatient.Open(db.odbcConnect() + QStringLiteral(";Timeout=500"));
    adotest::ExclusiveLock lock(db.path());
    ASSERT_TRUE(lock.locked());
    qint32 affected = 0;
    const base::VbError fault =
        faultOf([&] { impatient.Execute(QStringLiteral("UPDATE STAFF SET cName = 'y'"), affected); });
    EXPECT_NE(fault.number(), 0);
    ASSERT_GE(impatient.Errors().Count(), 1);
    EXPECT_TRUE(impatient.Errors().Item(0).Description.contains(QStringLiteral("locked")))
        << impatient.Errors().Item(0).Description.toStdString();
}

TEST(OdbcAdoOpen, AWrongDriverNameFailsWithTheDriverManagersRecord)
{
    Connection connection;
    const base::VbError fault =
        faultOf([&] { connection.Open(QStringLiteral("Driver={No Such Driver 99};Server=x;Database=y")); });
    EXPECT_EQ(fault.number(), E_FAIL_);
    EXPECT_EQ(connection.State(), adStateClosed);
    ASSERT_GE(connection.Errors().Count(), 1);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("01000"));
    EXPECT_TRUE(connection.Errors().Item(0).Description.contains(QStringLiteral("Driver Manager")));
}

TEST(OdbcAdoOpen, AnUnreachableServerFailsWithTheDriversRecords)
{
    const QString freeTds = QStringLiteral("/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so");
    if (!QFile::exists(freeTds))
        GTEST_SKIP() << "FreeTDS is not installed";
    // Port 1 of this machine: nothing listens, so the refusal is immediate.
    qputenv("SEAL_ODBC_DRIVER", freeTds.toUtf8());
    Connection connection;
    const base::VbError fault = faultOf([&] {
        connection.Open(QStringLiteral("Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=Tavrine;"
                                       "User ID=sa;Password=x"));
    });
    qunsetenv("SEAL_ODBC_DRIVER");
    EXPECT_NE(fault.number(), 0);
    EXPECT_EQ(connection.State(), adStateClosed);
    ASSERT_GE(connection.Errors().Count(), 1);
    for (const Error& error : connection.Errors()) {
        EXPECT_EQ(error.SQLState.size(), 5);
        EXPECT_FALSE(error.Description.isEmpty());
    }
    EXPECT_TRUE(connection.Errors().Item(0).SQLState.startsWith(QStringLiteral("08")))
        << connection.Errors().Item(0).SQLState.toStdString();
}

TEST(OdbcAdoOpen, AMissingDatabaseFileFailsInsteadOfCreatingOne)
{
    if (!QFile::exists(QString::fromLatin1(adotest::kOdbcSqliteDriver)))
        GTEST_SKIP() << "the SQLite ODBC driver is not installed";
    adotest::TestDb db;
    const QString missing = db.folder() + QStringLiteral("/none.db");
    Connection connection;
    // The SQLite ODBC driver creates missing files unless told not to.
    const QString text = QStringLiteral("Driver=%1;Database=%2;NoCreat=1")
                             .arg(QString::fromLatin1(adotest::kOdbcSqliteDriver), missing);
    EXPECT_THROW(connection.Open(text), base::VbError);
    EXPECT_FALSE(QFile::exists(missing));
}

}  // namespace

// The FreeTDS ODBC driver against the TDS test server: how the faults of the field
// reach the program. A refused login, a server that is not there, a connection lost in
// the middle of a result, a statement past its time-out and a server that answers
// nonsense each fail with the driver's SQLSTATE and native error in the provider's
// records, in the form each cT_ADODB routine gives, and never hang.

#include "support/ado_roads.h"
#include "support/param_names.h"

#include "base/vb_error.h"
#include "data/ado/faults.h"
#include "data/ct_adodb.h"

#include <QElapsedTimer>
#include <QTcpSocket>

#ifdef __GLIBC__
#include <malloc.h>
#endif
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SEAL_ADDRESS_SANITIZER 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(SEAL_ADDRESS_SANITIZER)
#include <sanitizer/allocator_interface.h>
#define SEAL_ADDRESS_SANITIZER 1
#endif

#include <gtest/gtest.h>

using namespace data::ado;
using data::cT_ADODB;
using Fault = tdstest::ServerOptions::Fault;

namespace {

class FreeTds : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (const QString missing = adotest::FreeTdsRoad::missing(); !missing.isEmpty())
            GTEST_SKIP() << missing.toStdString();
        options.databasePath = db.path();
    }

    QString start(Fault fault = Fault::None)
    {
        options.fault = fault;
        server = std::make_unique<tdstest::TdsTestServer>(options);
        port = server->start();
        EXPECT_NE(port, 0) << server->errorText().toStdString();
        return tdstest::freeTdsConnectString(port, options);
    }

    // The first provider record of a failed open, and the fault it raised.
    static std::pair<base::VbError, Error> failedOpen(const QString& connect)
    {
        Connection connection;
        try {
            connection.Open(connect);
        } catch (const base::VbError& fault) {
            EXPECT_EQ(connection.State(), adStateClosed);
            EXPECT_GE(connection.Errors().Count(), 1);
            return {fault, connection.Errors().Count() ? connection.Errors().Item(0) : Error{}};
        }
        ADD_FAILURE() << "the open did not fail";
        return {base::VbError(0, QString()), Error{}};
    }

    // "(" the number with its sign position ")" the description: what iConnect leaves.
    static QString shortForm(const base::VbError& fault)
    {
        return QStringLiteral("(") + (fault.number() < 0 ? QString() : QStringLiteral(" ")) +
               QString::number(fault.number()) + QStringLiteral(")") + fault.description();
    }

    adotest::TestDb db;
    tdstest::ServerOptions options;
    std::unique_ptr<tdstest::TdsTestServer> server;
    quint16 port = 0;
};

TEST_F(FreeTds, AWrongPasswordIsRefusedWithTheServersLoginRecord)
{
    start();
    tdstest::ServerOptions wrong = options;
    wrong.password = QStringLiteral("not-the-password");
    const QString connect = tdstest::freeTdsConnectString(port, wrong);
    const auto [fault, error] = failedOpen(connect);
    // FreeTDS gives the server's login refusal (18456) the state 42000.
    EXPECT_EQ(error.SQLState, QStringLiteral("42000"));
    EXPECT_EQ(error.NativeError, 18456);
    EXPECT_TRUE(error.Description.contains(QStringLiteral("Login failed for user 'sa'.")))
        << error.Description.toStdString();
    EXPECT_EQ(fault.number(), error.Number);

    cT_ADODB adodb;
    adodb.iInit(connect);
    EXPECT_EQ(adodb.iConnect(), -1);
    EXPECT_EQ(adodb.sErrMsg(), shortForm(fault));
    EXPECT_EQ(server->logins(), 0);
}

TEST_F(FreeTds, AServerThatIsNotListeningFailsAtOnce)
{
    const QString connect = start();
    server->stop();
    QElapsedTimer clock;
    clock.start();
    const auto [fault, error] = failedOpen(connect);
    EXPECT_LT(clock.elapsed(), kConnectionTimeout * 1000);
    EXPECT_TRUE(error.SQLState.startsWith(QStringLiteral("08"))) << error.SQLState.toStdString();
    EXPECT_EQ(error.Source, QStringLiteral("ODBC"));

    cT_ADODB adodb;
    adodb.iInit(connect);
    EXPECT_EQ(adodb.iConnect(), -1);
    EXPECT_EQ(adodb.sErrMsg(), shortForm(fault));
}

TEST_F(FreeTds, AConnectionClosedInTheMiddleOfAResultLeavesNoRecordset)
{
    cT_ADODB adodb;
    adodb.iInit(start(Fault::CloseMidResult));
    ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
    auto rs = std::make_unique<Recordset>();
    const QString sql = QStringLiteral("SELECT nIDNo, cName FROM RIYOUSHA ORDER BY nIDNo");
    EXPECT_EQ(adodb.iOpenRecSet(rs, sql, 0, 1, 1), -1);
    EXPECT_EQ(rs->State(), adStateClosed);  // no half of the rows
    const QString text = adodb.sErrMsg();
    EXPECT_TRUE(text.startsWith(QStringLiteral("(-"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\rSQL=") + sql + QStringLiteral("\rConnection State=1\rError Number: ")))
        << text.toStdString();
    // FreeTDS tells a lost connection by its own message number 20017.
    EXPECT_TRUE(text.contains(QStringLiteral("Unexpected EOF from the server\r  Source: ODBC\r")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\r  Native Error: 20017"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("provider error(s) occurred."))) << text.toStdString();
}

TEST_F(FreeTds, AStatementPastTheCommandTimeoutIsCancelledAndTheConnectionGoesOn)
{
    cT_ADODB adodb;
    adodb.iInit(start());
    ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
    ASSERT_EQ(adodb.iSetTimeout(1), 0);
    const QString stall = QStringLiteral("WAITFOR DELAY '00:00:30'");
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(adodb.iExecSQL(stall), -1);
    EXPECT_LT(clock.elapsed(), 10000);
    const QString text = adodb.sErrMsg();
    EXPECT_TRUE(text.startsWith(QStringLiteral("ERR:iExecSQL (-"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\r  SQL State: HYT00\r"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("\rSQL=") + stall)) << text.toStdString();
    // The server was told to stop: the next statement is answered.
    auto rs = std::make_unique<Recordset>();
    ASSERT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT count(*) AS n FROM STAFF"), 0, 1, 1), 0)
        << adodb.sErrMsg().toStdString();
    EXPECT_EQ(rs->Fields(QStringLiteral("n")).Value(), QVariant(3));
}

// A server that answers a query with something that is no TDS: a clear failure
// within the command time-out, never a crash or a wait without end.
class FreeTdsBadReply : public FreeTds, public ::testing::WithParamInterface<Fault> {};

TEST_P(FreeTdsBadReply, FailsClearlyWithinTheCommandTimeout)
{
    cT_ADODB adodb;
    adodb.iInit(start(GetParam()));
    ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
    ASSERT_EQ(adodb.iSetTimeout(2), 0);
    auto rs = std::make_unique<Recordset>();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT nIDNo FROM STAFF"), 0, 1, 1), -1);
    EXPECT_LT(clock.elapsed(), 10000);
    EXPECT_EQ(rs->State(), adStateClosed);
    const QString text = adodb.sErrMsg();
    EXPECT_TRUE(text.startsWith(QStringLiteral("(-"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\r  SQL State: "))) << text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Replies, FreeTdsBadReply,
                         ::testing::Values(Fault::MalformedReply, Fault::TruncatedReply, Fault::UnknownType),
                         (sealtest::Named{{"Malformed", "Truncated", "UnknownType"}}));

TEST_F(FreeTds, ALoginThatTakesLongerThanTheConnectionTimeoutFails)
{
    const QString connect = start(Fault::SlowLogin);
    QElapsedTimer clock;
    clock.start();
    const auto [fault, error] = failedOpen(connect);
    EXPECT_LT(clock.elapsed(), (kConnectionTimeout + 10) * 1000);
    EXPECT_GE(clock.elapsed(), (kConnectionTimeout - 1) * 1000);
    EXPECT_EQ(error.SQLState.left(2), QStringLiteral("HY")) << error.SQLState.toStdString();
    EXPECT_EQ(server->logins(), 0);
}

#ifdef __GLIBC__
// Bytes the allocator has handed out, small blocks and mapped ones. Under the address
// sanitizer its own allocator stands in for malloc's, and only it keeps the count.
qint64 allocated()
{
#ifdef SEAL_ADDRESS_SANITIZER
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
#endif
}

// Bytes held while a recordset of the query is open.
qint64 heldByRecordset(Connection& connection, const QString& sql, int& rows)
{
    const qint64 before = allocated();
    Recordset rs = adotest::openReadOnly(connection, sql);
    rows = rs.RecordCount();
    return allocated() - before;
}

TEST_F(FreeTds, AHundredThousandRowsTakeNoMoreThanTwiceTheMemoryOfTheSqliteRoad)
{
    db.run(R"(
WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000)
INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cAdress1, tBirthday, nTantou)
SELECT 7, 1, i, '患者　' || i, 'ｶﾝｼﾞｬ ' || i, '東京都新宿区西新宿' || (i % 9) || '-' || (i % 30),
       printf('19%02d/%02d/%02d', i % 90, 1 + i % 12, 1 + i % 28), i % 40
FROM n;
)");
    const QString sql = QStringLiteral("SELECT nIDNo, cName, cNameKana, cAdress1, tBirthday, nTantou FROM RIYOUSHA "
                                       "WHERE iKyotenCd = 7 ORDER BY nIDNo");
    Connection sqlite;
    sqlite.Open(db.sqliteConnect());
    Connection tds;
    tds.Open(start());
    int sqliteRows = 0, tdsRows = 0;
    const qint64 viaSqlite = heldByRecordset(sqlite, sql, sqliteRows);
    const qint64 viaTds = heldByRecordset(tds, sql, tdsRows);
    EXPECT_EQ(sqliteRows, 100000);
    EXPECT_EQ(tdsRows, 100000);
    EXPECT_GT(viaSqlite, 0);
    RecordProperty("sqlite_road_bytes", std::to_string(viaSqlite));
    RecordProperty("freetds_road_bytes", std::to_string(viaTds));
    EXPECT_LE(viaTds, 2 * viaSqlite) << "SQLite road " << viaSqlite << " bytes, FreeTDS road " << viaTds << " bytes";
}
#endif

// The suite's OLE DB string, as adodb.ini holds it, reaches FreeTDS as a working
// connection.
TEST_F(FreeTds, TheSuitesOleDbStringConnects)
{
    start();
    qputenv("SEAL_ODBC_DRIVER", tdstest::kFreeTdsDriver);
    for (const QString& host :
         {QStringLiteral("127.0.0.1"), QStringLiteral("(local)"), QStringLiteral("tcp:localhost")}) {
        SCOPED_TRACE(host.toStdString());
        cT_ADODB adodb;
        adodb.iInit(QStringLiteral("Provider=SQLOLEDB.1;Persist Security Info=False;Data Source=%1,%2;"
                                   "Initial Catalog=Tavrine;User ID=sa;Password=%3")
                        .arg(host)
                        .arg(port)
                        .arg(options.password));
        ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
        EXPECT_EQ(adodb.sDbName(), QStringLiteral("Tavrine"));
        auto rs = std::make_unique<Recordset>();
        ASSERT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT cName FROM STAFF WHERE nIDNo = 5"), 0, 1, 1), 0);
        EXPECT_EQ(rs->Fields(0).Value().toString(), QStringLiteral("佐藤　花子"));
    }
    qunsetenv("SEAL_ODBC_DRIVER");
    EXPECT_EQ(server->logins(), 3);
}

// HOST\INSTANCE: FreeTDS asks the SQL Server Browser of the host for the instance's
// port. The server answers for its instance on an address of its own.
TEST_F(FreeTds, ANamedInstanceIsFoundThroughTheBrowser)
{
    options.host = QStringLiteral("127.0.0.2");
    options.instance = QStringLiteral("SEALTEST");
    start();
    ASSERT_NE(port, 0) << server->errorText().toStdString();
    qputenv("SEAL_ODBC_DRIVER", tdstest::kFreeTdsDriver);
    cT_ADODB adodb;
    adodb.iInit(QStringLiteral("Provider=SQLOLEDB.1;Data Source=127.0.0.2\\SEALTEST;Initial Catalog=Tavrine;"
                               "User ID=sa;Password=%1")
                    .arg(options.password));
    const short connected = adodb.iConnect();
    qunsetenv("SEAL_ODBC_DRIVER");
    ASSERT_EQ(connected, 0) << adodb.sErrMsg().toStdString();
    auto rs = std::make_unique<Recordset>();
    ASSERT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT count(*) AS n FROM STAFF"), 0, 1, 1), 0);
    EXPECT_EQ(rs->Fields(0).Value(), QVariant(3));
    EXPECT_EQ(server->logins(), 1);
}

// A client that sends no TDS (a packet shorter than its header, or half a packet and
// then silence) loses its session; the server goes on serving others.
TEST_F(FreeTds, TheServerDropsAClientThatSendsNoTdsAndGoesOn)
{
    options.readTimeoutMs = 500;
    const QString connect = start();
    for (const QByteArray& bytes :
         {QByteArray("\x12\x01\x00\x04\x00\x00\x00\x00", 8), QByteArray("\x12\x01\x00\x40", 4)}) {
        QTcpSocket garbage;
        garbage.connectToHost(QStringLiteral("127.0.0.1"), port);
        ASSERT_TRUE(garbage.waitForConnected(5000));
        garbage.write(bytes);
        garbage.waitForBytesWritten(5000);
        // The server closes the connection (at once, or when its read times out).
        EXPECT_FALSE(garbage.waitForReadyRead(5000) && garbage.bytesAvailable() > 0);
        if (garbage.state() == QAbstractSocket::ConnectedState) garbage.waitForDisconnected(5000);
        EXPECT_EQ(garbage.state(), QAbstractSocket::UnconnectedState);
    }
    Connection connection;
    connection.Open(connect);
    EXPECT_EQ(adotest::openReadOnly(connection, QStringLiteral("SELECT nIDNo FROM STAFF")).RecordCount(), 3);
}

}  // namespace

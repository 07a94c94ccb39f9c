#pragma once
// A test server that speaks enough of TDS 7.4 for the FreeTDS ODBC driver: pre-login
// without encryption, LOGIN7 with the user and password checked, SQL batches,
// attention, and the transaction manager requests. Each batch runs on a SQLite file
// through the program's own dialect step, so the T-SQL the program sends is what the
// server gets. Results come back as SQL Server types: a column declared VARCHAR or CHAR
// as varchar under Japanese_CI_AS (CP932 bytes), other text as nvarchar, and
// SMALLINT, BIT, DECIMAL(p,s), DATETIME, INTEGER and REAL as their SQL Server kinds.
//
// `WAITFOR DELAY 'hh:mm:ss'` stalls the batch (until the delay is over or the client
// sends attention), so that a query time-out can be met for real.
//
// A test component only: it is built with the tests and never installed.

#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>

namespace tdstest {

struct ServerOptions {
    QString databasePath;  // the SQLite file every session opens
    QString user = QStringLiteral("sa");
    QString password = QStringLiteral("Seal-Test-1");
    QString database = QStringLiteral("Tavrine");  // the catalog the login is put in
    // The loopback address to listen on. With an instance name the server also answers
    // the SQL Server Browser's question for it (UDP port 1434 of that address), so that
    // HOST\INSTANCE finds the port; give each such server its own address.
    QString host = QStringLiteral("127.0.0.1");
    QString instance;
    // The longest the server waits for the next bytes of a client. A session whose
    // client stays silent longer is closed.
    int readTimeoutMs = 30000;

    // Faults on purpose, for the tests of what a client makes of them.
    enum class Fault {
        None,
        CloseMidResult,  // the first result of more than one row stops after its first row, connection closed
        MalformedReply,  // a batch is answered by a packet whose length field is below the header's
        TruncatedReply,  // a batch is answered by half a packet, then nothing
        UnknownType,     // a result announces a column of a type TDS does not have
        SlowLogin,       // the login is never answered while the client waits
    };
    Fault fault = Fault::None;
};

class TdsTestServer {
public:
    explicit TdsTestServer(ServerOptions options);
    ~TdsTestServer();
    TdsTestServer(const TdsTestServer&) = delete;
    TdsTestServer& operator=(const TdsTestServer&) = delete;

    // Listens on the host address at a free port (or the given one) and serves on
    // threads of its own until stop(). The port; 0 when listening failed (see errorText()).
    quint16 start(quint16 port = 0);
    // Closes the listener and every session, and waits for their threads.
    void stop();
    quint16 port() const;
    QString errorText() const;

    // How many logins were accepted and how many batches ran, for tests that check a
    // client did (or did not) reach the server.
    int logins() const;
    int batches() const;

    struct State;

private:
    std::shared_ptr<State> state_;
};

// The ODBC connection string of the FreeTDS driver (by its library path) for a server
// on this machine, by its port.
QString freeTdsConnectString(quint16 port, const ServerOptions& options);

// Where Debian's tdsodbc puts the FreeTDS ODBC driver.
inline const char* kFreeTdsDriver = "/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so";

}  // namespace tdstest

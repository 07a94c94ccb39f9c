// The TDS test server on its own, for scripts that follow the README against it:
//   tds_test_server --db FILE [--port N] [--user U] [--password P] [--database D]
// prints "port N" once it listens, then serves until it is ended.

#include "tds_test_server.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption db(QStringLiteral("db"), QStringLiteral("SQLite file to serve"), QStringLiteral("file"));
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("port (0: a free one)"), QStringLiteral("n"),
                                  QStringLiteral("0"));
    const QCommandLineOption user(QStringLiteral("user"), QStringLiteral("login name"), QStringLiteral("name"));
    const QCommandLineOption password(QStringLiteral("password"), QStringLiteral("password"), QStringLiteral("text"));
    const QCommandLineOption database(QStringLiteral("database"), QStringLiteral("catalog name"),
                                      QStringLiteral("name"));
    parser.addOptions({db, port, user, password, database});
    parser.process(app);
    if (!parser.isSet(db)) {
        std::fprintf(stderr, "tds_test_server: --db FILE is required\n");
        return 2;
    }
    tdstest::ServerOptions options;
    options.databasePath = parser.value(db);
    if (parser.isSet(user)) options.user = parser.value(user);
    if (parser.isSet(password)) options.password = parser.value(password);
    if (parser.isSet(database)) options.database = parser.value(database);
    // A script may leave a session idle while it looks at the output.
    options.readTimeoutMs = 300000;
    tdstest::TdsTestServer server(options);
    const quint16 bound = server.start(quint16(parser.value(port).toUInt()));
    if (bound == 0) {
        std::fprintf(stderr, "tds_test_server: %s\n", qPrintable(server.errorText()));
        return 1;
    }
    std::printf("port %u\n", unsigned(bound));
    std::fflush(stdout);
    return app.exec();
}

// The seal screen's patient query on a demo database of 10,000 patients, read whole
// through our Recordset on the SQLite road and through FreeTDS against the TDS test
// server (which runs in this process, on the same file). Prints the medians; run by
// hand: bench_patient_query_roads [patients] [runs]

#include "app/globals.h"
#include "data/ado/connection.h"
#include "data/ado/recordset.h"
#include "demo_database.h"
#include "extract/riyousha_extract.h"
#include "tds_test_server.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : (v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2);
}

// Milliseconds to open the query and read every field of every row.
double readAll(data::ado::Connection& connection, const QString& sql, int& rows)
{
    QElapsedTimer clock;
    clock.start();
    data::ado::Recordset rs;
    rs.setCursorLocation(data::ado::adUseClient);
    rs.Open(sql, connection, data::ado::adOpenForwardOnly, data::ado::adLockReadOnly, data::ado::adCmdText);
    rows = 0;
    for (; !rs.Eof(); rs.MoveNext(), ++rows) {
        for (int i = 0; i < rs.FieldCount(); ++i) rs.Fields(i).Value();
    }
    return double(clock.nsecsElapsed()) / 1e6;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int patients = argc > 1 ? std::max(demo::kMinPatients, atoi(argv[1])) : 10000;
    const int runs = argc > 2 ? std::max(1, atoi(argv[2])) : 7;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.db"));
    const QDate today(2026, 11, 21);
    demo::buildDatabase({path, patients, 1, today});
    // The demo puts most patients in its first office.
    app::iKyotenCd = short(demo::kFirstOffice.iKyotenCd);
    app::iKyotenEb = short(demo::kFirstOffice.iKyotenEb);
    const QString sql = extract::csRiyoushaSql(app::iKyotenCd, app::iKyotenEb, QDate(2026, 11, 1), 0);

    data::ado::Connection sqlite;
    sqlite.Open(QStringLiteral("Provider=SQLite;Data Source=") + path);
    tdstest::ServerOptions options;
    options.databasePath = path;
    tdstest::TdsTestServer server(options);
    data::ado::Connection tds;
    tds.Open(tdstest::freeTdsConnectString(server.start(), options));

    std::vector<double> viaSqlite, viaTds;
    int rows = 0;
    for (int r = 0; r < runs; ++r) {
        viaSqlite.push_back(readAll(sqlite, sql, rows));
        viaTds.push_back(readAll(tds, sql, rows));
    }
    std::printf("patient query, %d patients in the database, %d rows read, %d runs\n", patients, rows, runs);
    std::printf("  SQLite road:                      median %8.1f ms\n", median(viaSqlite));
    std::printf("  FreeTDS against the test server:  median %8.1f ms\n", median(viaTds));
    return 0;
}

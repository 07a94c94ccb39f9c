#pragma once
// The three roads to a database that the program's ADO surface takes in the tests:
// SQLite's C API (the demo), the SQLite ODBC driver, and the FreeTDS ODBC driver
// against the TDS test server (which runs each batch on the same SQLite file). One
// typed test covers all three; what legitimately differs between them (a varchar
// column's type number, the source and native number of an error) is told here.

#include "support/ado_test_db.h"

#include "data/ado/ado_constants.h"
#include "data/ado/connection.h"
#include "data/ado/recordset.h"
#include "tds_test_server.h"

#include <QFile>

#include <algorithm>
#include <clocale>
#include <memory>
#include <string>
#include <vector>

namespace adotest {

// The ODBC string of the SQLite ODBC driver on a file. That driver has ANSI functions
// only, so the driver manager hands it the program's wide SQL text in the locale's
// character set: the locale must be taken from the environment (UTF-8), as
// QCoreApplication does in the program, or every non-ASCII literal is lost.
inline QString sqliteOdbcConnect(const QString& path)
{
    std::setlocale(LC_ALL, "");
    return QStringLiteral("Driver=%1;Database=%2").arg(QString::fromLatin1(kOdbcSqliteDriver), path);
}

struct SqliteRoad {
    static constexpr const char* kName = "SQLite";
    static constexpr bool kReference = true;
    static constexpr int kVarCharType = data::ado::adVarWChar;  // SQLite text is Unicode
    static constexpr bool kKnowsDecimal = true;
    static QString missing() { return {}; }
    QString connect(const TestDb& db) { return db.sqliteConnect(); }
    static QString errorSource() { return QStringLiteral("SQLite"); }
};

struct SqliteOdbcRoad {
    static constexpr const char* kName = "SQLite ODBC";
    static constexpr bool kReference = false;
    static constexpr int kVarCharType = data::ado::adVarWChar;
    static constexpr bool kKnowsDecimal = false;  // the driver reports DECIMAL as text
    static QString missing()
    {
        return QFile::exists(QString::fromLatin1(kOdbcSqliteDriver))
                   ? QString()
                   : QStringLiteral("the SQLite ODBC driver is not installed");
    }
    QString connect(const TestDb& db) { return sqliteOdbcConnect(db.path()); }
    static QString errorSource() { return QStringLiteral("ODBC"); }
};

struct FreeTdsRoad {
    static constexpr const char* kName = "FreeTDS";
    static constexpr bool kReference = false;
    static constexpr int kVarCharType = data::ado::adVarChar;  // varchar under Japanese_CI_AS
    static constexpr bool kKnowsDecimal = true;
    static QString missing()
    {
        return QFile::exists(QString::fromLatin1(tdstest::kFreeTdsDriver)) ? QString()
                                                                           : QStringLiteral("FreeTDS is not installed");
    }
    QString connect(const TestDb& db)
    {
        tdstest::ServerOptions options;
        options.databasePath = db.path();
        server = std::make_unique<tdstest::TdsTestServer>(options);
        const quint16 port = server->start();
        EXPECT_NE(port, 0) << server->errorText().toStdString();
        return tdstest::freeTdsConnectString(port, options);
    }
    static QString errorSource() { return QStringLiteral("ODBC"); }

    std::unique_ptr<tdstest::TdsTestServer> server;
};

// A result read whole: names, type numbers and values in select-list order.
struct Table {
    std::vector<QString> names;
    std::vector<int> types;
    std::vector<std::vector<QVariant>> rows;
};

inline Table readAll(data::ado::Connection& connection, const QString& sql)
{
    data::ado::Recordset rs = openReadOnly(connection, sql);
    Table table;
    for (int i = 0; i < rs.FieldCount(); ++i) {
        table.names.push_back(rs.Fields(i).Name());
        table.types.push_back(rs.Fields(i).Type());
    }
    while (!rs.Eof()) {
        std::vector<QVariant> row;
        for (int i = 0; i < rs.FieldCount(); ++i) row.push_back(rs.Fields(i).Value());
        table.rows.push_back(std::move(row));
        rs.MoveNext();
    }
    return table;
}

// A value with its kind; a text's UTF-16 units in hexadecimal too, so that a wave dash
// read for a full-width tilde shows.
inline std::string show(const QVariant& v)
{
    if (v.isNull()) return "NULL";
    std::string out = (QString::fromLatin1(v.typeName()) + u':' + v.toString()).toStdString();
    if (v.typeId() == QMetaType::QString) {
        out += " [";
        for (QChar c : v.toString()) out += QString::number(c.unicode(), 16).toStdString() + ' ';
        out += ']';
    }
    return out;
}

// Every name, value and type number of two results alike, row by row; a road's
// varchar type number (varCharType) stands for the reference's Unicode text.
inline void expectSameRows(Table got, const Table& want, int varCharType)
{
    EXPECT_EQ(got.names, want.names);
    std::replace(got.types.begin(), got.types.end(), varCharType, int(data::ado::adVarWChar));
    EXPECT_EQ(got.types, want.types);
    ASSERT_EQ(got.rows.size(), want.rows.size());
    for (size_t r = 0; r < want.rows.size(); ++r) {
        for (size_t c = 0; c < want.names.size() && c < got.names.size(); ++c)
            EXPECT_EQ(show(got.rows[r][c]), show(want.rows[r][c]))
                << "row " << r << " column " << want.names[c].toStdString();
    }
}

}  // namespace adotest

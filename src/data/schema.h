#pragma once
// The suite's database as this program sees it, written as SQLite DDL for the embedded
// driver, the demo installation and the tests. Names are the suite's own, odd
// spellings included; SQLite, like SQL Server, matches them without regard to case.
//
// Storage: c... TEXT, i.../n... INTEGER (nLat, nLon REAL), t... DATETIME holding
// 'YYYY/MM/DD' or 'YYYY/MM/DD HH:MM:SS' text, so that comparing with the program's
// 'yyyy/mm/dd' literals orders as dates do; 経過報告.tServicyMonth is 'YYYY/MM' text.

#include <QString>
#include <QStringList>

#include <vector>

struct sqlite3;

namespace data {

// One table: its columns in the order the statements name them, and the key the suite
// gives it. A unique key becomes the primary key; a key that several rows share (one
// row per consent, per visit ...) becomes a plain index.
struct TableDef {
    QString name;
    QStringList columns;
    QStringList key;
    bool uniqueKey = true;
};

// A further index that a frequent query of the program needs.
struct IndexDef {
    QString name;
    QString table;
    QStringList columns;
};

const std::vector<TableDef>& schemaTables();
const std::vector<IndexDef>& schemaIndexes();

// The declared SQLite type of a column of the given table, by the storage rules above.
QString columnType(const QString& table, const QString& column);

// The whole DDL: every CREATE TABLE and CREATE INDEX, each statement ending in ";\n".
QString schemaSql();
// The same in two parts, for a loader that fills the tables before it builds the
// secondary indexes: the tables with their primary keys, then the other indexes.
QString schemaTablesSql();
QString schemaIndexesSql();

// Runs schemaSql() on an open database. On failure returns false and puts SQLite's
// text in *errorText; tables made before the failure stay (the caller owns the file).
bool applySchema(sqlite3* db, QString* errorText = nullptr);

// Creates a new database file holding the empty schema. Refuses a path that already
// exists, so that no one's data is overwritten.
bool createSchemaDatabase(const QString& path, QString* errorText = nullptr);

}  // namespace data

#pragma once
// Which driver a connection string means, and the ODBC string for SQL Server that an
// OLE DB string of the original's settings stands for.

#include <QList>
#include <QPair>
#include <QString>

namespace data::ado {

// key=value parts separated by ';', in their order; a value may be quoted with ", '
// or {}. Keys keep their spelling; lookups ignore case.
class ConnectionStringParts {
public:
    // Throws the fault 3001 for a part without '=' or a quote that never closes.
    static ConnectionStringParts parse(const QString& text);

    bool has(QStringView key) const;
    // The value of the last part named key, or empty.
    QString value(QStringView key) const;
    const QList<QPair<QString, QString>>& parts() const { return parts_; }

private:
    QList<QPair<QString, QString>> parts_;
};

struct DriverTarget {
    enum class Kind { Sqlite, Odbc };
    Kind kind = Kind::Sqlite;
    QString sqlitePath;         // native path of the database file (Sqlite)
    QString odbcConnectString;  // what goes to SQLDriverConnect (Odbc)
};

// Provider=SQLite;Data Source=<path>: SQLite, a relative path relative to appPath.
// A SQL Server OLE DB string (Provider=SQLOLEDB, SQLNCLI…, MSOLEDBSQL…): ODBC with the
// translated string. Anything with Driver= or DSN=: ODBC as it stands. Throws the
// fault 3001 for a malformed string, 3706 for a provider we do not have.
DriverTarget chooseDriver(const QString& connectionString, const QString& appPath, const QString& odbcDriverName);

// The ODBC driver for SQL Server: SEAL_ODBC_DRIVER, else FreeTDS (Linux) or
// "SQL Server" (Windows).
QString defaultOdbcDriverName();

// Data Source -> Server (FreeTDS takes HOST\INST as it is, and a port as Port=),
// Initial Catalog -> Database, User ID -> UID, Password -> PWD,
// Integrated Security=SSPI -> Trusted_Connection=yes.
QString oledbToOdbc(const ConnectionStringParts& oledb, const QString& odbcDriverName);

}  // namespace data::ado

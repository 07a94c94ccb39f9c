#pragma once
// SQL Server (or any ODBC source) through the ODBC C API, Unicode functions only.

#include "data/ado/driver.h"

namespace data::ado::odbc {

class OdbcDriver : public Driver {
public:
    explicit OdbcDriver(QString connectString);
    ~OdbcDriver() override;
    OdbcDriver(const OdbcDriver&) = delete;
    OdbcDriver& operator=(const OdbcDriver&) = delete;

    void open() override;
    void close() override;
    // True when the DBMS behind the driver names itself SQLite.
    bool speaksSqlite() const override { return sqlite_; }
    // The current catalog.
    QString defaultDatabase() override;
    qint64 execute(const QString& sql, int timeoutSeconds) override;
    ResultTable query(const QString& sql, int timeoutSeconds) override;
    void beginTrans(int timeoutSeconds) override;
    void commitTrans(int timeoutSeconds) override;
    void rollbackTrans(int timeoutSeconds) override;

private:
    void endTransaction(bool commit);

    QString connectString_;
    void* env_ = nullptr;  // SQLHENV
    void* dbc_ = nullptr;  // SQLHDBC
    bool connected_ = false;
    bool sqlite_ = false;
};

// The ADO type number of an ODBC SQL type (SQL_INTEGER -> 3, SQL_WVARCHAR -> 202 …).
int adoTypeForSqlType(int sqlType);

}  // namespace data::ado::odbc

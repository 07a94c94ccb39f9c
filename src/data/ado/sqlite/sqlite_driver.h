#pragma once
// The embedded database: SQLite through its C API.

#include "data/ado/driver.h"

struct sqlite3;

namespace data::ado::sqlite {

class SqliteDriver : public Driver {
public:
    explicit SqliteDriver(QString path);
    ~SqliteDriver() override;
    SqliteDriver(const SqliteDriver&) = delete;
    SqliteDriver& operator=(const SqliteDriver&) = delete;

    // A missing file is an error: it never creates a new, empty database. The file is
    // opened read-only; the first statement run through execute() (the shared
    // classes' writes and transactions) opens it again for reading and writing.
    void open() override;
    void close() override;
    bool speaksSqlite() const override { return true; }
    // The database file's name.
    QString defaultDatabase() override;
    qint64 execute(const QString& sql, int timeoutSeconds) override;
    ResultTable query(const QString& sql, int timeoutSeconds) override;
    void beginTrans(int timeoutSeconds) override;
    void commitTrans(int timeoutSeconds) override;
    void rollbackTrans(int timeoutSeconds) override;

private:
    [[noreturn]] void fail(int code) const;
    // A new handle on the file; whatever each connection needs is set up here.
    sqlite3* openHandle(int mode) const;
    void makeWritable();

    QString path_;
    sqlite3* db_ = nullptr;
    bool writable_ = false;
};

// The ADO type number of a column SQLite declared with this type (DATETIME -> 135,
// INTEGER -> 3, REAL -> 5, TEXT -> 202 …); 0 for no declared type.
int adoTypeForDeclaredType(const char* declType);

}  // namespace data::ado::sqlite

// The read guard and the SQLite dialect step on any text: what the guard lets through
// stays one read-only statement after the dialect step (and after the ORDER BY
// rewrite), as SQLite itself judges it when preparing it on the program's tables.

#include "data/ado/read_safety.h"
#include "data/ado/sqlite_dialect.h"

#include "fuzz_support.h"

#include <QDateTime>

#include <sqlite3.h>

namespace {

sqlite3* database()
{
    static sqlite3* db = [] {
        sqlite3* d = nullptr;
        sqlite3_open_v2(":memory:", &d, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
        sqlite3_exec(d,
                     "CREATE TABLE RIYOUSHA (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER, cName TEXT,"
                     " cNameKana TEXT, tBirthday DATETIME, nTantou INTEGER);"
                     "CREATE TABLE STAFF (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER, cName TEXT);",
                     nullptr, nullptr, nullptr);
        return d;
    }();
    return db;
}

// Prepares sql: when SQLite takes it, it must be one statement that writes nothing.
void checkPrepared(const QString& sql)
{
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* st = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v2(database(), utf8.constData(), int(utf8.size()), &st, &tail) != SQLITE_OK || !st) {
        sqlite3_finalize(st);
        return;
    }
    fuzz::check(sqlite3_stmt_readonly(st) != 0, "a guarded read cannot write");
    fuzz::check(QByteArray(tail).trimmed().isEmpty(), "a guarded read is one statement");
    sqlite3_finalize(st);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace data::ado;
    const QString sql = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    if (!readSafetyViolation(sql).isEmpty()) return 0;
    const QString dialect = toSqliteDialect(sql, QDateTime(QDate(2026, 11, 25), QTime(9, 30)));
    fuzz::check(readSafetyViolation(dialect).isEmpty(), "the dialect step keeps a read a single SELECT");
    checkPrepared(dialect);
    const QString outer = orderByOverSelect(dialect);
    if (!outer.isEmpty()) {
        fuzz::check(readSafetyViolation(outer).isEmpty(), "the ORDER BY rewrite keeps a read a single SELECT");
        checkPrepared(outer);
    }
    return 0;
}

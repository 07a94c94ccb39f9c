#include "data/ado/sqlite/sqlite_driver.h"

#include "data/ado/ado_constants.h"
#include "data/ado/faults.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <sqlite3.h>

#include <cstring>
#include <iterator>

namespace data::ado::sqlite {

namespace {

const QString kSource = QStringLiteral("SQLite");

// A SQLSTATE for a SQLite result, so that both drivers report failures alike.
QString sqlStateFor(int code, const QString& message)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_INTERRUPT:
        return QStringLiteral("HYT00");
    case SQLITE_CANTOPEN:
    case SQLITE_NOTADB:
        return QStringLiteral("08001");
    case SQLITE_CONSTRAINT:
        return QStringLiteral("23000");
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return QStringLiteral("42000");
    case SQLITE_ERROR:
        if (message.startsWith(u"no such table")) return QStringLiteral("42S02");
        if (message.startsWith(u"no such column")) return QStringLiteral("42S22");
        if (message.contains(u"syntax error") || message.contains(u"ambiguous column name") ||
            message.startsWith(u"no such function"))
            return QStringLiteral("42000");
        return QStringLiteral("HY000");
    default:
        return QStringLiteral("HY000");
    }
}

ProviderFailure failureFor(int code, const QString& message)
{
    Error error;
    error.SQLState = sqlStateFor(code, message);
    error.Number = hresultForSqlState(error.SQLState);
    error.Description = message;
    error.Source = kSource;
    error.NativeError = code;
    return {{error}};
}

// Bounds a statement by time: the progress handler stops it once the limit is past.
class StatementClock {
public:
    StatementClock(sqlite3* db, int timeoutSeconds) : db_(db), limitMs_(qint64(timeoutSeconds) * 1000)
    {
        sqlite3_busy_timeout(db_, timeoutSeconds > 0 ? timeoutSeconds * 1000 : 0x7fffffff);
        if (limitMs_ > 0) {
            timer_.start();
            sqlite3_progress_handler(db_, 4000, &StatementClock::tick, this);
        }
    }
    ~StatementClock()
    {
        if (limitMs_ > 0) sqlite3_progress_handler(db_, 0, nullptr, nullptr);
    }
    StatementClock(const StatementClock&) = delete;
    StatementClock& operator=(const StatementClock&) = delete;

    bool expired() const { return limitMs_ > 0 && timer_.isValid() && timer_.elapsed() >= limitMs_; }

private:
    static int tick(void* self) { return static_cast<StatementClock*>(self)->expired() ? 1 : 0; }

    sqlite3* db_;
    qint64 limitMs_;
    QElapsedTimer timer_;
};

struct Statement {
    sqlite3_stmt* stmt = nullptr;
    ~Statement() { sqlite3_finalize(stmt); }
};

// How a column's values are read, fixed by its declared type or its first value.
enum class Reader { Integer, Boolean, Real, Text, DateTime, Blob, Any };

Reader readerFor(int adoType)
{
    switch (adoType) {
    case adInteger:
    case adSmallInt:
    case adTinyInt:
    case adBigInt:
        return Reader::Integer;
    case adBoolean:
        return Reader::Boolean;
    case adDouble:
    case adSingle:
    case adNumeric:
        return Reader::Real;
    case adDBTimeStamp:
        return Reader::DateTime;
    case adVarWChar:
        return Reader::Text;
    case adLongVarBinary:
        return Reader::Blob;
    default:
        return Reader::Any;
    }
}

// A stored datetime straight from its bytes: the text is widened on the stack, so a
// valid one costs no string. Null when the bytes are no datetime.
QVariant dateOf(const char* data, int bytes, DateTimeCache& dates)
{
    char16_t wide[32];
    if (bytes > int(std::size(wide))) return {};
    for (int i = 0; i < bytes; ++i) {
        const auto c = static_cast<unsigned char>(data[i]);
        if (c >= 0x80) return {};
        wide[i] = c;
    }
    return dates.parse(QStringView(wide, bytes));
}

void appendValue(sqlite3_stmt* stmt, int col, Reader reader, DateTimeCache& dates, ResultColumn& column)
{
    switch (sqlite3_column_type(stmt, col)) {
    case SQLITE_NULL:
        column.appendNull();
        return;
    case SQLITE_INTEGER:
        // A BIT column reads as a boolean, as it does through ODBC.
        if (reader == Reader::Boolean)
            column.append(QVariant(sqlite3_column_int64(stmt, col) != 0));
        else
            column.appendInteger(sqlite3_column_int64(stmt, col));
        return;
    case SQLITE_FLOAT:
        column.appendDouble(sqlite3_column_double(stmt, col));
        return;
    case SQLITE_BLOB: {
        const auto* data = static_cast<const char*>(sqlite3_column_blob(stmt, col));
        column.append(QVariant(QByteArray(data, sqlite3_column_bytes(stmt, col))));
        return;
    }
    default: {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(stmt, col));
        const int bytes = sqlite3_column_bytes(stmt, col);
        if (reader == Reader::DateTime) {
            QVariant date = dateOf(data, bytes, dates);
            if (date.isValid()) {
                column.append(date);
                return;
            }
        }
        column.appendUtf8(data, bytes);
        return;
    }
    }
}

// The type of a column without a declared type (an expression), from its first
// non-null value; text in the stored datetime form counts as a datetime.
int adoTypeForValue(sqlite3_stmt* stmt, int col)
{
    switch (sqlite3_column_type(stmt, col)) {
    case SQLITE_INTEGER:
        return adInteger;
    case SQLITE_FLOAT:
        return adDouble;
    case SQLITE_BLOB:
        return adLongVarBinary;
    case SQLITE_TEXT: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, col));
        const int bytes = sqlite3_column_bytes(stmt, col);
        if ((bytes == 10 || bytes == 19) && parseStoredDateTime(QString::fromLatin1(text, bytes)).isValid())
            return adDBTimeStamp;
        return adVarWChar;
    }
    default:
        return 0;
    }
}

}  // namespace

int adoTypeForDeclaredType(const char* declType)
{
    if (!declType || !*declType) return 0;
    const QByteArray t = QByteArray(declType).toUpper();
    if (t.contains("DATE") || t.contains("TIME")) return adDBTimeStamp;
    if (t.startsWith("BIGINT")) return adBigInt;
    if (t.startsWith("SMALLINT")) return adSmallInt;
    if (t.startsWith("TINYINT")) return adUnsignedTinyInt;
    if (t == "BIT" || t.startsWith("BOOL")) return adBoolean;
    if (t.contains("INT")) return adInteger;
    if (t.contains("CHAR") || t.contains("CLOB") || t.contains("TEXT")) return adVarWChar;
    if (t.contains("BLOB")) return adLongVarBinary;
    if (t.contains("REAL") || t.contains("FLOA") || t.contains("DOUB")) return adDouble;
    if (t.startsWith("NUMERIC") || t.startsWith("DECIMAL") || t.startsWith("MONEY")) return adNumeric;
    return adVarWChar;
}

SqliteDriver::SqliteDriver(QString path) : path_(std::move(path)) {}

SqliteDriver::~SqliteDriver() { close(); }

void SqliteDriver::fail(int code) const
{
    const QString message = db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QString::fromUtf8(sqlite3_errstr(code));
    throw failureFor(code, message);
}

sqlite3* SqliteDriver::openHandle(int mode) const
{
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(path_.toUtf8().constData(), &db, mode | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close_v2(db);
        throw failureFor(rc, message + QStringLiteral(": ") + path_);
    }
    sqlite3_extended_result_codes(db, 0);
    return db;
}

void SqliteDriver::open()
{
    close();
    if (!QFileInfo(path_).isFile()) {
        throw failureFor(SQLITE_CANTOPEN, QStringLiteral("unable to open database file: %1 does not exist").arg(path_));
    }
    // Read-only until a statement asks to write: every read of the program then runs
    // where SQLite itself refuses a write, whatever the statement's text.
    db_ = openHandle(SQLITE_OPEN_READONLY);
    writable_ = false;
    // Reading the schema now tells a file that is no database (or one held under an
    // exclusive lock) at the connect, not at the first statement.
    try {
        StatementClock clock(db_, kConnectionTimeout);
        char* message = nullptr;
        const int check = sqlite3_exec(db_, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, &message);
        sqlite3_free(message);
        if (check != SQLITE_OK) fail(check);
    } catch (...) {
        close();
        throw;
    }
}

void SqliteDriver::close()
{
    if (db_) {
        sqlite3_close_v2(db_);
        db_ = nullptr;
    }
}

QString SqliteDriver::defaultDatabase() { return QFileInfo(path_).fileName(); }

void SqliteDriver::makeWritable()
{
    if (writable_) return;
    // The file was checked at the connect; opening it touches no lock, so the statement
    // itself waits for one as long as its time-out allows. Every result is fetched
    // whole, so nothing is left open on the read-only handle.
    sqlite3* writable = openHandle(SQLITE_OPEN_READWRITE);
    close();
    db_ = writable;
    writable_ = true;
}

qint64 SqliteDriver::execute(const QString& sql, int timeoutSeconds)
{
    makeWritable();
    StatementClock clock(db_, timeoutSeconds);
    const QByteArray utf8 = sql.toUtf8();
    const char* tail = utf8.constData();
    const char* end = tail + utf8.size();
    qint64 changed = 0;
    while (tail < end) {
        Statement st;
        const char* next = nullptr;
        int rc = sqlite3_prepare_v2(db_, tail, static_cast<int>(end - tail), &st.stmt, &next);
        if (rc != SQLITE_OK) fail(rc);
        tail = next;
        if (!st.stmt) continue;  // blanks or a lone ';'
        while ((rc = sqlite3_step(st.stmt)) == SQLITE_ROW) {
        }
        if (rc != SQLITE_DONE) {
            if (rc == SQLITE_INTERRUPT) throw failureFor(SQLITE_INTERRUPT, QStringLiteral("Query timeout expired"));
            fail(rc);
        }
        if (!sqlite3_stmt_readonly(st.stmt)) changed += sqlite3_changes(db_);
    }
    return changed;
}

ResultTable SqliteDriver::query(const QString& sql, int timeoutSeconds)
{
    StatementClock clock(db_, timeoutSeconds);
    Statement st;
    const QByteArray utf8 = sql.toUtf8();
    int rc = sqlite3_prepare_v2(db_, utf8.constData(), static_cast<int>(utf8.size()), &st.stmt, nullptr);
    if (rc != SQLITE_OK) fail(rc);
    ResultTable table;
    if (!st.stmt) return table;
    const int columnCount = sqlite3_column_count(st.stmt);
    table.columns.resize(static_cast<size_t>(columnCount));
    std::vector<Reader> readers(static_cast<size_t>(columnCount), Reader::Any);
    std::vector<bool> typed(static_cast<size_t>(columnCount), false);
    for (int c = 0; c < columnCount; ++c) {
        ResultColumn& column = table.columns[static_cast<size_t>(c)];
        column.name = QString::fromUtf8(sqlite3_column_name(st.stmt, c));
        column.type = adoTypeForDeclaredType(sqlite3_column_decltype(st.stmt, c));
        typed[static_cast<size_t>(c)] = column.type != 0;
        readers[static_cast<size_t>(c)] = readerFor(column.type);
    }
    DateTimeCache dates;
    size_t capacity = 0;
    while ((rc = sqlite3_step(st.stmt)) == SQLITE_ROW) {
        if (static_cast<size_t>(table.rowCount) == capacity) {
            capacity = capacity ? capacity * 2 : 256;
            for (ResultColumn& column : table.columns) column.reserve(capacity);
        }
        for (int c = 0; c < columnCount; ++c) {
            const auto ci = static_cast<size_t>(c);
            if (!typed[ci] && sqlite3_column_type(st.stmt, c) != SQLITE_NULL) {
                table.columns[ci].type = adoTypeForValue(st.stmt, c);
                readers[ci] = readerFor(table.columns[ci].type);
                typed[ci] = true;
            }
            appendValue(st.stmt, c, readers[ci], dates, table.columns[ci]);
        }
        ++table.rowCount;
    }
    if (rc != SQLITE_DONE) {
        if (rc == SQLITE_INTERRUPT) throw failureFor(SQLITE_INTERRUPT, QStringLiteral("Query timeout expired"));
        fail(rc);
    }
    // A column that held only nulls and has no declared type reads as text.
    for (ResultColumn& column : table.columns) {
        column.finish();
        if (column.type == 0) column.type = adVarWChar;
    }
    return table;
}

void SqliteDriver::beginTrans(int timeoutSeconds) { execute(QStringLiteral("BEGIN"), timeoutSeconds); }

void SqliteDriver::commitTrans(int timeoutSeconds) { execute(QStringLiteral("COMMIT"), timeoutSeconds); }

void SqliteDriver::rollbackTrans(int timeoutSeconds) { execute(QStringLiteral("ROLLBACK"), timeoutSeconds); }

}  // namespace data::ado::sqlite

#include "data/ado/odbc/odbc_driver.h"

#include "data/ado/ado_constants.h"
#include "data/ado/faults.h"

#include <QDateTime>

#ifdef Q_OS_WIN
#define NOMINMAX  // <windows.h> must not turn std::max below into its macro
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace data::ado::odbc {

namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the ODBC wide character is UTF-16");

const QString kSource = QStringLiteral("ODBC");

std::u16string wide(const QString& text)
{
    return std::u16string(reinterpret_cast<const char16_t*>(text.utf16()), text.size());
}

SQLWCHAR* sqlw(std::u16string& text) { return reinterpret_cast<SQLWCHAR*>(text.data()); }

QString fromWide(const SQLWCHAR* text, qsizetype length)
{
    return QString(reinterpret_cast<const QChar*>(text), length);
}

// Every diagnostic record of a handle, one Error each.
std::vector<Error> diagnostics(SQLSMALLINT handleType, SQLHANDLE handle)
{
    std::vector<Error> errors;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLWCHAR state[6] = {};
        SQLINTEGER native = 0;
        SQLWCHAR message[1024];
        SQLSMALLINT length = 0;
        const SQLRETURN rc = SQLGetDiagRecW(handleType, handle, record, state, &native, message,
                                            SQLSMALLINT(std::size(message)), &length);
        if (rc != SQL_SUCCESS && rc != SQL_SUCCESS_WITH_INFO) break;
        Error error;
        error.SQLState = fromWide(state, 5);
        error.Number = hresultForSqlState(error.SQLState);
        error.Description = fromWide(message, std::min<qsizetype>(length, qsizetype(std::size(message)) - 1));
        error.Source = kSource;
        error.NativeError = native;
        errors.push_back(std::move(error));
    }
    return errors;
}

[[noreturn]] void fail(SQLSMALLINT handleType, SQLHANDLE handle, const QString& what)
{
    ProviderFailure failure{diagnostics(handleType, handle)};
    if (failure.errors.empty()) {
        Error error;
        error.Number = E_FAIL_;
        error.Description = what;
        error.Source = kSource;
        error.SQLState = QStringLiteral("HY000");
        failure.errors.push_back(error);
    }
    throw failure;
}

bool ok(SQLRETURN rc) { return rc == SQL_SUCCESS || rc == SQL_SUCCESS_WITH_INFO; }

class StatementHandle {
public:
    explicit StatementHandle(SQLHDBC dbc)
    {
        if (!ok(SQLAllocHandle(SQL_HANDLE_STMT, dbc, &stmt_)))
            fail(SQL_HANDLE_DBC, dbc, QStringLiteral("SQLAllocHandle(STMT) failed"));
    }
    ~StatementHandle() { SQLFreeHandle(SQL_HANDLE_STMT, stmt_); }
    StatementHandle(const StatementHandle&) = delete;
    StatementHandle& operator=(const StatementHandle&) = delete;

    SQLHSTMT get() const { return stmt_; }

    void run(const QString& sql, int timeoutSeconds)
    {
        // A driver that cannot bound a statement's time says so as a warning only.
        SQLSetStmtAttrW(stmt_, SQL_ATTR_QUERY_TIMEOUT,
                        reinterpret_cast<SQLPOINTER>(SQLULEN(std::max(0, timeoutSeconds))), SQL_IS_UINTEGER);
        std::u16string text = wide(sql);
        const SQLRETURN rc = SQLExecDirectW(stmt_, sqlw(text), SQLINTEGER(text.size()));
        if (!ok(rc) && rc != SQL_NO_DATA) fail(SQL_HANDLE_STMT, stmt_, QStringLiteral("SQLExecDirectW failed"));
    }

private:
    SQLHSTMT stmt_ = SQL_NULL_HSTMT;
};

enum class Fetch { Integer, Real, Bit, Text, DateTime, Decimal, Binary };

Fetch fetchFor(int sqlType, int decimals)
{
    switch (sqlType) {
    case SQL_INTEGER:
    case SQL_SMALLINT:
    case SQL_TINYINT:
    case SQL_BIGINT:
        return Fetch::Integer;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return Fetch::Real;
    case SQL_BIT:
        return Fetch::Bit;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return decimals == 0 ? Fetch::Decimal : Fetch::Real;
    case SQL_TYPE_TIMESTAMP:
    case SQL_TYPE_DATE:
    case SQL_TIMESTAMP:
    case SQL_DATE:  // also SQL_DATETIME
        return Fetch::DateTime;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
        return Fetch::Binary;
    default:
        return Fetch::Text;
    }
}

// A text cell, read in pieces so that long text is never cut. Null for NULL.
QVariant readText(SQLHSTMT stmt, SQLUSMALLINT col)
{
    QString text;
    SQLWCHAR buffer[2048];
    for (;;) {
        SQLLEN indicator = 0;
        const SQLRETURN rc = SQLGetData(stmt, col, SQL_C_WCHAR, buffer, sizeof buffer, &indicator);
        if (rc == SQL_NO_DATA) break;
        if (!ok(rc)) fail(SQL_HANDLE_STMT, stmt, QStringLiteral("SQLGetData failed"));
        if (indicator == SQL_NULL_DATA) return {};
        const qsizetype room = qsizetype(std::size(buffer)) - 1;
        const qsizetype got = (indicator == SQL_NO_TOTAL || indicator / qsizetype(sizeof(SQLWCHAR)) > room)
                                  ? room
                                  : indicator / qsizetype(sizeof(SQLWCHAR));
        text.append(fromWide(buffer, got));
        if (rc == SQL_SUCCESS) break;
    }
    return text;
}

QVariant readCell(SQLHSTMT stmt, SQLUSMALLINT col, Fetch fetch, DateTimeCache& dates)
{
    SQLLEN indicator = 0;
    switch (fetch) {
    case Fetch::Integer:
    case Fetch::Bit: {
        SQLBIGINT value = 0;
        if (!ok(SQLGetData(stmt, col, SQL_C_SBIGINT, &value, 0, &indicator)))
            fail(SQL_HANDLE_STMT, stmt, QStringLiteral("SQLGetData failed"));
        if (indicator == SQL_NULL_DATA) return {};
        if (fetch == Fetch::Bit) return QVariant(value != 0);
        if (value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max())
            return QVariant(int(value));
        return QVariant(qlonglong(value));
    }
    case Fetch::Real: {
        double value = 0;
        if (!ok(SQLGetData(stmt, col, SQL_C_DOUBLE, &value, 0, &indicator)))
            fail(SQL_HANDLE_STMT, stmt, QStringLiteral("SQLGetData failed"));
        if (indicator == SQL_NULL_DATA) return {};
        return QVariant(value);
    }
    case Fetch::Decimal: {
        const QVariant text = readText(stmt, col);
        if (text.isNull()) return {};
        bool isNumber = false;
        const qlonglong value = text.toString().trimmed().toLongLong(&isNumber);
        return isNumber ? QVariant(value) : QVariant(text.toString().toDouble());
    }
    case Fetch::DateTime: {
        // As text: SQL Server's datetimes and SQLite's stored text read the same way.
        const QVariant text = readText(stmt, col);
        if (text.isNull()) return {};
        const QVariant date = dates.parse(text.toString());
        return date.isValid() ? date : text;
    }
    case Fetch::Binary: {
        QByteArray bytes;
        char buffer[4096];
        for (;;) {
            const SQLRETURN rc = SQLGetData(stmt, col, SQL_C_BINARY, buffer, sizeof buffer, &indicator);
            if (rc == SQL_NO_DATA) break;
            if (!ok(rc)) fail(SQL_HANDLE_STMT, stmt, QStringLiteral("SQLGetData failed"));
            if (indicator == SQL_NULL_DATA) return {};
            const qsizetype got =
                (indicator == SQL_NO_TOTAL || indicator > SQLLEN(sizeof buffer)) ? qsizetype(sizeof buffer) : indicator;
            bytes.append(buffer, got);
            if (rc == SQL_SUCCESS) break;
        }
        return bytes;
    }
    case Fetch::Text:
        break;
    }
    return readText(stmt, col);
}

}  // namespace

int adoTypeForSqlType(int sqlType)
{
    switch (sqlType) {
    case SQL_INTEGER:
        return adInteger;
    case SQL_SMALLINT:
        return adSmallInt;
    case SQL_TINYINT:
        return adUnsignedTinyInt;
    case SQL_BIGINT:
        return adBigInt;
    case SQL_BIT:
        return adBoolean;
    case SQL_REAL:
        return adSingle;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return adDouble;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return adNumeric;
    case SQL_TYPE_DATE:
    case SQL_DATE:
        return adDBDate;
    case SQL_TYPE_TIME:
    case SQL_TIME:
        return adDBTime;
    case SQL_TYPE_TIMESTAMP:
    case SQL_TIMESTAMP:
        return adDBTimeStamp;
    case SQL_CHAR:
        return adChar;
    case SQL_VARCHAR:
        return adVarChar;
    case SQL_LONGVARCHAR:
        return adLongVarChar;
    case SQL_WCHAR:
        return adWChar;
    case SQL_WVARCHAR:
        return adVarWChar;
    case SQL_WLONGVARCHAR:
        return adLongVarWChar;
    case SQL_GUID:
        return adGUID;
    case SQL_BINARY:
        return adBinary;
    case SQL_VARBINARY:
        return adVarBinary;
    case SQL_LONGVARBINARY:
        return adLongVarBinary;
    default:
        return adVarWChar;
    }
}

OdbcDriver::OdbcDriver(QString connectString) : connectString_(std::move(connectString)) {}

OdbcDriver::~OdbcDriver() { close(); }

void OdbcDriver::open()
{
    close();
    if (!ok(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env_))) {
        env_ = nullptr;
        throw ProviderFailure{{Error{E_FAIL_, QStringLiteral("ODBC environment could not be created"), kSource,
                                     QStringLiteral("HY001"), 0}}};
    }
    SQLSetEnvAttr(env_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    if (!ok(SQLAllocHandle(SQL_HANDLE_DBC, env_, &dbc_))) {
        dbc_ = nullptr;
        try {
            fail(SQL_HANDLE_ENV, env_, QStringLiteral("ODBC connection could not be created"));
        } catch (...) {
            close();
            throw;
        }
    }
    SQLSetConnectAttrW(dbc_, SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(SQLULEN(kConnectionTimeout)), 0);
    std::u16string text = wide(connectString_);
    SQLWCHAR out[1024];
    SQLSMALLINT outLength = 0;
    const SQLRETURN rc = SQLDriverConnectW(dbc_, nullptr, sqlw(text), SQLSMALLINT(text.size()), out,
                                           SQLSMALLINT(std::size(out)), &outLength, SQL_DRIVER_NOPROMPT);
    if (!ok(rc)) {
        try {
            fail(SQL_HANDLE_DBC, dbc_, QStringLiteral("SQLDriverConnectW failed"));
        } catch (...) {
            close();
            throw;
        }
    }
    connected_ = true;
    SQLWCHAR name[128] = {};
    SQLSMALLINT nameLength = 0;
    if (ok(SQLGetInfoW(dbc_, SQL_DBMS_NAME, name, sizeof name, &nameLength)))
        sqlite_ = fromWide(name, nameLength / SQLSMALLINT(sizeof(SQLWCHAR))).contains(u"SQLite", Qt::CaseInsensitive);
}

void OdbcDriver::close()
{
    if (dbc_) {
        if (connected_) SQLDisconnect(dbc_);
        SQLFreeHandle(SQL_HANDLE_DBC, dbc_);
        dbc_ = nullptr;
    }
    if (env_) {
        SQLFreeHandle(SQL_HANDLE_ENV, env_);
        env_ = nullptr;
    }
    connected_ = false;
}

QString OdbcDriver::defaultDatabase()
{
    SQLWCHAR name[256] = {};
    SQLINTEGER length = 0;
    if (!ok(SQLGetConnectAttrW(dbc_, SQL_ATTR_CURRENT_CATALOG, name, sizeof name, &length))) return {};
    return fromWide(name, std::min<qsizetype>(length / qsizetype(sizeof(SQLWCHAR)), qsizetype(std::size(name)) - 1));
}

qint64 OdbcDriver::execute(const QString& sql, int timeoutSeconds)
{
    StatementHandle stmt(dbc_);
    stmt.run(sql, timeoutSeconds);
    qint64 changed = 0;
    // A batch reports each statement's count; the total is what the caller changed.
    for (;;) {
        SQLLEN count = 0;
        if (ok(SQLRowCount(stmt.get(), &count)) && count > 0) changed += count;
        const SQLRETURN rc = SQLMoreResults(stmt.get());
        if (rc == SQL_NO_DATA) break;
        if (!ok(rc)) fail(SQL_HANDLE_STMT, stmt.get(), QStringLiteral("SQLMoreResults failed"));
    }
    return changed;
}

ResultTable OdbcDriver::query(const QString& sql, int timeoutSeconds)
{
    StatementHandle stmt(dbc_);
    stmt.run(sql, timeoutSeconds);
    ResultTable table;
    SQLSMALLINT columnCount = 0;
    if (!ok(SQLNumResultCols(stmt.get(), &columnCount)))
        fail(SQL_HANDLE_STMT, stmt.get(), QStringLiteral("SQLNumResultCols failed"));
    table.columns.resize(size_t(columnCount));
    std::vector<Fetch> fetches(size_t(columnCount), Fetch::Text);
    for (SQLUSMALLINT c = 1; c <= SQLUSMALLINT(columnCount); ++c) {
        SQLWCHAR name[256] = {};
        SQLSMALLINT nameLength = 0, sqlType = 0, decimals = 0, nullable = 0;
        SQLULEN size = 0;
        if (!ok(SQLDescribeColW(stmt.get(), c, name, SQLSMALLINT(std::size(name)), &nameLength, &sqlType, &size,
                                &decimals, &nullable)))
            fail(SQL_HANDLE_STMT, stmt.get(), QStringLiteral("SQLDescribeColW failed"));
        ResultColumn& column = table.columns[c - 1];
        column.name = fromWide(name, std::min<qsizetype>(nameLength, qsizetype(std::size(name)) - 1));
        column.type = adoTypeForSqlType(sqlType);
        fetches[c - 1] = fetchFor(sqlType, decimals);
        // SQLite keeps text of any length in any column: its text is Unicode text.
        if (sqlite_ && fetches[c - 1] == Fetch::Text) column.type = adVarWChar;
    }
    DateTimeCache dates;
    size_t capacity = 0;
    for (;;) {
        const SQLRETURN rc = SQLFetch(stmt.get());
        if (rc == SQL_NO_DATA) break;
        if (!ok(rc)) fail(SQL_HANDLE_STMT, stmt.get(), QStringLiteral("SQLFetch failed"));
        if (size_t(table.rowCount) == capacity) {
            capacity = capacity ? capacity * 2 : 256;
            for (ResultColumn& column : table.columns) column.reserve(capacity);
        }
        for (SQLUSMALLINT c = 1; c <= SQLUSMALLINT(columnCount); ++c)
            table.columns[c - 1].append(readCell(stmt.get(), c, fetches[c - 1], dates));
        ++table.rowCount;
    }
    for (ResultColumn& column : table.columns) column.finish();
    return table;
}

void OdbcDriver::beginTrans(int)
{
    if (!ok(SQLSetConnectAttrW(dbc_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQLULEN(SQL_AUTOCOMMIT_OFF)),
                               SQL_IS_UINTEGER)))
        fail(SQL_HANDLE_DBC, dbc_, QStringLiteral("BeginTrans failed"));
}

void OdbcDriver::endTransaction(bool commit)
{
    const SQLRETURN rc = SQLEndTran(SQL_HANDLE_DBC, dbc_, commit ? SQL_COMMIT : SQL_ROLLBACK);
    if (!ok(rc))
        fail(SQL_HANDLE_DBC, dbc_,
             commit ? QStringLiteral("CommitTrans failed") : QStringLiteral("RollbackTrans failed"));
    if (!ok(SQLSetConnectAttrW(dbc_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQLULEN(SQL_AUTOCOMMIT_ON)),
                               SQL_IS_UINTEGER)))
        fail(SQL_HANDLE_DBC, dbc_, QStringLiteral("autocommit could not be restored"));
}

void OdbcDriver::commitTrans(int) { endTransaction(true); }

void OdbcDriver::rollbackTrans(int) { endTransaction(false); }

}  // namespace data::ado::odbc

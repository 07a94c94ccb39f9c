#include "data/ado/connection.h"

#include "app/globals.h"
#include "data/ado/connection_string.h"
#include "data/ado/faults.h"
#include "data/ado/japanese_collation.h"
#include "data/ado/odbc/odbc_driver.h"
#include "data/ado/sqlite/sqlite_driver.h"
#include "data/ado/sqlite_dialect.h"

namespace data::ado {

namespace {

std::unique_ptr<Driver> makeDriver(const QString& connectionString)
{
    const DriverTarget target = chooseDriver(connectionString, app::gsAppPath, defaultOdbcDriverName());
    if (target.kind == DriverTarget::Kind::Sqlite) return std::make_unique<sqlite::SqliteDriver>(target.sqlitePath);
    return std::make_unique<odbc::OdbcDriver>(target.odbcConnectString);
}

ProviderFailure transactionFailure(qint32 number, const QString& text)
{
    return {{Error{number, text, QStringLiteral("ADO"), QStringLiteral("25000"), 0}}};
}

}  // namespace

Connection::Connection() : clock_([] { return QDateTime::currentDateTime(); }) {}

Connection::~Connection() = default;

template <typename F>
auto Connection::guarded(F&& call) -> decltype(call())
{
    try {
        return call();
    } catch (ProviderFailure& failure) {
        const base::VbError fault = fault::fromProvider(failure);
        errors_.replace(std::move(failure.errors));
        throw fault;
    }
}

Driver& Connection::openDriver()
{
    if (!driver_) throw fault::connectionInvalid();
    return *driver_;
}

void Connection::Open(const QString& connectionString, const QString& userId, const QString& password, int options)
{
    if (driver_) throw fault::objectOpen();
    QString text = connectionString;
    if (!userId.isEmpty()) text += QStringLiteral(";User ID=") + userId;
    if (!password.isEmpty()) text += QStringLiteral(";Password=") + password;
    // Every SQLite connection of the process compares text as the clinic's server does,
    // whichever driver opens it.
    registerJapaneseCollation();
    std::unique_ptr<Driver> driver = makeDriver(text);
    guarded([&] { driver->open(); });
    driver_ = std::move(driver);
    connectionString_ = connectionString;
    transactionLevel_ = 0;
}

void Connection::Close()
{
    if (!driver_) throw fault::objectClosed();
    driver_.reset();
    transactionLevel_ = 0;
}

QString Connection::forServer(const QString& sql) const
{
    return driver_->speaksSqlite() ? toSqliteDialect(sql, clock_()) : sql;
}

void Connection::Execute(const QString& commandText, qint32& recordsAffected, int options)
{
    Driver& driver = openDriver();
    const QString sql = forServer(commandText);
    const qint64 changed = guarded([&] { return driver.execute(sql, commandTimeout_); });
    recordsAffected = static_cast<qint32>(changed);
}

ResultTable Connection::fetch(const QString& sql)
{
    Driver& driver = openDriver();
    const QString text = forServer(sql);
    return guarded([&] {
        try {
            return driver.query(text, commandTimeout_);
        } catch (const ProviderFailure& failure) {
            // SQL Server takes a name in ORDER BY from the select list first.
            const bool ambiguous = driver.speaksSqlite() && !failure.errors.empty() &&
                                   isAmbiguousColumnMessage(failure.errors.front().Description);
            const QString outer = ambiguous ? orderByOverSelect(text) : QString();
            if (outer.isEmpty()) throw;
            return driver.query(outer, commandTimeout_);
        }
    });
}

int Connection::BeginTrans()
{
    Driver& driver = openDriver();
    if (transactionLevel_ > 0)
        guarded([&]() -> void {
            throw transactionFailure(
                XACT_E_XTIONEXISTS,
                QStringLiteral("このセッションでは、トランザクションは 1 つしかアクティブにできません。"));
        });
    guarded([&] { driver.beginTrans(commandTimeout_); });
    transactionLevel_ = 1;
    return transactionLevel_;
}

void Connection::CommitTrans()
{
    Driver& driver = openDriver();
    if (transactionLevel_ == 0)
        guarded([&]() -> void {
            throw transactionFailure(XACT_E_NOTRANSACTION,
                                     QStringLiteral("アクティブなトランザクションがありません。"));
        });
    guarded([&] { driver.commitTrans(commandTimeout_); });
    transactionLevel_ = 0;
}

void Connection::RollbackTrans()
{
    Driver& driver = openDriver();
    if (transactionLevel_ == 0)
        guarded([&]() -> void {
            throw transactionFailure(XACT_E_NOTRANSACTION,
                                     QStringLiteral("アクティブなトランザクションがありません。"));
        });
    transactionLevel_ = 0;
    guarded([&] { driver.rollbackTrans(commandTimeout_); });
}

void Connection::setCommandTimeout(int seconds)
{
    if (seconds < 0) throw fault::badArguments();
    commandTimeout_ = seconds;
}

QString Connection::DefaultDatabase() const { return driver_ ? driver_->defaultDatabase() : QString(); }

}  // namespace data::ado

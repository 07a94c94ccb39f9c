#pragma once
// An ADO-like connection over one of our drivers: Open, Close, State, Execute,
// transactions, CommandTimeout, DefaultDatabase and the provider's Errors.
//
// Like ADO, a failed call raises a fault (base::VbError) with the first provider
// error's number and text, and leaves all provider errors in Errors() until the next
// failure or Clear().

#include "data/ado/ado_constants.h"
#include "data/ado/driver.h"
#include "data/ado/errors.h"

#include <QDateTime>

#include <functional>
#include <memory>

namespace data::ado {

class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Chooses the driver from the string (see chooseDriver) and connects. A fault when
    // the string is malformed, names no provider we have, or the server refuses.
    void Open(const QString& connectionString, const QString& userId = {}, const QString& password = {},
              int options = adOptionUnspecified);
    // A fault (3704) when the connection is not open.
    void Close();
    int State() const { return driver_ ? adStateOpen : adStateClosed; }

    // Runs a statement that returns no rows; recordsAffected gets the rows changed.
    void Execute(const QString& commandText, qint32& recordsAffected, int options = adOptionUnspecified);
    // Returns the new nesting level, 1.
    int BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    int CommandTimeout() const { return commandTimeout_; }
    // A fault (3001) for a negative number; 0 means no limit.
    void setCommandTimeout(int seconds);
    // The database: the current catalog of the server, or the SQLite file's name.
    QString DefaultDatabase() const;
    const QString& ConnectionString() const { return connectionString_; }

    ado::Errors& Errors() { return errors_; }
    const ado::Errors& Errors() const { return errors_; }

    // The rows of a query, all fetched: what Recordset::Open reads.
    ResultTable fetch(const QString& sql);

    // The time GetDate() stands for where the server is SQLite; the clock by default.
    void setClock(std::function<QDateTime()> clock) { clock_ = std::move(clock); }

private:
    Driver& openDriver();
    QString forServer(const QString& sql) const;
    template <typename F>
    auto guarded(F&& call) -> decltype(call());

    std::unique_ptr<Driver> driver_;
    QString connectionString_;
    int commandTimeout_ = kDefaultCommandTimeout;
    int transactionLevel_ = 0;
    ado::Errors errors_;
    std::function<QDateTime()> clock_;
};

}  // namespace data::ado

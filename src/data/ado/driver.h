#pragma once
// What the ADO surface asks of a database driver. Each driver reports a failure by
// throwing ProviderFailure with all its diagnostic records.

#include <QString>
#include <QHash>
#include <QVariant>

#include <vector>

namespace data::ado {

// One column of a result, all rows: fetched at once for a client-side recordset.
struct ResultColumn {
    QString name;
    int type = 0;  // ADO DataTypeEnum
    std::vector<QVariant> values;
};

struct ResultTable {
    std::vector<ResultColumn> columns;
    qsizetype rowCount = 0;
};

class Driver {
public:
    virtual ~Driver() = default;

    virtual void open() = 0;
    virtual void close() = 0;
    // Whether the server is SQLite, so that the program's T-SQL needs the dialect step.
    virtual bool speaksSqlite() const = 0;
    virtual QString defaultDatabase() = 0;
    // Runs a statement that returns no rows; the number of rows it changed.
    // timeoutSeconds 0 means no limit.
    virtual qint64 execute(const QString& sql, int timeoutSeconds) = 0;
    virtual ResultTable query(const QString& sql, int timeoutSeconds) = 0;
    // A transaction step waits for locks no longer than a statement would.
    virtual void beginTrans(int timeoutSeconds) = 0;
    virtual void commitTrans(int timeoutSeconds) = 0;
    virtual void rollbackTrans(int timeoutSeconds) = 0;
};

// Parses the text of a stored datetime, 'YYYY/MM/DD' or 'YYYY/MM/DD HH:MM:SS' (also with
// '-' and a fraction of seconds, as SQL Server gives it). Null when it is none of these.
QVariant parseStoredDateTime(QStringView text);

// parseStoredDateTime for a whole result: one date seen again costs a lookup, not
// another conversion to local time.
class DateTimeCache {
public:
    QVariant parse(QStringView text);

private:
    QHash<qint64, QVariant> seen_;
};

}  // namespace data::ado

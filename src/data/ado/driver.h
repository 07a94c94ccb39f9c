#pragma once
// What the ADO surface asks of a database driver. Each driver reports a failure by
// throwing ProviderFailure with all its diagnostic records.

#include <QString>
#include <QHash>
#include <QVariant>

#include <vector>

namespace data::ado {

// One column of a result, all rows: fetched at once for a client-side recordset. A list
// of many thousand rows would hold a QVariant and a string of its own for every cell,
// so the values are held compactly instead: numbers in place, texts as UTF-16 in one
// buffer of the column, and anything else (datetimes, booleans, bytes) as QVariants.
// A value becomes a QVariant when it is read.
class ResultColumn {
public:
    QString name;
    int type = 0;  // ADO DataTypeEnum

    qsizetype size() const { return qsizetype(cells_.size()); }
    void reserve(size_t rows) { cells_.reserve(rows); }

    void append(const QVariant& value);
    void appendNull() { cells_.push_back({0, 0, Kind::Null}); }
    void appendInteger(qint64 value);
    void appendDouble(double value);
    void appendText(QStringView text);
    // UTF-8 bytes, decoded straight into the column's buffer; bad bytes become U+FFFD.
    void appendUtf8(const char* data, qsizetype bytes);

    QVariant value(qsizetype row) const;
    // A text value in place, without a QVariant or a copy; false for any other kind.
    // The view holds while the column lives.
    bool textAt(qsizetype row, QStringView& text) const;

private:
    enum class Kind : quint8 { Null, Integer, Double, Text, Other };
    struct Cell {
        quint64 payload;  // the number, its bits, the text's offset, or the index in others_
        quint32 length;   // UTF-16 units of a text
        Kind kind;
    };
    void appendTextCell(qsizetype offset, qsizetype length);

    std::vector<Cell> cells_;
    std::vector<char16_t> texts_;
    std::vector<QVariant> others_;
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

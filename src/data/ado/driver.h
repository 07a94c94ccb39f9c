#pragma once
// What the ADO surface asks of a database driver. Each driver reports a failure by
// throwing ProviderFailure with all its diagnostic records.

#include <QHash>
#include <QString>
#include <QVariant>

#include <vector>

namespace data::ado {

// The texts of a column that recur (one post code for a district, the blanks of an
// unused number, one care office): each is held once, and read into one string that
// its rows share. Only short texts are looked for, in a fixed table of recent ones, so
// a lookup allocates nothing; a column of mostly distinct texts (names) stops looking
// after its first rows.
class RecurringTexts {
public:
    // The cell of an equal text seen lately, from the bytes the text came from; -1
    // when there is none, and then remember() is to tell the new text's cell.
    qsizetype find(const void* data, qsizetype bytes);
    void remember(qsizetype cell);
    // The rows are all in: the table of recent texts is let go.
    void stopLooking();
    // The string for a recurring text, made at its first reading.
    QString shared(qsizetype offset, QStringView text) const;

private:
    static constexpr qsizetype kLongest = 48;  // bytes
    static constexpr size_t kSlots = 512;
    static constexpr int kTrial = 512;
    struct Slot {
        qsizetype bytes = -1;
        char data[kLongest];
        qsizetype cell = -1;
    };
    struct Made {
        qsizetype offset = -1;
        QString text;
    };
    std::vector<Slot> slots_;
    Slot* pending_ = nullptr;
    int hits_ = 0;
    int misses_ = 0;
    bool looking_ = true;
    mutable std::vector<Made> made_;
};

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

    // Every row is in.
    void finish() { recurring_.stopLooking(); }

    QVariant value(qsizetype row) const;
    // A text value in place, without a QVariant or a copy; false for any other kind,
    // and for a recurring text, whose value() hands out its one shared string. The
    // view holds while the column lives.
    bool textAt(qsizetype row, QStringView& text) const;

private:
    enum class Kind : quint8 { Null, Integer, Double, Text, SharedText, Other };
    struct Cell {
        quint64 payload;  // the number, its bits, the text's offset, or the index in others_
        quint32 length;   // UTF-16 units of a text
        Kind kind;
    };
    // The text of data (its bytes in whichever encoding) when it recurs, else nothing.
    bool appendRecurring(const void* data, qsizetype bytes);
    void appendTextCell(qsizetype offset, qsizetype length);
    QStringView textOf(const Cell& cell) const { return {texts_.data() + cell.payload, qsizetype(cell.length)}; }

    std::vector<Cell> cells_;
    std::vector<char16_t> texts_;
    std::vector<QVariant> others_;
    RecurringTexts recurring_;
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

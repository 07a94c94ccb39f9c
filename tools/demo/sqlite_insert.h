#pragma once
// Rows into one table through one prepared INSERT, set by column name. Unset columns
// go in as NULL; after each row every value is NULL again.

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <stdexcept>
#include <unordered_map>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace demo {

// A failure of the database while the demo is built; the text is SQLite's.
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Runs statements that return nothing (PRAGMA, BEGIN, CREATE INDEX ...).
void execute(sqlite3* db, const QString& sql);

class Insert {
public:
    Insert(sqlite3* db, const QString& table, const QStringList& columns);
    ~Insert();
    Insert(const Insert&) = delete;
    Insert& operator=(const Insert&) = delete;

    Insert& set(const char* column, std::int64_t value);
    Insert& set(const char* column, int value) { return set(column, std::int64_t{value}); }
    Insert& set(const char* column, double value);
    Insert& set(const char* column, const QString& value);
    // An empty text stays NULL: the suite leaves unknown fields empty.
    Insert& text(const char* column, const QString& value);

    // Writes the row and clears the values.
    void row();

private:
    using Value = std::variant<std::monostate, std::int64_t, double, QString>;
    std::size_t indexOf(const char* column) const;

    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
    QString table_;
    QHash<QString, std::size_t> index_;
    // Callers name columns by literals, so the place of each is remembered by address.
    mutable std::unordered_map<const char*, std::size_t> byAddress_;
    std::vector<Value> values_;
};

}  // namespace demo

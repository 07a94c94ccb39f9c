#pragma once
// A SQLite file as a test sees it from outside the code under test: statements run on
// it, and a read-only view of single values, one column as a list, and a whole table
// as text.

#include <QString>
#include <QStringList>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace sealtest {

// Runs SQL on a SQLite file (UTF-8 statements; several at once); throws with SQLite's
// message when a statement fails.
inline void execSql(const QString& file, const QString& sql)
{
    sqlite3* db = nullptr;
    if (sqlite3_open(file.toUtf8().constData(), &db) != SQLITE_OK) {
        sqlite3_close(db);
        throw std::runtime_error("cannot open fixture database");
    }
    char* message = nullptr;
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &message);
    const std::string text = message ? message : "";
    sqlite3_free(message);
    sqlite3_close(db);
    if (rc != SQLITE_OK) throw std::runtime_error("fixture SQL failed: " + text + "\n" + sql.toStdString());
}

class SqliteReader {
public:
    explicit SqliteReader(const QString& path)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &db_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
            ADD_FAILURE() << "cannot open " << path.toStdString();
    }
    ~SqliteReader() { sqlite3_close(db_); }
    SqliteReader(const SqliteReader&) = delete;
    SqliteReader& operator=(const SqliteReader&) = delete;

    // Every value of the first column; NULL as nullText.
    QStringList column(const QString& sql, const QString& nullText = {}) const
    {
        QStringList values;
        sqlite3_stmt* st = prepare(sql);
        if (!st) return values;
        while (sqlite3_step(st) == SQLITE_ROW)
            values << (sqlite3_column_type(st, 0) == SQLITE_NULL ? nullText : text(st, 0));
        sqlite3_finalize(st);
        return values;
    }

    long long number(const QString& sql) const
    {
        sqlite3_stmt* st = prepare(sql);
        long long value = -1;
        if (st && sqlite3_step(st) == SQLITE_ROW)
            value = sqlite3_column_int64(st, 0);
        else
            ADD_FAILURE() << "no row from " << sql.toStdString();
        sqlite3_finalize(st);
        return value;
    }

    // A table's rows in stored order, each value tagged with its storage class.
    QString dump(const QString& table) const
    {
        QString out;
        sqlite3_stmt* st = prepare(QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" ORDER BY rowid"));
        if (!st) return out;
        const int columns = sqlite3_column_count(st);
        while (sqlite3_step(st) == SQLITE_ROW) {
            for (int i = 0; i < columns; ++i)
                out += QString::number(sqlite3_column_type(st, i)) + QLatin1Char(':') + text(st, i) + QLatin1Char('|');
            out += QLatin1Char('\n');
        }
        sqlite3_finalize(st);
        return out;
    }

    QStringList tables() const
    {
        return column(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' "
                                     "AND name NOT LIKE 'sqlite%' ORDER BY name"));
    }

private:
    sqlite3_stmt* prepare(const QString& sql) const
    {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db_) << "\n" << sql.toStdString();
            return nullptr;
        }
        return st;
    }

    static QString text(sqlite3_stmt* st, int i)
    {
        const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
        return p ? QString::fromUtf8(p) : QString();
    }

    sqlite3* db_ = nullptr;
};

}  // namespace sealtest

#pragma once
// Read-only access to a SQLite database a test did not write itself (a generated demo
// database): single values, one column as a list, and a whole table as text.

#include <QString>
#include <QStringList>

#include <sqlite3.h>

#include <gtest/gtest.h>

namespace sealtest {

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

    // Every value of the first column, NULL as an empty text.
    QStringList column(const QString& sql) const
    {
        QStringList values;
        sqlite3_stmt* st = prepare(sql);
        if (!st) return values;
        while (sqlite3_step(st) == SQLITE_ROW) values << text(st, 0);
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

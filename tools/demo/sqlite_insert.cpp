#include "sqlite_insert.h"

#include <sqlite3.h>

namespace demo {

void execute(sqlite3* db, const QString& sql)
{
    char* message = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        const std::string text = message ? message : sqlite3_errmsg(db);
        sqlite3_free(message);
        throw DatabaseError(text + " [" + sql.toStdString() + "]");
    }
}

Insert::Insert(sqlite3* db, const QString& table, const QStringList& columns)
        : db_(db), table_(table), values_(static_cast<std::size_t>(columns.size()))
{
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        index_.insert(columns.at(i).toLower(), static_cast<std::size_t>(i));
        marks << QStringLiteral("?");
    }
    const QString sql = QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") +
                        columns.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (") +
                        marks.join(QStringLiteral(", ")) + QStringLiteral(")");
    if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &stmt_, nullptr) != SQLITE_OK)
        throw DatabaseError(std::string(sqlite3_errmsg(db_)) + " [" + sql.toStdString() + "]");
}

Insert::~Insert() { sqlite3_finalize(stmt_); }

std::size_t Insert::indexOf(const char* column) const
{
    if (const auto known = byAddress_.find(column); known != byAddress_.end()) return known->second;
    const auto it = index_.constFind(QString::fromLatin1(column).toLower());
    if (it == index_.constEnd())
        throw DatabaseError("no column " + std::string(column) + " in the insert into " + table_.toStdString());
    byAddress_.emplace(column, it.value());
    return it.value();
}

Insert& Insert::set(const char* column, std::int64_t value)
{
    values_[indexOf(column)] = value;
    return *this;
}

Insert& Insert::set(const char* column, double value)
{
    values_[indexOf(column)] = value;
    return *this;
}

Insert& Insert::set(const char* column, const QString& value)
{
    values_[indexOf(column)] = value;
    return *this;
}

Insert& Insert::text(const char* column, const QString& value)
{
    if (!value.isEmpty()) set(column, value);
    return *this;
}

void Insert::row()
{
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const int slot = static_cast<int>(i) + 1;
        Value& v = values_[i];
        if (const auto* n = std::get_if<std::int64_t>(&v)) {
            sqlite3_bind_int64(stmt_, slot, *n);
        } else if (const auto* d = std::get_if<double>(&v)) {
            sqlite3_bind_double(stmt_, slot, *d);
        } else if (const auto* s = std::get_if<QString>(&v)) {
            const QByteArray utf8 = s->toUtf8();
            sqlite3_bind_text(stmt_, slot, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
        } else {
            sqlite3_bind_null(stmt_, slot);
        }
        v = std::monostate{};
    }
    if (sqlite3_step(stmt_) != SQLITE_DONE) {
        const std::string text = sqlite3_errmsg(db_);
        sqlite3_reset(stmt_);
        throw DatabaseError(text + " (" + table_.toStdString() + ")");
    }
    sqlite3_reset(stmt_);
}

}  // namespace demo

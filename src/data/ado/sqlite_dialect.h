#pragma once
// The program's SQL is T-SQL as SQL Server takes it. Where the server is SQLite, this
// step rewrites the few things SQLite lacks, outside string literals, and nothing else.

#include <QDateTime>
#include <QString>

namespace data::ado {

// isnull( -> ifnull(; GetDate() -> the given time as text 'YYYY/MM/DD HH:MM:SS' (how
// datetimes are stored); CONVERT(VARCHAR, x, 112) -> x's date as yyyymmdd text.
QString toSqliteDialect(QStringView sql, const QDateTime& now);

// SQL Server resolves a name in ORDER BY against the select list first; SQLite calls
// it ambiguous when several joined tables have it. The same statement, ordered by an
// outer select over the original one, where every name is a result column. Empty when
// the statement has no ORDER BY at its outermost level.
QString orderByOverSelect(QStringView sql);

// True when a failure text of SQLite is the ambiguity orderByOverSelect resolves.
bool isAmbiguousColumnMessage(const QString& message);

}  // namespace data::ado

#include "data/ado/read_safety.h"

#include "data/ado/sql_tokens.h"

#include <array>

namespace data::ado {

namespace {

// Words that begin or carry a statement of their own; none is a column or table name
// of this database. INTO covers SELECT ... INTO, which creates a table.
constexpr std::array<QStringView, 27> kVerbs = {
    u"insert",  u"update", u"delete", u"merge",  u"truncate", u"drop",    u"create",   u"alter",      u"exec",
    u"execute", u"grant",  u"revoke", u"deny",   u"backup",   u"restore", u"shutdown", u"dbcc",       u"use",
    u"declare", u"set",    u"begin",  u"commit", u"rollback", u"waitfor", u"into",     u"openrowset", u"attach",
};

QString literalText(QStringView sql, const SqlToken& t)
{
    return sql.mid(t.pos, 1) == u"'" ? QStringLiteral("読み取りの SQL の文字列 (') が閉じていません。")
                                     : QStringLiteral("読み取りの SQL の引用符または注釈が閉じていません。");
}

}  // namespace

QString readSafetyViolation(QStringView sql)
{
    const std::vector<SqlToken> tokens = tokenizeSql(sql);
    bool seenFirst = false;
    for (const SqlToken& t : tokens) {
        switch (t.kind) {
        case SqlTokenKind::Unterminated:
            if (sql.mid(t.pos, 2) == u"/*")
                return QStringLiteral("読み取りの SQL に注釈 ('--' または '/*') があります。"
                                      "読み取りで実行できるのは SELECT 文一つだけです。");
            return literalText(sql, t);
        case SqlTokenKind::LineComment:
        case SqlTokenKind::BlockComment:
            return QStringLiteral("読み取りの SQL に注釈 ('--' または '/*') があります。"
                                  "読み取りで実行できるのは SELECT 文一つだけです。");
        case SqlTokenKind::Space:
            continue;
        case SqlTokenKind::Punct:
            if (sql[t.pos] == u';')
                return QStringLiteral("読み取りの SQL に ';' があります。"
                                      "読み取りで実行できるのは SELECT 文一つだけです。");
            break;
        case SqlTokenKind::Word:
            if (!seenFirst && !isWord(sql, t, u"select"))
                return QStringLiteral("読み取りの SQL が SELECT 文ではありません。");
            for (QStringView verb : kVerbs) {
                if (isWord(sql, t, verb))
                    return QStringLiteral("読み取りの SQL に SELECT 以外の命令 (%1) があります。")
                        .arg(tokenText(sql, t).toString());
            }
            break;
        default:
            break;
        }
        if (!seenFirst && t.kind != SqlTokenKind::Word)
            return QStringLiteral("読み取りの SQL が SELECT 文ではありません。");
        seenFirst = true;
    }
    if (!seenFirst) return QStringLiteral("読み取りの SQL が空です。");
    return {};
}

}  // namespace data::ado

#pragma once
// A T-SQL text cut into tokens, so that rewrites and checks never look inside a
// string literal, a quoted name or a comment.

#include <QStringView>

#include <vector>

namespace data::ado {

enum class SqlTokenKind {
    Word,  // a name or keyword (letters, digits, _, @, #, $; any non-ASCII letter)
    Number,
    String,      // '...' with '' inside
    QuotedName,  // "..." or [...]
    Space,
    LineComment,   // -- to the end of the line
    BlockComment,  // /* ... */
    Unterminated,  // a literal, quoted name or block comment that runs to the end
    Punct,         // any other single character
};

struct SqlToken {
    SqlTokenKind kind;
    qsizetype pos;
    qsizetype len;
};

std::vector<SqlToken> tokenizeSql(QStringView sql);

// The index of the next token after i that is not blank or a comment, or tokens.size().
size_t nextSignificant(const std::vector<SqlToken>& tokens, size_t i);

inline QStringView tokenText(QStringView sql, const SqlToken& t) { return sql.mid(t.pos, t.len); }

inline bool isWord(QStringView sql, const SqlToken& t, QStringView word)
{
    return t.kind == SqlTokenKind::Word && tokenText(sql, t).compare(word, Qt::CaseInsensitive) == 0;
}

inline bool isPunct(QStringView sql, const SqlToken& t, char16_t c)
{
    return t.kind == SqlTokenKind::Punct && sql[t.pos] == c;
}

}  // namespace data::ado

#include "data/ado/sql_tokens.h"

namespace data::ado {

namespace {

bool isWordStart(QChar c) { return c.isLetter() || c == u'_' || c == u'@' || c == u'#' || c.unicode() >= 0x80; }

bool isWordPart(QChar c) { return isWordStart(c) || c.isDigit() || c == u'$'; }

// The end of a quoted run that starts at i with the opening quote; a doubled closing
// quote stands for itself. Returns -1 when the run never closes.
qsizetype quotedEnd(QStringView sql, qsizetype i, QChar close)
{
    qsizetype j = i + 1;
    while (j < sql.size()) {
        if (sql[j] == close) {
            if (j + 1 < sql.size() && sql[j + 1] == close) {
                j += 2;
                continue;
            }
            return j + 1;
        }
        ++j;
    }
    return -1;
}

}  // namespace

std::vector<SqlToken> tokenizeSql(QStringView sql)
{
    std::vector<SqlToken> tokens;
    tokens.reserve(static_cast<size_t>(sql.size() / 3 + 4));
    const qsizetype n = sql.size();
    qsizetype i = 0;
    auto push = [&](SqlTokenKind kind, qsizetype end) {
        tokens.push_back({kind, i, end - i});
        i = end;
    };
    while (i < n) {
        const QChar c = sql[i];
        const QChar next = i + 1 < n ? sql[i + 1] : QChar();
        if (c.isSpace()) {
            qsizetype j = i + 1;
            while (j < n && sql[j].isSpace()) ++j;
            push(SqlTokenKind::Space, j);
        } else if (c == u'\'' || c == u'"' || c == u'[') {
            const QChar close = c == u'[' ? QChar(u']') : c;
            const qsizetype end = quotedEnd(sql, i, close);
            if (end < 0)
                push(SqlTokenKind::Unterminated, n);
            else
                push(c == u'\'' ? SqlTokenKind::String : SqlTokenKind::QuotedName, end);
        } else if (c == u'-' && next == u'-') {
            qsizetype j = i + 2;
            while (j < n && sql[j] != u'\n' && sql[j] != u'\r') ++j;
            push(SqlTokenKind::LineComment, j);
        } else if (c == u'/' && next == u'*') {
            const qsizetype close = sql.indexOf(u"*/", i + 2);
            if (close < 0)
                push(SqlTokenKind::Unterminated, n);
            else
                push(SqlTokenKind::BlockComment, close + 2);
        } else if (c.isDigit()) {
            qsizetype j = i + 1;
            while (j < n && (sql[j].isDigit() || sql[j] == u'.')) ++j;
            push(SqlTokenKind::Number, j);
        } else if (isWordStart(c)) {
            qsizetype j = i + 1;
            while (j < n && isWordPart(sql[j])) ++j;
            push(SqlTokenKind::Word, j);
        } else {
            push(SqlTokenKind::Punct, i + 1);
        }
    }
    return tokens;
}

size_t nextSignificant(const std::vector<SqlToken>& tokens, size_t i)
{
    size_t j = i + 1;
    while (j < tokens.size() && (tokens[j].kind == SqlTokenKind::Space || tokens[j].kind == SqlTokenKind::LineComment ||
                                 tokens[j].kind == SqlTokenKind::BlockComment))
        ++j;
    return j;
}

}  // namespace data::ado

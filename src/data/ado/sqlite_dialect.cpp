#include "data/ado/sqlite_dialect.h"

#include "data/ado/sql_tokens.h"

namespace data::ado {

namespace {

using Tokens = std::vector<SqlToken>;

// From an opening bracket at index open, the index of the bracket that closes it, or
// tokens.size() when it never closes.
size_t matchingClose(QStringView sql, const Tokens& tokens, size_t open)
{
    int depth = 0;
    for (size_t i = open; i < tokens.size(); ++i) {
        if (isPunct(sql, tokens[i], u'('))
            ++depth;
        else if (isPunct(sql, tokens[i], u')') && --depth == 0)
            return i;
    }
    return tokens.size();
}

bool isCharType(QStringView sql, const SqlToken& t)
{
    return isWord(sql, t, u"varchar") || isWord(sql, t, u"nvarchar") || isWord(sql, t, u"char") ||
           isWord(sql, t, u"nchar");
}

QStringView textBetween(QStringView sql, const Tokens& tokens, size_t first, size_t last)
{
    if (first >= last) return {};
    const qsizetype from = tokens[first].pos;
    const qsizetype to = tokens[last - 1].pos + tokens[last - 1].len;
    return sql.mid(from, to - from);
}

// Recognises CONVERT(VARCHAR[(n)], x, 112) starting at the word CONVERT; on success
// gives the token range of x and the index of the closing bracket.
bool matchConvert112(QStringView sql, const Tokens& tokens, size_t at, size_t& argFirst, size_t& argLast, size_t& close)
{
    const size_t open = nextSignificant(tokens, at);
    if (open >= tokens.size() || !isPunct(sql, tokens[open], u'(')) return false;
    close = matchingClose(sql, tokens, open);
    if (close >= tokens.size()) return false;
    size_t i = nextSignificant(tokens, open);
    if (i >= close || !isCharType(sql, tokens[i])) return false;
    i = nextSignificant(tokens, i);
    if (i < close && isPunct(sql, tokens[i], u'(')) {
        i = matchingClose(sql, tokens, i);
        if (i >= close) return false;
        i = nextSignificant(tokens, i);
    }
    if (i >= close || !isPunct(sql, tokens[i], u',')) return false;
    argFirst = i + 1;
    // The argument runs to the last comma at the bracket's own depth.
    size_t lastComma = tokens.size();
    int depth = 0;
    for (size_t j = argFirst; j < close; ++j) {
        if (isPunct(sql, tokens[j], u'('))
            ++depth;
        else if (isPunct(sql, tokens[j], u')'))
            --depth;
        else if (depth == 0 && isPunct(sql, tokens[j], u','))
            lastComma = j;
    }
    if (lastComma == tokens.size()) return false;
    argLast = lastComma;
    const size_t style = nextSignificant(tokens, lastComma);
    if (style >= close || tokens[style].kind != SqlTokenKind::Number || tokenText(sql, tokens[style]) != u"112")
        return false;
    return nextSignificant(tokens, style) == close;
}

// Text columns are named with a leading "c" and a capital (cStartDate): the storage
// convention that keeps dates of t… columns and texts apart where SQLite keeps both
// as text.
bool isTextColumnName(QStringView name) { return name.size() >= 2 && name[0] == u'c' && name[1].isUpper(); }

// The last name of a (possibly qualified) column reference spanning [first, last).
QStringView lastName(QStringView sql, const Tokens& tokens, size_t first, size_t last)
{
    QStringView name;
    for (size_t i = first; i < last; ++i) {
        const SqlToken& t = tokens[i];
        if (t.kind == SqlTokenKind::Space) continue;
        if (t.kind == SqlTokenKind::Word)
            name = tokenText(sql, t);
        else if (!isPunct(sql, t, u'.'))
            return {};
    }
    return name;
}

// Functions whose result is text, so that "+" beside them joins texts.
bool isTextFunction(QStringView sql, const SqlToken& t)
{
    static const char16_t* const names[] = {u"substring", u"substr", u"left",    u"right",   u"ltrim", u"rtrim",
                                            u"upper",     u"lower",  u"replace", u"convert", u"space", u"str"};
    for (const char16_t* n : names)
        if (isWord(sql, t, n)) return true;
    return false;
}

size_t previousSignificant(const Tokens& tokens, size_t i)
{
    while (i > 0) {
        --i;
        const SqlTokenKind k = tokens[i].kind;
        if (k != SqlTokenKind::Space && k != SqlTokenKind::LineComment && k != SqlTokenKind::BlockComment) return i;
    }
    return tokens.size();
}

// From a closing bracket, the index of the bracket that opens it.
size_t matchingOpen(QStringView sql, const Tokens& tokens, size_t close)
{
    int depth = 0;
    for (size_t i = close + 1; i-- > 0;) {
        if (isPunct(sql, tokens[i], u')'))
            ++depth;
        else if (isPunct(sql, tokens[i], u'(') && --depth == 0)
            return i;
    }
    return tokens.size();
}

// Whether the operand that ends at token i is text: a literal, a text column, or the
// call of a text function.
bool textOperandEndsAt(QStringView sql, const Tokens& tokens, size_t i)
{
    if (i >= tokens.size()) return false;
    const SqlToken& t = tokens[i];
    if (t.kind == SqlTokenKind::String) return true;
    if (t.kind == SqlTokenKind::Word) return isTextColumnName(tokenText(sql, t));
    if (isPunct(sql, t, u')')) {
        const size_t open = matchingOpen(sql, tokens, i);
        const size_t fn = open < tokens.size() ? previousSignificant(tokens, open) : tokens.size();
        return fn < tokens.size() && isTextFunction(sql, tokens[fn]);
    }
    return false;
}

// Whether the operand that starts at token i is text.
bool textOperandStartsAt(QStringView sql, const Tokens& tokens, size_t i)
{
    if (i >= tokens.size()) return false;
    const SqlToken& t = tokens[i];
    if (t.kind == SqlTokenKind::String) return true;
    if (t.kind != SqlTokenKind::Word) return false;
    const size_t next = nextSignificant(tokens, i);
    if (next < tokens.size() && isPunct(sql, tokens[next], u'(')) return isTextFunction(sql, t);
    if (next < tokens.size() && isPunct(sql, tokens[next], u'.')) {
        const size_t name = nextSignificant(tokens, next);
        return name < tokens.size() && tokens[name].kind == SqlTokenKind::Word &&
               isTextColumnName(tokenText(sql, tokens[name]));
    }
    return isTextColumnName(tokenText(sql, t));
}

QString rewrite(QStringView sql, const QString& nowText)
{
    const Tokens tokens = tokenizeSql(sql);
    QString out;
    out.reserve(sql.size() + 16);
    for (size_t i = 0; i < tokens.size(); ++i) {
        const SqlToken& t = tokens[i];
        if (t.kind == SqlTokenKind::Word) {
            const size_t next = nextSignificant(tokens, i);
            const bool call = next < tokens.size() && isPunct(sql, tokens[next], u'(');
            if (call && isWord(sql, t, u"isnull")) {
                out += u"ifnull";
                continue;
            }
            if (call && isWord(sql, t, u"getdate")) {
                const size_t close = nextSignificant(tokens, next);
                if (close < tokens.size() && isPunct(sql, tokens[close], u')')) {
                    out += QChar(u'\'') + nowText + QChar(u'\'');
                    i = close;
                    continue;
                }
            }
            size_t argFirst = 0, argLast = 0, close = 0;
            if (call && isWord(sql, t, u"convert") && matchConvert112(sql, tokens, i, argFirst, argLast, close)) {
                const QString arg = rewrite(textBetween(sql, tokens, argFirst, argLast).trimmed(), nowText);
                // A text column converts to itself; only a date takes the yyyymmdd form.
                if (isTextColumnName(lastName(sql, tokens, argFirst, argLast)))
                    out += QStringLiteral("CAST(") + arg + QStringLiteral(" AS TEXT)");
                else
                    out += QStringLiteral("replace(replace(substr(") + arg +
                           QStringLiteral(", 1, 10), '/', ''), '-', '')");
                i = close;
                continue;
            }
        }
        // T-SQL joins texts with "+", which in SQLite adds numbers.
        if (isPunct(sql, t, u'+') && (textOperandEndsAt(sql, tokens, previousSignificant(tokens, i)) ||
                                      textOperandStartsAt(sql, tokens, nextSignificant(tokens, i)))) {
            out += u"||";
            continue;
        }
        out += tokenText(sql, t);
    }
    return out;
}

}  // namespace

QString toSqliteDialect(QStringView sql, const QDateTime& now)
{
    return rewrite(sql, now.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")));
}

QString orderByOverSelect(QStringView sql)
{
    const Tokens tokens = tokenizeSql(sql);
    const size_t first = tokens.empty() ? 0 : (tokens[0].kind == SqlTokenKind::Word ? 0 : nextSignificant(tokens, 0));
    if (first >= tokens.size() || !isWord(sql, tokens[first], u"select")) return {};
    int depth = 0;
    size_t orderAt = tokens.size();
    size_t byAt = tokens.size();
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (isPunct(sql, tokens[i], u'('))
            ++depth;
        else if (isPunct(sql, tokens[i], u')'))
            --depth;
        else if (depth == 0 && isWord(sql, tokens[i], u"order")) {
            const size_t by = nextSignificant(tokens, i);
            if (by < tokens.size() && isWord(sql, tokens[by], u"by")) {
                orderAt = i;
                byAt = by;
            }
        }
    }
    if (orderAt == tokens.size()) return {};
    // In the outer select a name stands for a result column: drop table qualifiers.
    QString order;
    for (size_t i = byAt + 1; i < tokens.size(); ++i) {
        const SqlToken& t = tokens[i];
        const bool qualifier =
            (t.kind == SqlTokenKind::Word || t.kind == SqlTokenKind::QuotedName) && i + 2 < tokens.size() &&
            isPunct(sql, tokens[i + 1], u'.') &&
            (tokens[i + 2].kind == SqlTokenKind::Word || tokens[i + 2].kind == SqlTokenKind::QuotedName);
        if (qualifier) {
            ++i;  // skip the name and its dot
            continue;
        }
        order += tokenText(sql, t);
    }
    const QStringView inner = sql.left(tokens[orderAt].pos).trimmed();
    return QStringLiteral("SELECT * FROM (") + inner.toString() + QStringLiteral(") ORDER BY ") + order.trimmed();
}

bool isAmbiguousColumnMessage(const QString& message)
{
    return message.contains(u"ambiguous column name", Qt::CaseInsensitive);
}

}  // namespace data::ado

#include "engine/field_values.h"

#include "engine/page_renderer.h"

namespace engine {

namespace {

QString cell(const QStringList* row, int column)
{
    if (!row || column < 0 || column >= row->size()) return QString();
    return row->at(column).trimmed();
}

BoundCondition bindCondition(const Condition& c, const CsvTable& data)
{
    BoundCondition b;
    b.test = c.test;
    b.column = c.column.isEmpty() ? -1 : data.column(c.column);
    b.other = c.other.isEmpty() ? -1 : data.column(c.other);
    b.values = c.values;
    for (const Condition& part : c.parts) b.parts.append(bindCondition(part, data));
    return b;
}

int columnOf(const QString& title, const CsvTable& data) { return title.isEmpty() ? -1 : data.column(title); }

// Takes end and the blanks before it off text, unless that would leave nothing.
void chopEnd(QString& text, const QString& end)
{
    if (end.isEmpty() || !text.endsWith(end)) return;
    const QString rest = text.chopped(end.size()).trimmed();
    if (!rest.isEmpty()) text = rest;
}

}  // namespace

FieldBinding bindField(const Field& f, const CsvTable& data)
{
    FieldBinding b;
    for (const QString& c : f.columns) b.columns.append(data.column(c));
    if (f.when) b.when = bindCondition(*f.when, data);
    if (f.honorificAsWhen) b.honorificAsWhen = bindCondition(*f.honorificAsWhen, data);
    b.keepWith = columnOf(f.keepWith, data);
    b.dropLead = columnOf(f.dropLead, data);
    b.dropTail = columnOf(f.dropTail, data);
    return b;
}

bool holds(const BoundCondition& c, const QStringList* row)
{
    const QString v = cell(row, c.column);
    switch (c.test) {
    case Condition::Equals:
        return v == c.values.value(0);
    case Condition::NotEmpty:
        return !v.isEmpty();
    case Condition::In:
        return c.values.contains(v);
    case Condition::NotIn:
        return !c.values.contains(v);
    case Condition::SameAs:
        return v == cell(row, c.other);
    case Condition::DiffersFrom:
        return v != cell(row, c.other);
    case Condition::Any:
        for (const BoundCondition& p : c.parts)
            if (holds(p, row)) return true;
        return false;
    case Condition::All:
        for (const BoundCondition& p : c.parts)
            if (!holds(p, row)) return false;
        return true;
    }
    return false;
}

FieldValue columnValue(const Field& f, const FieldBinding& b, const QStringList* row)
{
    QStringList parts;
    for (int c : b.columns) {
        const QString v = cell(row, c);
        if (!v.isEmpty()) parts.append(v);
    }
    FieldValue out;
    out.text = parts.join(f.join);
    const QString lead = cell(row, b.dropLead);
    if (!lead.isEmpty() && out.text.startsWith(lead)) {
        const QString rest = out.text.mid(lead.size()).trimmed();
        if (!rest.isEmpty()) out.text = rest;
    }
    chopEnd(out.text, cell(row, b.dropTail));
    out.honorific = cell(row, b.keepWith);
    if (out.honorific.isEmpty() || !out.text.endsWith(out.honorific)) return out;
    // "山田 太郎 先生 先生": a name stored with its honorific gets it once.
    const QString& h = out.honorific;
    for (QString before = out.text.chopped(h.size()).trimmed(); before.size() > h.size() && before.endsWith(h);
         before = out.text.chopped(h.size()).trimmed())
        out.text = before;
    const auto as = f.honorificAs.constFind(out.honorific);
    if (as != f.honorificAs.cend() && (!b.honorificAsWhen || holds(*b.honorificAsWhen, row))) {
        out.text = out.text.chopped(out.honorific.size()) + *as;
        out.honorific = *as;
    }
    return out;
}

QString postalLine(const QString& text)
{
    const QString digits = postalDigits(text);
    if (digits.isEmpty()) return QString();
    if (digits.size() == 7) return QStringLiteral("〒 %1-%2").arg(digits.left(3), digits.mid(3));
    return text.trimmed();
}

}  // namespace engine

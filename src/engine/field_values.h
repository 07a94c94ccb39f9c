#pragma once
// What a field of a form shows for one data row: whether its condition holds, and its
// text after the form's rules for names: the organisation printed on its own line is
// not repeated, and the honorific stands once and fits the addressee.

#include "engine/csv_table.h"
#include "engine/form.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace engine {

// A condition with its columns looked up in one data table (-1 where absent).
struct BoundCondition {
    Condition::Test test = Condition::Equals;
    int column = -1;
    int other = -1;
    QStringList values;
    QList<BoundCondition> parts;
};

struct FieldBinding {
    QList<int> columns;  // per field column
    std::optional<BoundCondition> when;
    std::optional<BoundCondition> honorificAsWhen;
    int keepWith = -1;
    int dropLead = -1;
    int dropTail = -1;
};

FieldBinding bindField(const Field& field, const CsvTable& data);

// A missing row or column reads as empty text.
bool holds(const BoundCondition& condition, const QStringList* row);

struct FieldValue {
    QString text;
    QString honorific;  // the text at its end that stays with the name, as printed
};
// The field's columns, trimmed and joined, with dropLead, dropTail and honorificAs
// applied; an honorific the name already ends with is not printed twice.
FieldValue columnValue(const Field& field, const FieldBinding& binding, const QStringList* row);

// The postal code as a line of text: "〒 123-4567" for seven digits, hyphen or not;
// nothing where the value holds no digit; otherwise the value as it stands.
QString postalLine(const QString& text);

}  // namespace engine

#pragma once
// One way a field of a result goes into a property of a row: a binding names the
// field and the member, and the reader's NULL rule says what a NULL and a text become.
// The table classes, the record loaders and the patient record read alike but for
// that rule.

#include "base/conversions.h"
#include "data/ado/recordset.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <optional>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace data {

enum class NullRule {
    // NULL gives empty text or 0; text is trimmed of blanks (the cT_ table classes).
    EmptyTrimmed,
    // NULL gives empty text or 0; text as it stands (the master record loaders).
    Empty,
    // NULL leaves the property as it was; text as it stands (the patient record).
    Keep,
};

template <class Row>
using Member = std::variant<QString Row::*, qint32 Row::*, short Row::*, double Row::*, std::optional<QDate> Row::*>;

// The value converted for a property of each type. Numbers fault as the runtime does
// (13 for a text that is no number, 6 out of range).
QString textByRule(const QVariant& value, NullRule rule);
qint32 longByRule(const QVariant& value);
short intByRule(const QVariant& value);
double currencyByRule(const QVariant& value);
// A date field from whatever the column holds: a date, a date text, or a number of
// days from the runtime's day zero. Anything else is a type mismatch.
QDate dateByRule(const QVariant& value);

template <class Row>
void setMember(Row& row, const Member<Row>& member, const QVariant& value, NullRule rule)
{
    if (rule == NullRule::Keep && base::IsNull(value)) return;
    std::visit(
        [&](auto m) {
            using T = std::remove_reference_t<decltype(row.*m)>;
            if constexpr (std::is_same_v<T, QString>)
                row.*m = textByRule(value, rule);
            else if constexpr (std::is_same_v<T, qint32>)
                row.*m = longByRule(value);
            else if constexpr (std::is_same_v<T, short>)
                row.*m = intByRule(value);
            else if constexpr (std::is_same_v<T, double>)
                row.*m = currencyByRule(value);
            else
                row.*m = dateByRule(value);
        },
        member);
}

template <class Row>
struct Binding {
    QString name;
    Member<Row> member;
};

// The fields of an open recordset bound to members, looked up once (a missing field
// faults here, before any row is read); fill() sets a row from the current record.
template <class Row>
class RecordBinder {
public:
    explicit RecordBinder(NullRule rule) : rule_(rule) {}

    // A field read into member; with no member the field must exist but is not read.
    void bind(ado::Recordset& rs, const QString& name, const Member<Row>* member)
    {
        fields_.emplace_back(member, rs.Fields(name));
    }

    void fill(Row& row) const
    {
        for (const auto& [member, field] : fields_)
            if (member) setMember(row, *member, field.Value(), rule_);
    }

private:
    NullRule rule_;
    std::vector<std::pair<const Member<Row>*, ado::Field>> fields_;
};

}  // namespace data

// A binding of the member m of the row type R under its own name.
#define SEAL_BIND(R, m)                                                                                                \
    ::data::Binding<R> { QStringLiteral(#m), &R::m }

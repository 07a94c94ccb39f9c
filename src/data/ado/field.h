#pragma once
// One column of a recordset, as ADO's Field: its name, its ADO type number and its
// value at the recordset's current record.

#include <QString>
#include <QVariant>

namespace data::ado {

class Recordset;

class Field {
public:
    Field(const Recordset& recordset, int index) : recordset_(&recordset), index_(index) {}

    const QString& Name() const;
    // The ADO DataTypeEnum number: 3 adInteger, 5 adDouble, 135 adDBTimeStamp,
    // 202 adVarWChar …
    int Type() const;
    // The value at the current record; a null QVariant for NULL. A fault (3021) at EOF
    // or BOF, as there is no current record.
    QVariant Value() const;
    // Not ADO's: the current value when it is a text, read in place for a reader of
    // many rows; false (and no fault) when it is not, when it is a text that recurs
    // (Value() shares one string for it), or when there is no current record.
    // The view holds until the recordset closes.
    bool TextView(QStringView& text) const;

private:
    const Recordset* recordset_;
    int index_;
};

}  // namespace data::ado

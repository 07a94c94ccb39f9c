#pragma once
// The provider errors of a connection, as ADO's Errors collection holds them.

#include <QString>
#include <QtGlobal>

#include <vector>

namespace data::ado {

// One diagnostic record of the provider.
struct Error {
    qint32 Number = 0;  // an HRESULT, negative for the provider's failures
    QString Description;
    QString Source;
    QString SQLState;        // five characters, e.g. "42S22"
    qint32 NativeError = 0;  // the database's own code
};

class Errors {
public:
    int Count() const { return static_cast<int>(items_.size()); }
    // The error at index; a fault (3265) past the end, as a collection faults.
    const Error& Item(int index) const;
    void Clear() { items_.clear(); }

    // A new failure replaces what an earlier one left.
    void replace(std::vector<Error> errors) { items_ = std::move(errors); }

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<Error> items_;
};

}  // namespace data::ado

#include "data/ado/recordset.h"

#include "data/ado/connection.h"
#include "data/ado/faults.h"

namespace data::ado {

const QString& Field::Name() const { return recordset_->column(index_).name; }

int Field::Type() const { return recordset_->column(index_).type; }

QVariant Field::Value() const { return recordset_->value(index_); }

bool Field::TextView(QStringView& text) const { return recordset_->textView(index_, text); }

void Recordset::Open(const QString& source, Connection& activeConnection, int cursorType, int lockType, int options)
{
    if (open_) throw fault::objectOpen();
    if (activeConnection.State() != adStateOpen) throw fault::connectionInvalid();
    table_ = activeConnection.fetch(source);
    byName_.clear();
    byFolded_.clear();
    byName_.reserve(static_cast<qsizetype>(table_.columns.size()));
    byFolded_.reserve(static_cast<qsizetype>(table_.columns.size()));
    // The first of several columns with one name is the one a name finds.
    for (int i = static_cast<int>(table_.columns.size()) - 1; i >= 0; --i) {
        byName_.insert(column(i).name, i);
        byFolded_.insert(column(i).name.toCaseFolded(), i);
    }
    firstOfName_.assign(table_.columns.size(), false);
    for (int i : std::as_const(byFolded_)) firstOfName_[static_cast<size_t>(i)] = true;
    lastFound_ = -1;
    position_ = 0;
    open_ = true;
}

void Recordset::Close()
{
    requireOpen();
    open_ = false;
    table_ = {};
    byName_.clear();
    byFolded_.clear();
    firstOfName_.clear();
    lastFound_ = -1;
}

void Recordset::requireOpen() const
{
    if (!open_) throw fault::objectClosed();
}

bool Recordset::Eof() const
{
    requireOpen();
    return table_.rowCount == 0 || position_ >= table_.rowCount;
}

bool Recordset::Bof() const
{
    requireOpen();
    return table_.rowCount == 0 || position_ < 0;
}

qint32 Recordset::RecordCount() const
{
    requireOpen();
    return static_cast<qint32>(table_.rowCount);
}

void Recordset::MoveFirst()
{
    requireOpen();
    position_ = 0;
}

void Recordset::MoveLast()
{
    requireOpen();
    position_ = table_.rowCount == 0 ? 0 : table_.rowCount - 1;
}

void Recordset::MoveNext()
{
    if (Eof()) throw fault::noCurrentRecord();
    ++position_;
}

void Recordset::MovePrevious()
{
    if (Bof()) throw fault::noCurrentRecord();
    --position_;
}

int Recordset::FieldCount() const
{
    requireOpen();
    return static_cast<int>(table_.columns.size());
}

Field Recordset::Fields(const QString& name) const
{
    requireOpen();
    const int count = static_cast<int>(table_.columns.size());
    const int next = lastFound_ + 1 < count ? lastFound_ + 1 : 0;
    if (count > 0 && firstOfName_[static_cast<size_t>(next)] && column(next).name == name) {
        lastFound_ = next;
        return Field(*this, next);
    }
    auto it = byName_.constFind(name);
    if (it == byName_.constEnd()) {
        it = byFolded_.constFind(name.toCaseFolded());
        if (it == byFolded_.constEnd()) throw fault::itemNotFound();
    }
    lastFound_ = it.value();
    return Field(*this, it.value());
}

Field Recordset::Fields(int index) const
{
    requireOpen();
    if (index < 0 || index >= FieldCount()) throw fault::itemNotFound();
    return Field(*this, index);
}

bool Recordset::textView(int index, QStringView& text) const
{
    if (!open_ || position_ < 0 || position_ >= table_.rowCount) return false;
    return column(index).textAt(position_, text);
}

QVariant Recordset::value(int index) const
{
    requireOpen();
    if (position_ < 0 || position_ >= table_.rowCount) throw fault::noCurrentRecord();
    return column(index).value(position_);
}

}  // namespace data::ado

#pragma once
// A client-side recordset: Open fetches every row, so RecordCount, EOF, BOF, MoveFirst,
// MoveNext and MoveLast work whatever cursor type the caller passes. Fields are found
// by name without regard to case. Values are held column by column.

#include "data/ado/ado_constants.h"
#include "data/ado/driver.h"
#include "data/ado/field.h"

#include <QHash>

namespace data::ado {

class Connection;

class Recordset {
public:
    int CursorLocation() const { return cursorLocation_; }
    void setCursorLocation(int location) { cursorLocation_ = location; }

    // Runs the query on the connection and fetches its rows; the recordset stands on
    // the first record. A fault when already open, on a closed connection, or when the
    // provider fails (the provider errors stay in the connection's Errors).
    void Open(const QString& source, Connection& activeConnection, int cursorType = adOpenForwardOnly,
              int lockType = adLockReadOnly, int options = adCmdText);
    // A fault (3704) when not open.
    void Close();
    int State() const { return open_ ? adStateOpen : adStateClosed; }

    // Every read below faults (3704) on a closed recordset.
    bool Eof() const;
    bool Bof() const;
    qint32 RecordCount() const;
    void MoveFirst();
    void MoveLast();
    // A fault (3021) when already at EOF.
    void MoveNext();
    // A fault (3021) when already at BOF.
    void MovePrevious();

    int FieldCount() const;
    // A fault (3265) for a name the result does not hold.
    Field Fields(const QString& name) const;
    // A fault (3265) for an index out of range.
    Field Fields(int index) const;

private:
    friend class Field;
    void requireOpen() const;
    const ResultColumn& column(int index) const { return table_.columns[static_cast<size_t>(index)]; }
    QVariant value(int index) const;
    bool textView(int index, QStringView& text) const;

    int cursorLocation_ = adUseServer;
    bool open_ = false;
    ResultTable table_;
    qsizetype position_ = 0;        // -1 is BOF, rowCount is EOF
    QHash<QString, int> byName_;    // exact spelling
    QHash<QString, int> byFolded_;  // case-folded
    // Readers ask for the fields of a row in the same order row after row: the column
    // after the last one found is tried first. Only a column that is the first of its
    // name may answer so.
    std::vector<bool> firstOfName_;
    mutable int lastFound_ = -1;
};

}  // namespace data::ado

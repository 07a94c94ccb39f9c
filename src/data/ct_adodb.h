#pragma once
// cT_ADODB: the one way to the database. Each unit of work creates its own object,
// connects, works and disconnects. It shows nothing: every i… operation returns 0 or
// -1 and leaves the reason in sErrMsg, which nothing ever clears, so a caller reads
// it only after a failure.

#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/recordset.h"

#include <QString>
#include <QVariant>

#include <memory>

namespace data {

class cT_ADODB {
public:
    cT_ADODB() = default;
    // Disconnects, ignoring the status (on a connection never opened, the close fails
    // quietly into sErrMsg).
    ~cT_ADODB();
    cT_ADODB(const cT_ADODB&) = delete;
    cT_ADODB& operator=(const cT_ADODB&) = delete;

    const QString& sErrMsg() const { return sErrMsg_; }
    // The connection's DefaultDatabase.
    QString sDbName();
    // Does nothing, on purpose.
    short ihehe();
    // Keeps the connection string; does not connect.
    short iInit(QString csConnect);
    // This machine's name as GetComputerNameA gives it into a 16-character buffer:
    // empty when the name does not fit.
    QString csGetComputerName();
    // Appends the connection's provider errors to text (callers pass sErrMsg) and
    // clears them; lines are begun by a carriage return alone.
    void vAddAdoErrorLog(QString& text);
    // Opens the connection if closed, then sets the command time-out to 180 seconds.
    short iConnect();
    short iDisConnect();
    // Opens a recordset the caller created (setting CursorLocation to adUseClient):
    // one SELECT statement only. The callers pass 0 (adOpenForwardOnly), 1
    // (adLockReadOnly) and 1 (adCmdText).
    short iOpenRecSet(std::unique_ptr<ado::Recordset>& rs, const QString& sSQL, qint32 nCursorType, qint32 nLockType,
                      qint32 nOptions);
    // Closes the recordset and empties the caller's reference.
    short iCloseRecSet(std::unique_ptr<ado::Recordset>& rs);
    short iExecSQL(const QString& sSQL);
    // As above; nRecordsAffected receives the number of rows changed.
    short iExecSQL(const QString& sSQL, qint32& nRecordsAffected);
    short iBeginTrans();
    short iCommitTrans();
    short iRollback();
    // Seconds above 0 become the command time-out; 0 or below changes nothing.
    short iSetTimeout(short iSec);

    // The connection, for tests and for the few readers of its state.
    ado::Connection& adoConnection();

private:
    short execSql(const QString& sSQL, qint32* nRecordsAffected);
    // "(", the number with its sign position, ")" and the description.
    static QString faultForm(const QString& opening, const base::VbError& fault);

    // The NULL rules of the table classes: text trimmed (NULL empty), 32-bit, 16-bit
    // and money numbers NULL as 0. Kept with the class; its own operations need none.
    static QString csNull2Str(const QVariant& value);
    static qint32 nNull2Long(const QVariant& value);
    static short iNull2Int(const QVariant& value);
    static double cuNull2Cur(const QVariant& value);

    std::unique_ptr<ado::Connection> adoConnection_;
    QString csConnectString_;
    QString sErrMsg_;
};

}  // namespace data

#include "data/ct_adodb.h"

#include "app/globals.h"
#include "base/text_codec.h"
#include "controls/platform.h"
#include "data/ado/faults.h"
#include "data/ado/read_safety.h"

namespace data {

namespace {

constexpr int kConnectTimeout = 180;
constexpr qsizetype kSqlShown = 80;

// The runtime's Str(): a blank holds the place of the sign of a non-negative number.
QString signed_(qint64 number) { return number < 0 ? QString::number(number) : QChar(u' ') + QString::number(number); }

}  // namespace

cT_ADODB::~cT_ADODB() { iDisConnect(); }

ado::Connection& cT_ADODB::adoConnection()
{
    if (!adoConnection_) adoConnection_ = std::make_unique<ado::Connection>();
    return *adoConnection_;
}

QString cT_ADODB::faultForm(const QString& opening, const base::VbError& fault)
{
    return opening + signed_(fault.number()) + QChar(u')') + fault.description();
}

QString cT_ADODB::sDbName() { return adoConnection().DefaultDatabase(); }

short cT_ADODB::ihehe() { return 0; }

short cT_ADODB::iInit(QString csConnect)
{
    // Storing the text cannot fault; the original's trap here never fires.
    csConnectString_ = std::move(csConnect);
    return 0;
}

QString cT_ADODB::csGetComputerName()
{
    constexpr int kBuffer = 16;
    const QString name = app::platform().machineName();
    // GetComputerNameA fails when the name and its terminating zero do not fit.
    if (base::toCp932(name).size() + 1 > kBuffer) return {};
    QString buffer = name + QChar(u'\0');
    buffer += QString(kBuffer - buffer.size(), u' ');
    while (buffer.endsWith(u' ')) buffer.chop(1);
    if (buffer.endsWith(QChar(u'\0'))) buffer.chop(1);
    return buffer;
}

void cT_ADODB::vAddAdoErrorLog(QString& text)
{
    ado::Connection& connection = adoConnection();
    ado::Errors& errors = connection.Errors();
    if (errors.Count() < 1) return;
    QString log = sErrMsg_ + QStringLiteral("\rConnection State=") + QString::number(connection.State());
    for (const ado::Error& error : errors) {
        log += QStringLiteral("\rError Number: ") + QString::number(error.Number);
        log += QStringLiteral("\r  Description: ") + error.Description;
        log += QStringLiteral("\r  Source: ") + error.Source;
        log += QStringLiteral("\r  SQL State: ") + error.SQLState;
        log += QStringLiteral("\r  Native Error: ") + QString::number(error.NativeError);
    }
    log += QStringLiteral("\r\r") + QString::number(errors.Count()) + QStringLiteral(" provider error(s) occurred.");
    text = log;
    errors.Clear();
}

short cT_ADODB::iConnect()
{
    try {
        ado::Connection& connection = adoConnection();
        if (connection.State() == ado::adStateClosed)
            connection.Open(csConnectString_, QString(), QString(), ado::adOptionUnspecified);
        // An Open that leaves the connection closed without a fault fails only with
        // provider errors to show; without any it passes, as it always has.
        if (connection.State() != ado::adStateOpen && connection.Errors().Count() >= 1) {
            vAddAdoErrorLog(sErrMsg_);
            return -1;
        }
        iSetTimeout(kConnectTimeout);
        return 0;
    } catch (const base::VbError& fault) {
        vAddAdoErrorLog(sErrMsg_);
        sErrMsg_ = faultForm(QStringLiteral("("), fault);
        return -1;
    }
}

short cT_ADODB::iDisConnect()
{
    try {
        adoConnection().Close();
        adoConnection_.reset();
        return 0;
    } catch (const base::VbError& fault) {
        vAddAdoErrorLog(sErrMsg_);
        sErrMsg_ = faultForm(QStringLiteral("("), fault);
        return -1;
    }
}

short cT_ADODB::iOpenRecSet(std::unique_ptr<ado::Recordset>& rs, const QString& sSQL, qint32 nCursorType,
                            qint32 nLockType, qint32 nOptions)
{
    try {
        if (!rs) throw ado::fault::objectNotSet();
        // The SQL is built by concatenation without quoting: a read runs one SELECT.
        const QString violation = ado::readSafetyViolation(sSQL);
        if (!violation.isEmpty()) throw base::VbError(ado::DB_E_ERRORSINCOMMAND, violation);
        rs->Open(sSQL, adoConnection(), nCursorType, nLockType, nOptions);
        return 0;
    } catch (const base::VbError& fault) {
        const QString shown = sSQL.size() > kSqlShown ? sSQL.left(kSqlShown) + QStringLiteral("・・・") : sSQL;
        sErrMsg_ = faultForm(QStringLiteral("("), fault) + QStringLiteral("\rSQL=") + shown;
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

short cT_ADODB::iCloseRecSet(std::unique_ptr<ado::Recordset>& rs)
{
    try {
        if (!rs) throw ado::fault::objectNotSet();
        rs->Close();
        rs.reset();
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = QString::number(fault.number()) + QStringLiteral("\r\n") + fault.description();
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

short cT_ADODB::iExecSQL(const QString& sSQL) { return execSql(sSQL, nullptr); }

short cT_ADODB::iExecSQL(const QString& sSQL, qint32& nRecordsAffected) { return execSql(sSQL, &nRecordsAffected); }

short cT_ADODB::execSql(const QString& sSQL, qint32* nRecordsAffected)
{
    try {
        qint32 affected = 0;
        adoConnection().Execute(sSQL, affected, ado::adExecuteNoRecords);
        if (nRecordsAffected) *nRecordsAffected = affected;
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = faultForm(QStringLiteral("ERR:iExecSQL ("), fault);
        vAddAdoErrorLog(sErrMsg_);
        sErrMsg_ += QStringLiteral("\rSQL=") + sSQL;
        return -1;
    }
}

short cT_ADODB::iBeginTrans()
{
    try {
        adoConnection().BeginTrans();
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = faultForm(QStringLiteral("ERR:BeginTrans ("), fault);
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

short cT_ADODB::iCommitTrans()
{
    try {
        adoConnection().CommitTrans();
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = faultForm(QStringLiteral("ERR:CommitTrans ("), fault);
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

short cT_ADODB::iRollback()
{
    try {
        ado::Connection& connection = adoConnection();
        connection.RollbackTrans();
        if (connection.Errors().Count() >= 1) {
            vAddAdoErrorLog(sErrMsg_);
            return -1;
        }
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = faultForm(QStringLiteral("ERR:Rollback ("), fault);
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

short cT_ADODB::iSetTimeout(short iSec)
{
    try {
        if (iSec > 0) adoConnection().setCommandTimeout(iSec);
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg_ = faultForm(QStringLiteral("ERR:iSetTimeout ("), fault);
        vAddAdoErrorLog(sErrMsg_);
        return -1;
    }
}

QString cT_ADODB::csNull2Str(const QVariant& value) { return value.isNull() ? QString() : value.toString().trimmed(); }

qint32 cT_ADODB::nNull2Long(const QVariant& value) { return value.isNull() ? 0 : value.toInt(); }

short cT_ADODB::iNull2Int(const QVariant& value) { return value.isNull() ? short(0) : short(value.toInt()); }

double cT_ADODB::cuNull2Cur(const QVariant& value) { return value.isNull() ? 0.0 : value.toDouble(); }

}  // namespace data

#pragma once
// The faults the ADO surface raises itself, with the numbers and Japanese texts the
// original's runtime shows, and the failure a driver reports with its diagnostics.

#include "base/vb_error.h"
#include "data/ado/errors.h"

#include <vector>

namespace data::ado {

// HRESULTs the drivers give their errors, chosen by SQLSTATE class the way OLE DB
// providers for SQL Server report them.
inline constexpr qint32 E_FAIL_ = -2147467259;                  // 0x80004005
inline constexpr qint32 DB_E_ERRORSINCOMMAND = -2147217900;     // 0x80040E14
inline constexpr qint32 DB_E_NOTABLE = -2147217865;             // 0x80040E37
inline constexpr qint32 DB_E_ABORTLIMITREACHED = -2147217871;   // 0x80040E31
inline constexpr qint32 DB_SEC_E_AUTH_FAILED = -2147217843;     // 0x80040E4D
inline constexpr qint32 DB_E_INTEGRITYVIOLATION = -2147217873;  // 0x80040E2F
inline constexpr qint32 XACT_E_XTIONEXISTS = -2147168237;       // 0x8004D013
inline constexpr qint32 XACT_E_NOTRANSACTION = -2147168242;     // 0x8004D00E

// The HRESULT for a diagnostic with this SQLSTATE.
qint32 hresultForSqlState(const QString& sqlState);

// Thrown by a driver: every diagnostic record of the failed call, at least one.
struct ProviderFailure {
    std::vector<Error> errors;
};

namespace fault {
base::VbError objectNotSet();       // 91
base::VbError badArguments();       // 3001
base::VbError noCurrentRecord();    // 3021
base::VbError itemNotFound();       // 3265
base::VbError objectClosed();       // 3704
base::VbError objectOpen();         // 3705
base::VbError providerNotFound();   // 3706
base::VbError connectionInvalid();  // 3709
// A fault raised from a provider failure: its first record's number and text.
base::VbError fromProvider(const ProviderFailure& failure);
}  // namespace fault

}  // namespace data::ado

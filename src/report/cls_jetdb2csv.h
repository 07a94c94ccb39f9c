#pragma once
// Export of a query's rows, or of two queries side by side, to a CSV file for the
// report engine. Init connects, opens the query and counts its rows; exec writes the
// file; end closes the recordsets and disconnects.

#include "base/ini_file.h"
#include "data/ado/recordset.h"
#include "data/ct_adodb.h"

#include <QFile>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>

namespace report {

// One column of a data line, by its ADO type: numbers and flags bare, dates bare in
// the short date form, everything else in double quotes; NULL is nothing at all.
// Nothing inside a value is escaped.
QString csvColumnText(int adoType, const QVariant& value);

class cls_JetDB2CSV {
public:
    // Places in the table of column types: 0..256 for one query, 0..512 for two.
    static constexpr int kMaxColumns = 257;
    static constexpr int kMaxColumnsTwoQueries = 513;

    QString sErrMsg;
    // Raised after each written row with the rows written so far. The counter itself is
    // passed, as the original passes it by reference.
    std::function<void(qint32& nCount)> evtCnvProcessUp;

    cls_JetDB2CSV() = default;
    ~cls_JetDB2CSV();
    cls_JetDB2CSV(const cls_JetDB2CSV&) = delete;
    cls_JetDB2CSV& operator=(const cls_JetDB2CSV&) = delete;

    // Connects and opens sSQL; nCount gets its rows. 0, or -1 after a box that says
    // why (critical, "iInitJ2C() でエラー" and the reason).
    int16_t iInitJ2C(const QString& sSQL, const QString& sCsvPath, qint32& nCount);
    // As iInitJ2C for two queries, without any box. nCount is the second query's count
    // once it opens; the first's stands only when the second fails.
    int16_t iInitJ2C_WSQL(const QString& sSQL1, const QString& sSQL2, const QString& sCsvPath, qint32& nCount);
    // The header is written only when bHeader is exactly -1.
    int16_t iExecJ2C(int16_t bHeader);
    // Rows written or -1; a site name that is not blank adds the column "拠点名".
    qint32 nExecJ2C(int16_t bHeader, const QString& sSiteName);
    // The columns of both queries on one line, row by row as long as the first has rows.
    qint32 nExecJ2C_WSQL(int16_t bHeader);
    // Closes what is open and disconnects; always 0 once a connection object exists.
    int16_t iEndJ2C();

private:
    enum class Failure { None, Settings, Database };
    // Reads the connection text, connects and opens the first query: the reason of a
    // failure is left in sErrMsg.
    Failure connectAndOpen(const QString& sSQL, qint32& nCount);
    Failure openCounted(std::unique_ptr<data::ado::Recordset>& rs, const QString& sSQL, qint32& nCount);
    qint32 exportRows(bool bTwoQueries, int16_t bHeader, const QString& sSiteName);
    // 0 when the recordset can be read, -1 when reading it faults (absent or closed).
    static int16_t iChkRecSet(const std::unique_ptr<data::ado::Recordset>& rs);

    QString csConnectString;
    std::unique_ptr<base::clsOplIniFile> iniFile;  // made on first use
    std::unique_ptr<data::cT_ADODB> adoDb;
    std::unique_ptr<data::ado::Recordset> rsData1;
    std::unique_ptr<data::ado::Recordset> rsData2;
    QString sCsvPath;
    // The output file; left open after a fault while writing, as far as it got.
    std::unique_ptr<QFile> iFileNo;
};

}  // namespace report

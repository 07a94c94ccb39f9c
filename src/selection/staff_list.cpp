#include "selection/staff_list.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "dialogs/fault_text.h"

#include <memory>

namespace selection {

namespace {

std::unique_ptr<data::ado::Recordset> newRecordset()
{
    auto rs = std::make_unique<data::ado::Recordset>();
    rs->setCursorLocation(data::ado::adUseClient);
    return rs;
}

}  // namespace

QString sqlCbStaffData()
{
    return QStringLiteral("SELECT nIDNo, cName") + QStringLiteral(" FROM STAFF") +
           QStringLiteral(" WHERE isnull(iChusiFlg, 0) = 0") + QStringLiteral(" AND iKyotenCd = ") +
           QString::number(app::iKyotenCd) + QStringLiteral(" AND iKyotenEb = ") + QString::number(app::iKyotenEb) +
           QStringLiteral(" ORDER BY nIDNo ");
}

short iGetCbStaffData(data::cT_ADODB& db, std::vector<StaffEntry>& list, QString& sErrMsg)
{
    return dialogs::guardedStatus(QStringLiteral("iGetCbStaffData()でエラー"), sErrMsg, [&]() -> short {
        auto rs = newRecordset();
        if (db.iOpenRecSet(rs, sqlCbStaffData(), 0, 1, 1) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        std::vector<StaffEntry> found;
        found.reserve(static_cast<size_t>(rs->RecordCount()));
        while (!rs->Eof()) {
            found.push_back({base::nNull2Long(rs->Fields(QStringLiteral("nIDNo")).Value()),
                             base::csNull2Str(rs->Fields(QStringLiteral("cName")).Value())});
            rs->MoveNext();
        }
        if (db.iCloseRecSet(rs) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        list = std::move(found);
        if (list.empty()) {
            sErrMsg = QStringLiteral("該当する施術者データがありません。");
            return 1;
        }
        return 0;
    });
}

QString sqlGetStaffData(qint32 nIDNo)
{
    return QStringLiteral("SELECT nIDNo, cName") + QStringLiteral(" FROM STAFF") + QStringLiteral(" WHERE ") +
           QStringLiteral("     iKyotenCd = ") + QString::number(app::iKyotenCd) + QStringLiteral(" AND iKyotenEb = ") +
           QString::number(app::iKyotenEb) + QStringLiteral(" AND nIDNo = ") + QString::number(nIDNo) +
           QStringLiteral(" ORDER BY nIDNo ");
}

short iGetStaffData(data::cT_ADODB& db, qint32 nIDNo, QString& name, QString& sErrMsg)
{
    return dialogs::guardedStatus(QStringLiteral("iGetStaffData()でエラー"), sErrMsg, [&]() -> short {
        auto rs = newRecordset();
        if (db.iOpenRecSet(rs, sqlGetStaffData(nIDNo), 0, 1, 1) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        while (!rs->Eof()) {
            name = base::csNull2Str(rs->Fields(QStringLiteral("cName")).Value());
            rs->MoveNext();
        }
        if (db.iCloseRecSet(rs) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        return 0;
    });
}

}  // namespace selection

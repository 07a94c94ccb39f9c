#include "selection/row_extract.h"

#include "base/vb_error.h"
#include "data/ado/ado_constants.h"
#include "dialogs/fault_text.h"

#include <memory>

namespace selection {

qint32 readConsentRows(data::cT_ADODB& db, const std::function<QString()>& sql, const NoRows& noRows,
                       const std::function<void(data::ado::Recordset&, ConsentRows&)>& read, ConsentRows& rows,
                       QString& sErrMsg)
{
    auto rs = std::make_unique<data::ado::Recordset>();
    rs->setCursorLocation(data::ado::adUseClient);
    try {
        if (db.iOpenRecSet(rs, sql(), 0, 1, 1) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        if (rs->Eof()) {
            db.iCloseRecSet(rs);
            sErrMsg = noRows.text;
            return noRows.status;
        }
        ConsentRows found;
        read(*rs, found);
        if (db.iCloseRecSet(rs) != 0) {
            sErrMsg = db.sErrMsg();
            return -1;
        }
        rows = std::move(found);
        return 0;
    } catch (const base::VbError& fault) {
        if (rs && rs->State() == data::ado::adStateOpen) db.iCloseRecSet(rs);
        sErrMsg = dialogs::faultLines(QStringLiteral("iGetKanjaDataでエラー"), fault);
        return -1;
    }
}

}  // namespace selection

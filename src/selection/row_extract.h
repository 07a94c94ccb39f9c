#pragma once
// The one way both side screens' extractions read their rows from a statement.

#include "data/ado/recordset.h"
#include "data/ct_adodb.h"
#include "selection/consent_row.h"

#include <QString>

#include <functional>

namespace selection {

// What an empty result gives: its status and the text to show.
struct NoRows {
    qint32 status = 1;
    QString text;
};

// Opens the statement sql makes on db and builds the rows from its records with read,
// which moves through the records itself. -1 with the database object's text when the
// statement does not open or the records do not close; noRows's status and text when
// there are no records; -1 with "iGetKanjaDataでエラー" and the fault's lines after a
// fault. Only on 0 are rows replaced.
qint32 readConsentRows(data::cT_ADODB& db, const std::function<QString()>& sql, const NoRows& noRows,
                       const std::function<void(data::ado::Recordset&, ConsentRows&)>& read, ConsentRows& rows,
                       QString& sErrMsg);

}  // namespace selection

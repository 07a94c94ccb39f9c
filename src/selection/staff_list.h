#pragma once
// The staff lookups of the side screens: the current staff of this office for the
// combo box, and one staff member's name by number (ended staff included).

#include "data/ct_adodb.h"

#include <vector>

namespace selection {

struct StaffEntry {
    qint32 nIDNo = 0;
    QString cName;
};

QString sqlCbStaffData();
// 0 with the list filled; 1 with "該当する施術者データがありません。" when this office
// has no current staff; -1 with the wrapper's text, or with the fault's lines.
short iGetCbStaffData(data::cT_ADODB& db, std::vector<StaffEntry>& list, QString& sErrMsg);

QString sqlGetStaffData(qint32 nIDNo);
// Each row found writes its name to name; no row leaves it as it was. 0, or -1 with
// the wrapper's text or the fault's lines.
short iGetStaffData(data::cT_ADODB& db, qint32 nIDNo, QString& name, QString& sErrMsg);

}  // namespace selection

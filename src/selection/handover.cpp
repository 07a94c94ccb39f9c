#include "selection/handover.h"

#include <QStringList>

namespace selection {

void appendPerRow(const ConsentRows& rows, HandOver& out)
{
    for (size_t i = 0; i < rows.size(); ++i) {
        const ConsentRow& r = rows[i];
        out.sIshiID_SEAL += r.IshiIDno;
        out.sTantouID_SEAL += QString::number(r.nTantou);
        out.sTantouName_SEAL += r.StaffName;
        if (i + 1 < rows.size()) {
            out.sIshiID_SEAL += u',';
            out.sTantouID_SEAL += u',';
            out.sTantouName_SEAL += u',';
        }
    }
}

void joinPerDoctor(const ConsentRows& rows, HandOver& out)
{
    out = {};
    qint32 previousStaff = -1;
    QStringList seen;
    for (const ConsentRow& r : rows) {
        if (r.nTantou != previousStaff) {
            previousStaff = r.nTantou;
            seen = QStringList{r.IshiIDno};
        } else if (seen.contains(r.IshiIDno)) {
            continue;
        } else {
            seen << r.IshiIDno;
        }
        if (!out.sTantouID_SEAL.isEmpty()) {
            out.sIshiID_SEAL += u',';
            out.sTantouID_SEAL += u',';
            out.sTantouName_SEAL += u',';
        }
        out.sIshiID_SEAL += r.IshiIDno;
        out.sTantouID_SEAL += QString::number(r.nTantou);
        out.sTantouName_SEAL += r.StaffName;
    }
}

}  // namespace selection

#pragma once
// Map entries (RIYOUSHA_MAP): the coordinates of a record of this office, kept beside
// it by the writes of the office, staff and facility tables when the suite's map
// switch is on.

#include <QString>

namespace data {

// The suite's process-wide map switch: "1" turns the entries on. Other programs of
// the suite set it; this program leaves it off.
extern QString gsChizuSetting;

inline bool bChizuOn() { return gsChizuSetting == QStringLiteral("1"); }

// Writes the entry of record nIDNo of this office through a connection of its own
// ("adodb.ini"): an update of the entry when it exists, an insert otherwise, stamped
// with the server's time. 0, or -1 with "iChizuLoad() でエラー", CR LF and the reason
// in sErrMsg. Being outside the writer's transaction, on a server that locks the
// whole database (SQLite) it needs the writer's changes committed first.
short iChizuLoad(qint32 nIDNo, double nLat, double nLon, QString& sErrMsg);

QString sqlChizuSelect(qint32 nIDNo);
QString sqlChizuUpdate(qint32 nIDNo, double nLat, double nLon);
QString sqlChizuInsert(qint32 nIDNo, double nLat, double nLon);

}  // namespace data

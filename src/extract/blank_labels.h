#pragma once
// The blank labels before the first addressee: a part-used sheet goes through the
// printer again, and the form fills its cells in reading order, so the used cells are
// skipped by blank lines in the data.

#include <QString>
#include <QStringList>

namespace extract {

class SealCsvFile;

// The blank line: the number 0 and nineteen commas, the twenty fields of a label's
// line left empty. For doctors the first handed-over staff number stands at its end.
QString blankLabelLine(short nMst, const QStringList& asPickedIDs);

// The number of blank lines before the first addressee: nStartPos - 1, none below 2.
int blankLabelCount(short nStartPos);

// writeBlankRows: the blank lines of the start cell into the open CSV. A fault shows
// "空データ作成時にエラーが発生しました。"; 0 for success, 1 for failure.
short writeBlankRows(SealCsvFile& csv, short nStartPos, short nMst, const QStringList& asPickedIDs);

}  // namespace extract

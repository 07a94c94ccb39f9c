#pragma once
// The consent ledger's data file "同意データ.csv": a title row and one line per
// patient, texts quoted as they stand, numbers bare. The running number starts again
// at 1 for each staff member.

#include "selection/consent_row.h"

#include <QStringList>

namespace selection {

inline const QString kLedgerCsvName = QStringLiteral("同意データ.csv");

// The column titles the ledger form reads, in order.
const QStringList& ledgerTitles();
// The text of column "種別" for a kind of treatment.
QString ledgerKindText(short iSejutsu);
// The lines of the file, without line ends. kigen: the output month as the screen
// holds it; kijunDisp: the state of "基準日を出力する".
QStringList ledgerCsvLines(const ConsentRows& rows, const QDate& kigen, short iSejutsu, bool kijunDisp);
// Replaces the file at path (a previous one is deleted first). A failure to write is a
// fault (base::VbError).
void writeLedgerCsv(const QString& path, const QStringList& lines);

}  // namespace selection

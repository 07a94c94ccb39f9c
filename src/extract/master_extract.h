#pragma once
// The addressees that are not patients: each kind's rows read once into memory, and
// the office's own row for the sender block of the labels.

#include "extract/addressee_data.h"

#include <QString>

namespace extract {

// Reads the rows of kind K (1 to 8) into data and sets its bKindRead on success.
// failureText is the kind's own sentence. Doctors, insurers and referrers that fail
// set nCloseState to 1, the table kinds to -1. Returns -1, or 0 when the database
// could not be closed after a good read.
short readKind(short K, bool hokenjaFromPatients, const QString& failureText, AddresseeData& data, short& nCloseState);

// Reads every CORP row of this office into data.oOwnCorpList; its first row is the
// sender. Failures are shown and leave the list as it was.
void readOwnCorp(AddresseeData& data);

}  // namespace extract

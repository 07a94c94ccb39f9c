#pragma once
// What a side screen hands back to the seal screen: the addressee numbers, the staff
// numbers and the staff names of its rows, comma-joined, position for position.

#include "selection/consent_row.h"

namespace selection {

struct HandOver {
    QString sIshiID_SEAL;
    QString sTantouID_SEAL;
    QString sTantouName_SEAL;
};

// One entry per row, appended to what the members already hold.
void appendPerRow(const ConsentRows& rows, HandOver& out);
// One entry per doctor and staff member: the members are cleared first, and a doctor
// already listed for the current run of one staff number is skipped.
void joinPerDoctor(const ConsentRows& rows, HandOver& out);

}  // namespace selection

#pragma once
// The addressees held in memory by the seal screen: the patients, read anew at every
// search, and the rows of the other kinds, each read once per run of the screen.

#include "base/vb_error.h"
#include "data/ct_adodb.h"
#include "data/ct_caremane.h"
#include "data/ct_corp.h"
#include "data/ct_sisetsu.h"
#include "data/ct_staff.h"
#include "data/master_loaders.h"
#include "extract/riyousha_extract.h"

#include <array>
#include <memory>

namespace extract {

struct AddresseeData {
    // Sized to one empty element from the start, so that a first search that reads
    // nothing fills an empty list.
    RiyoushaArray aRiyousha = RiyoushaArray(1);
    // Per AddresseeKind value (1 to 8 are used): true once that kind's rows are held.
    std::array<bool, 9> bKindRead{};

    std::vector<data::DoctorRec> aDoctor;
    qint32 nDoctorCount = 0;
    std::vector<data::HokenjaRec> aHokenja;
    qint32 nHokenjaCount = 0;
    std::vector<data::SyoukaiRec> aSyoukai;
    qint32 nSyoukaiCount = 0;

    // The kinds read through table objects, each with the database object it read by.
    data::cT_CAREMANE oCaremaneList;
    data::cT_STAFF oStaffList;
    data::cT_SISETSU oSisetsuList;
    data::cT_SISETSU oIryouList;
    data::cT_CORP oCorpList;
    std::array<std::unique_ptr<data::cT_ADODB>, 9> db;

    // The office's own row, the sender block of every label for the life of the screen.
    data::cT_CORP oOwnCorpList;
    data::cD_CORP oOwnCorp;
    std::unique_ptr<data::cT_ADODB> ownDb;
};

// The number of rows an array holds by its upper bound; fault 9 when never sized.
template <class Array>
int upperBound(const Array& a)
{
    if (a.empty()) throw base::VbError::subscriptOutOfRange();
    return static_cast<int>(a.size()) - 1;
}

}  // namespace extract

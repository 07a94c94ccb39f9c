#pragma once
// The addressees held in memory by the seal screen: the patients, read anew at every
// search, and the rows of the other kinds, each read once per run of the screen.

#include "base/vb_error.h"
#include "extract/riyousha_extract.h"

#include <array>

namespace extract {

struct AddresseeData {
    // Empty until the first read: the array has then never been sized, and asking for
    // its upper bound is the runtime's fault 9, as it was.
    RiyoushaArray aRiyousha;
    // Per AddresseeKind value (1 to 8 are used): true once that kind's rows are held.
    std::array<bool, 9> bKindRead{};
};

// The number of rows an array holds by its upper bound; fault 9 when never sized.
template <class Array>
int upperBound(const Array& a)
{
    if (a.empty()) throw base::VbError::subscriptOutOfRange();
    return static_cast<int>(a.size()) - 1;
}

}  // namespace extract

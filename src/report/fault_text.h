#pragma once
// The report drivers keep a trapped fault in sErrMsg as "(", the number without a
// blank, ")" and the runtime's description.

#include "base/vb_error.h"

#include <QString>

namespace report {

inline QString faultText(const base::VbError& fault)
{
    return u'(' + QString::number(fault.number()) + u')' + fault.description();
}

}  // namespace report

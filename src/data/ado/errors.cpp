#include "data/ado/errors.h"

#include "data/ado/faults.h"

namespace data::ado {

const Error& Errors::Item(int index) const
{
    if (index < 0 || index >= Count()) throw fault::itemNotFound();
    return items_[static_cast<size_t>(index)];
}

}  // namespace data::ado

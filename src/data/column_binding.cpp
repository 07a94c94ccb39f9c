#include "data/column_binding.h"

#include "base/dates.h"
#include "base/vb_error.h"
#include "data/entity_support.h"

#include <cmath>

namespace data {

QString textByRule(const QVariant& value, NullRule rule)
{
    switch (rule) {
    case NullRule::EmptyTrimmed:
        return entity::csNull2Trim(value);
    case NullRule::Empty:
        return base::csNull2Str(value);
    case NullRule::Keep:
        break;
    }
    return base::CStr(value);
}

qint32 longByRule(const QVariant& value) { return entity::nNull2Lng(value); }

short intByRule(const QVariant& value) { return entity::iNull2Int(value); }

double currencyByRule(const QVariant& value) { return entity::cuNull2Cur(value); }

// iRoomAnbunUmu is an integer column the patient record reads as a date: a number is
// a count of days from the runtime's day zero.
QDate dateByRule(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        return value.toDate();
    case QMetaType::QDateTime:
        return value.toDateTime().date();
    case QMetaType::QString:
        return base::CDate(value.toString());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: {
        const double days = std::floor(value.toDouble());
        if (std::abs(days) > 3000000.0) throw base::VbError::overflow();
        return base::dateZero().addDays(static_cast<qint64>(days));
    }
    default:
        throw base::VbError::typeMismatch();
    }
}

}  // namespace data

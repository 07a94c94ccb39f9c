#include "data/entity_support.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/text_codec.h"
#include "controls/platform.h"

namespace data::entity {

void addLine(QString& sql, const QString& piece)
{
    sql += piece;
    sql += QStringLiteral("\r\n");
}

void addSiteKey(QString& sql)
{
    addLine(sql, QStringLiteral(" iKyotenCd = ") + QString::number(app::iKyotenCd));
    addLine(sql, QStringLiteral(" and iKyotenEb = ") + QString::number(app::iKyotenEb));
}

void Conditions::next()
{
    addLine(sql_, any_ ? QStringLiteral(" and") : QStringLiteral(" where"));
    any_ = true;
}

QString csNull2Trim(const QVariant& value)
{
    return base::IsNull(value) ? QString() : base::Trim(base::CStr(value));
}

qint32 nNull2Lng(const QVariant& value) { return base::nNull2Long(value); }

short iNull2Int(const QVariant& value)
{
    if (base::IsNull(value))
        return 0;
    const qint32 n = base::nNull2Long(value);
    if (n < -32768 || n > 32767)
        throw base::VbError::overflow();
    return static_cast<short>(n);
}

double cuNull2Cur(const QVariant& value)
{
    if (base::IsNull(value))
        return 0.0;
    if (value.typeId() == QMetaType::QString)
        return base::CDbl(value.toString());
    bool ok = false;
    const double d = value.toDouble(&ok);
    if (!ok)
        throw base::VbError::typeMismatch();
    return d;
}

QString faultText(const base::VbError& fault)
{
    return QString::number(fault.number()) + QStringLiteral("\r\n") + fault.description();
}

short iGetComputerName(QString& csName)
{
    constexpr qsizetype kBuffer = 250;
    const QString name = app::platform().machineName();
    // The call fails when the name and its terminating zero do not fit the buffer.
    if (base::toCp932(name).size() + 1 > kBuffer)
        return -1;
    const qsizetype nul = name.indexOf(QChar(u'\0'));
    csName = nul < 0 ? name : name.left(nul);
    return 0;
}

}  // namespace data::entity

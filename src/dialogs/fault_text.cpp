#include "dialogs/fault_text.h"

#include "app/messages.h"

namespace dialogs {

QString faultLines(const QString& routine, const base::VbError& fault)
{
    return routine + QStringLiteral("\r\n") + QString::number(fault.number()) + QStringLiteral("\r\n")
           + fault.description();
}

void showFault(const QString& routine, const base::VbError& fault)
{
    app::msgBox(faultLines(routine, fault), controls::BoxStyle::Critical, QString());
}

}  // namespace dialogs

#include "dialogs/fault_text.h"

#include "app/messages.h"

namespace dialogs {

QString faultLines(const QString& routine, const base::VbError& fault)
{
    return routine + QStringLiteral("\r\n") + QString::number(fault.number()) + QStringLiteral("\r\n") +
           fault.description();
}

void showFault(const QString& routine, const base::VbError& fault) { showText(faultLines(routine, fault)); }

void showText(const QString& text) { app::msgBox(text, controls::BoxStyle::Critical, QString()); }

}  // namespace dialogs

#include "app/messages.h"

#include "app/globals.h"
#include "base/log.h"

namespace app {

int msgBox(const QString& text, int style, const QString& title)
{
    // A box's text may name a patient; at the default level only that a box was shown.
    qCInfo(base::lcApp).noquote() << "box" << style << title;
    qCDebug(base::lcApp).noquote() << "box text:" << text;
    return platform().msgBox(text, style, title);
}

QString patternAText(const QString& sentence, const base::VbError& fault)
{
    return sentence + u'\r' + u'(' + QString::number(fault.number()) + QStringLiteral(") ") + fault.description();
}

QString patternBText(const base::VbError& fault, const QString& routine)
{
    QString text = routine.isEmpty() ? QString() : u'[' + routine + u']';
    return text + QStringLiteral("Error:") + fault.description();
}

Handler::Handler(HandlerKind kind, Report report, Options options)
        : kind_(kind), report_(std::move(report)), options_(options)
{
    if (options_.hourglass) platform().setPointer(controls::Pointer::Hourglass);
}

Handler::~Handler()
{
    const bool leaveHourglass = failed_ && kind_ != HandlerKind::Resume;
    if (options_.hourglass && !leaveHourglass) platform().setPointer(controls::Pointer::Normal);
}

void Handler::fail(const base::VbError& fault)
{
    failed_ = true;
    static const char* const kinds[] = {"resume", "stop", "stop and close"};
    qCWarning(base::lcApp).noquote() << "fault" << fault.number() << "in the handler"
                                     << (report_.text.isEmpty() ? QStringLiteral("(unnamed)") : report_.text) << "-"
                                     << kinds[int(kind_)];
    qCDebug(base::lcApp).noquote() << "fault description:" << fault.description();
    if (report_.form == Report::A)
        msgBox(patternAText(report_.text, fault), controls::BoxStyle::Critical, report_.title);
    else
        msgBox(patternBText(fault, report_.text), controls::BoxStyle::Plain, QString());
    if (kind_ == HandlerKind::Resume) return;
    stopped_ = true;
    if (kind_ == HandlerKind::StopAndClose && options_.closeState) *options_.closeState = 1;
}

QString unhandledFaultText(const base::VbError& fault)
{
    return QStringLiteral("実行時エラー '%1':\r\n\r\n%2").arg(fault.number()).arg(fault.description());
}

}  // namespace app

#include "app/process.h"

#include "app/frm_back.h"
#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/log.h"

namespace app {

short runModeOf(const QString& commandLine) { return base::CInt(base::Fix(base::Val(commandLine))); }

int runProcess(const ProcessStart& start, controls::Platform& platform)
{
    setPlatform(&platform);
    try {
        frmBack back(platform, start.programDir);
        platform.showModeless(back);

        if (start.commandLine.trimmed().isEmpty()) {
            msgBox(QStringLiteral("処理モードが設定されていません。"), controls::BoxStyle::Warning, kStartErrorTitle);
            msgBox(QStringLiteral("起動できません！"), controls::BoxStyle::Critical, kStartErrorTitle);
            platform.endProcess(0);
        }
        gnRunMode = runModeOf(start.commandLine);
        if (start.makeSealScreen) {
            std::unique_ptr<controls::Screen> seal = start.makeSealScreen(platform);
            platform.showModal(*seal);
        }
        return 0;
    } catch (const controls::ProcessEnd& end) {
        return end.exitCode;
    } catch (const base::VbError& fault) {
        qCCritical(base::lcApp).noquote() << "fault" << fault.number() << "no handler caught; the process ends";
        msgBox(unhandledFaultText(fault), controls::BoxStyle::Critical, QString());
        return 1;
    }
}

}  // namespace app

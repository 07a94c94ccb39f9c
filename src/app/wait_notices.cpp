#include "app/wait_notices.h"

namespace app {

namespace {
constexpr int kTextIndent = 600;  // the icon's column, in twips
}

frmWaitMsg::frmWaitMsg(controls::Platform& platform) : Screen(QStringLiteral("frmWaitMsg"), platform)
{
    add(laMsg);
    add(cmdOK);
    for (auto& img : imgInf) add(img);
    laMsg.setWidth(3600);
    laMsg.setHeight(600);
    cmdOK.setWidth(1200);
    cmdOK.setHeight(400);
    cmdOK.Click = [this] { Unload(); };
}

void frmWaitMsg::Form_Load()
{
    for (int i = 0; i < static_cast<int>(imgInf.size()); ++i) imgInf[static_cast<size_t>(i)].setVisible(i == nIcon);
    resize(width_, height_);
}

void frmWaitMsg::Form_Activate()
{
    // Polls the clock and lets events through, so OK or a lost focus can end it early.
    const QDateTime end = platform().now().addSecs(nSeconds);
    while (!isUnloaded() && platform().now() < end) platform().doEvents();
    if (!isUnloaded()) Unload();
}

void frmWaitMsg::resize(int width, int height)
{
    width_ = width;
    height_ = height;
    cmdOK.setLeft((width - cmdOK.width()) / 2);
    cmdOK.setTop(height - cmdOK.height() - 120);
    laMsg.setLeft(kTextIndent + (width - kTextIndent - laMsg.width()) / 2);
    laMsg.setTop((cmdOK.top() - laMsg.height()) / 2);
}

frmMsgWait::frmMsgWait(controls::Platform& platform) : Screen(QStringLiteral("frmMsgWait"), platform)
{
    add(Frame1);
    add(imgWait);
    add(laMessage);
}

}  // namespace app

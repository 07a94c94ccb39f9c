#pragma once
// The windows of the two wait notices.

#include "gui/screen_dialog.h"

#include <QDialog>
#include <memory>

namespace app {
class frmWaitMsg;
class frmMsgWait;
}  // namespace app

namespace gui {

class Binder;
class QtPlatform;

// The timed notice: an icon, the text, OK. Losing the focus closes it, as the model says.
class WaitMsgWindow : public ScreenDialog {
public:
    WaitMsgWindow(QtPlatform& platform, app::frmWaitMsg& screen);
    ~WaitMsgWindow() override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    app::frmWaitMsg& screen_;
    std::unique_ptr<Binder> binder_;
};

// The plain notice "しばらくお待ちください。".
class MsgWaitWindow : public QDialog {
public:
    MsgWaitWindow(QtPlatform& platform, app::frmMsgWait& screen);
    ~MsgWaitWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

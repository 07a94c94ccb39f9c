#pragma once
// The window of the version screen.

#include "gui/screen_dialog.h"

#include <QDialog>
#include <memory>

namespace dialogs {
class frmVer;
}

namespace gui {

class Binder;
class QtPlatform;

class VerWindow : public ScreenDialog {
public:
    VerWindow(QtPlatform& platform, dialogs::frmVer& screen);
    ~VerWindow() override;

private:
    dialogs::frmVer& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

#pragma once
// The desktop window of the progress report screen (frmSeal_SejutsuKeika).

#include "gui/screen_dialog.h"

#include <QDialog>
#include <memory>

namespace selection {
class frmSeal_SejutsuKeika;
}

namespace gui {

class Binder;
class QtPlatform;

class KeikaWindow : public ScreenDialog {
public:
    KeikaWindow(QtPlatform& platform, selection::frmSeal_SejutsuKeika& screen);
    ~KeikaWindow() override;

private:
    QWidget* buildMonths();
    QWidget* buildHidden();
    QWidget* buildStaff();

    selection::frmSeal_SejutsuKeika& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

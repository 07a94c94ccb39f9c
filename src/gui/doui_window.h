#pragma once
// The desktop window of the consent renewal screen (frmDoui), in both of its modes,
// and the menus it shares with the progress report window.

#include "gui/screen_dialog.h"

#include <QDialog>
#include <memory>

class QMenuBar;

namespace selection {
class ConsentSideScreen;
class frmDoui;
}  // namespace selection

namespace gui {

class Binder;
class QtPlatform;

// The menus of the consent side screens: 機能, 設定 with the sort order, ヘルプ.
QMenuBar* buildSideScreenMenus(Binder& binder, selection::ConsentSideScreen& screen);
// The command row of the consent side screens: print, preview, labels, and 戻る.
QWidget* buildSideScreenCommands(Binder& binder, selection::ConsentSideScreen& screen);

class DouiWindow : public ScreenDialog {
public:
    DouiWindow(QtPlatform& platform, selection::frmDoui& screen);
    ~DouiWindow() override;

private:
    QWidget* buildConditions();
    QWidget* buildStaff();

    selection::frmDoui& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

#pragma once
// The desktop window of the consent renewal screen (frmDoui), in both of its modes,
// and the menus it shares with the progress report window.

#include <QDialog>
#include <memory>

class QMenuBar;

namespace selection {
class ConsentSideScreen;
class frmDoui;
}

namespace gui {

class Binder;
class QtPlatform;

// The menus of the consent side screens: 機能, 設定 with the sort order, ヘルプ.
QMenuBar* buildSideScreenMenus(Binder& binder, selection::ConsentSideScreen& screen);

class DouiWindow : public QDialog {
public:
    DouiWindow(QtPlatform& platform, selection::frmDoui& screen);
    ~DouiWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    QWidget* buildConditions();
    QWidget* buildStaff();
    QWidget* buildCommands();

    QtPlatform& platform_;
    selection::frmDoui& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

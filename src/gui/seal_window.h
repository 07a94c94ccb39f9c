#pragma once
// The desktop window of the seal screen: every control of the model as a widget with
// its Japanese caption, laid out as the office knows the screen.

#include <QMainWindow>
#include <memory>

namespace seal {
class frmPrintシール;
}

namespace gui {

class Binder;
class QtPlatform;

class SealWindow : public QMainWindow {
public:
    SealWindow(QtPlatform& platform, seal::frmPrintシール& screen);
    ~SealWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* buildKinds();
    QWidget* buildSearch();
    QWidget* buildList();
    QWidget* buildOrder();
    QWidget* buildSheet();
    QWidget* buildCommands();
    void buildMenus();

    QtPlatform& platform_;
    seal::frmPrintシール& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

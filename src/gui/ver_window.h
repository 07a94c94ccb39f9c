#pragma once
// The window of the version screen.

#include <QDialog>
#include <memory>

namespace dialogs {
class frmVer;
}

namespace gui {

class Binder;
class QtPlatform;

class VerWindow : public QDialog {
public:
    VerWindow(QtPlatform& platform, dialogs::frmVer& screen);
    ~VerWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    QtPlatform& platform_;
    dialogs::frmVer& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

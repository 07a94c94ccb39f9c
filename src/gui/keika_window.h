#pragma once
// The desktop window of the progress report screen (frmSeal_SejutsuKeika).

#include <QDialog>
#include <memory>

namespace selection {
class frmSeal_SejutsuKeika;
}

namespace gui {

class Binder;
class QtPlatform;

class KeikaWindow : public QDialog {
public:
    KeikaWindow(QtPlatform& platform, selection::frmSeal_SejutsuKeika& screen);
    ~KeikaWindow() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    QWidget* buildMonths();
    QWidget* buildHidden();
    QWidget* buildStaff();
    QWidget* buildCommands();

    QtPlatform& platform_;
    selection::frmSeal_SejutsuKeika& screen_;
    std::unique_ptr<Binder> binder_;
};

}  // namespace gui

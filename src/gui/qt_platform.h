#pragma once
// The platform services on a real desktop: Qt message boxes in the original's styles,
// the wait cursor, detached program starts, the browser, and screens shown as windows.

#include "controls/platform.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;
class QEventLoop;

namespace gui {

// Makes the window of a screen model; null when the screen has no window of its own.
using ViewFactory = std::function<std::unique_ptr<QWidget>(controls::Screen&)>;

class QtPlatform : public controls::Platform {
public:
    explicit QtPlatform(ViewFactory views);
    ~QtPlatform() override;

    int msgBox(const QString& text, int style, const QString& title) override;
    void setPointer(controls::Pointer pointer) override;
    bool startProgram(const QString& commandLine, int windowStyle) override;
    void openUrl(const QString& url) override;
    void beep() override;
    void sendKey(const QString& key) override;
    void doEvents() override;
    QDate today() override;
    QDateTime now() override;
    QString machineName() override;
    void showModal(controls::Screen& screen) override;
    void showModeless(controls::Screen& screen) override;
    [[noreturn]] void endProcess(int exitCode) override;

    // Runs one act of the operator on the model. The original's End, or a fault no
    // handler caught, must not unwind through Qt's event dispatch: it is kept, every
    // open screen's event loop is left, and showModal throws it on the far side.
    void dispatch(const std::function<void()>& act);

private:
    void leaveAllLoops();

    std::vector<QEventLoop*> loops_;
    std::optional<controls::ProcessEnd> pendingEnd_;
    ViewFactory views_;
    std::vector<std::unique_ptr<QWidget>> modeless_;
    bool hourglass_ = false;
};

// The Qt message box for a style number: icon, buttons, default button, and the answer
// as the original numbers it. Exposed for tests.
struct BoxSpec {
    int icon;  // QMessageBox::Icon
    bool okCancel;
    bool cancelIsDefault;
};
BoxSpec boxSpecForStyle(int style);

}  // namespace gui

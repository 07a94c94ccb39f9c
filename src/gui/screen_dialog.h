#pragma once
// A dialog window of a screen model: its close box and Esc are the model's to handle
// (the model may refuse; its unload hides the window).

#include <QDialog>

namespace controls {
class Screen;
}

namespace gui {

class QtPlatform;

class ScreenDialog : public QDialog {
public:
    ScreenDialog(QtPlatform& platform, controls::Screen& model);

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

    QtPlatform& platform_;

private:
    controls::Screen& model_;
};

}  // namespace gui

#pragma once
// The background window: the suite's title and the wallpaper stretched over it.

#include <QWidget>

namespace app {
class frmBack;
}

namespace gui {

class BackWindow : public QWidget {
public:
    explicit BackWindow(app::frmBack& screen);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    app::frmBack& screen_;
    QPixmap wallpaper_;
    int observer_ = 0;
};

}  // namespace gui

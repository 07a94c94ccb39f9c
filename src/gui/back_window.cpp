#include "gui/back_window.h"

#include "app/frm_back.h"
#include "base/text_codec.h"

#include <QPainter>

namespace gui {

BackWindow::BackWindow(app::frmBack& screen) : screen_(screen)
{
    setWindowTitle(screen.caption());
    auto load = [this] {
        wallpaper_ = screen_.ImgWall.picturePath().isEmpty() ? QPixmap()
                                                             : QPixmap(base::nativePath(screen_.ImgWall.picturePath()));
        update();
    };
    load();
    observer_ = screen_.ImgWall.observe([load](const controls::Change&) { load(); });
    resize(1280, 800);
}

void BackWindow::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    if (wallpaper_.isNull()) {
        p.fillRect(rect(), QColor(0x2f, 0x55, 0x7f));
        return;
    }
    // Stretched to the whole inside, as the wallpaper always fills the window.
    p.drawPixmap(rect(), wallpaper_);
}

}  // namespace gui

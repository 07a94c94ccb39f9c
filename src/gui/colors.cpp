#include "gui/colors.h"

#include <QApplication>
#include <QPalette>

namespace gui {

QColor toQColor(controls::Color color)
{
    if (color & 0x80000000u) {
        const QPalette pal = QApplication::palette();
        switch (color) {
        case controls::Colors::ScrollBars:
            return QColor(0xC8, 0xC8, 0xC8);
        case controls::Colors::WindowBackground:
            return pal.color(QPalette::Base);
        case controls::Colors::WindowText:
            return pal.color(QPalette::Text);
        case controls::Colors::ButtonFace:
            return pal.color(QPalette::Button);
        default:
            return pal.color(QPalette::Window);
        }
    }
    return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
}

}  // namespace gui

#pragma once
// The windows of the program's screens, by screen: the view factory of QtPlatform.

#include <QWidget>
#include <memory>

namespace controls {
class Screen;
}

namespace gui {

class QtPlatform;

// The window of a screen model, or null for a screen without one.
std::unique_ptr<QWidget> makeView(QtPlatform& platform, controls::Screen& screen);

}  // namespace gui

#pragma once
// The original's colour numbers (0x00BBGGRR, or a system colour) as Qt colours.

#include "controls/control.h"

#include <QColor>

namespace gui {

QColor toQColor(controls::Color color);

}  // namespace gui

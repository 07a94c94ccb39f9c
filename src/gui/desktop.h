#pragma once
// The program on a desktop: the Qt application, the Qt platform, and the screens as
// windows.

#include "app/process.h"

class QApplication;

namespace gui {

// True when a display can be used (a windowing system, or a Qt platform chosen
// explicitly).
bool displayAvailable();

// The program's font and Qt's Japanese texts on an application (tests use it too, so
// that they measure the windows as the office sees them).
void useProgramLook(QApplication& app);

// Runs the process with windows; returns the exit code.
int runDesktop(int& argc, char** argv, const app::ProcessStart& start);

}  // namespace gui

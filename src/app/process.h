#pragma once
// The start of the process: the background window, the run mode from the command
// line, and the seal screen shown modally over it.

#include "controls/platform.h"
#include "controls/screen.h"

#include <functional>
#include <memory>

namespace app {

using ScreenFactory = std::function<std::unique_ptr<controls::Screen>(controls::Platform&)>;

struct ProcessStart {
    QString commandLine;  // the original's command line: the run mode
    QString programDir;   // the program's own directory
    ScreenFactory makeSealScreen;
};

// The run mode of a command line: its leading number, truncated to a whole number;
// text that is not numeric gives 0. A number beyond 16 bits is the runtime's fault 6.
short runModeOf(const QString& commandLine);

// Runs the process on the platform to its end and returns the exit code. A fault no
// handler caught is shown as the system shows it and ends the process.
int runProcess(const ProcessStart& start, controls::Platform& platform);

}  // namespace app

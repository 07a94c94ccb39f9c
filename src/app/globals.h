#pragma once
// The process-wide values of the program, set once at start and read everywhere.

#include <QString>

namespace controls {
class Platform;
}

namespace app {

extern short gnRunMode;      // the run mode from the command line
extern QString gsAppPath;    // the program's directory (no trailing separator)
extern short iKyotenCd;      // first half of SiteKey, from "BASEID"
extern short iKyotenEb;      // second half of SiteKey
extern QString gsLastError;  // the last failure text of the record loaders

// The outside world of this process: set by the entry point before anything else runs.
// platform() throws std::logic_error when none is set; setPlatform returns the one it
// replaces, so that a scope can put it back.
controls::Platform& platform();
controls::Platform* setPlatform(controls::Platform* platform);

}  // namespace app

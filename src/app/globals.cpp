#include "app/globals.h"

#include "controls/platform.h"

#include <stdexcept>

namespace app {

short gnRunMode = 0;
QString gsAppPath;
short iKyotenCd = 0;
short iKyotenEb = 0;
QString gsLastError;

namespace {
controls::Platform* g_platform = nullptr;
}

controls::Platform& platform()
{
    // A call before the entry point has set it is a fault of the program's own wiring;
    // say so in every build rather than run on through a null pointer.
    if (!g_platform) throw std::logic_error("app::platform() called before the entry point set the platform");
    return *g_platform;
}

controls::Platform* setPlatform(controls::Platform* p)
{
    controls::Platform* before = g_platform;
    g_platform = p;
    return before;
}

}  // namespace app

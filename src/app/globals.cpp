#include "app/globals.h"

#include "controls/platform.h"

#include <cassert>

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
    assert(g_platform && "the entry point sets the platform before anything runs");
    return *g_platform;
}

void setPlatform(controls::Platform* p) { g_platform = p; }

}  // namespace app

#pragma once
// The original's process-wide values (app/globals.h) for the length of one test: the
// scope remembers them all, the test sets what it needs, and the scope's end puts back
// every value and the platform, so that no test leaves its office or folder behind.

#include "app/globals.h"

#include <QString>

namespace sealtest {

class GlobalsScope {
public:
    GlobalsScope()
            : runMode_(app::gnRunMode), appPath_(app::gsAppPath), kyotenCd_(app::iKyotenCd), kyotenEb_(app::iKyotenEb),
              lastError_(app::gsLastError), platform_(app::setPlatform(nullptr))
    {
        app::setPlatform(platform_);
    }
    explicit GlobalsScope(controls::Platform& platform) : GlobalsScope() { app::setPlatform(&platform); }

    ~GlobalsScope()
    {
        app::gnRunMode = runMode_;
        app::gsAppPath = appPath_;
        app::iKyotenCd = kyotenCd_;
        app::iKyotenEb = kyotenEb_;
        app::gsLastError = lastError_;
        app::setPlatform(platform_);
    }

    GlobalsScope(const GlobalsScope&) = delete;
    GlobalsScope& operator=(const GlobalsScope&) = delete;

private:
    short runMode_;
    QString appPath_;
    short kyotenCd_;
    short kyotenEb_;
    QString lastError_;
    controls::Platform* platform_;
};

}  // namespace sealtest

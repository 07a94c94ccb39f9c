// The engine's script reader on any bytes: a script reads or is refused with an
// EngineError, and what it reads lies within the engine's limits.

#include "base/text_codec.h"
#include "engine/engine_error.h"
#include "engine/limits.h"
#include "engine/wfd_script.h"

#include "fuzz_support.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace engine;
    try {
        const WfdScript s = parseWfdScript(base::fromCp932(fuzz::bytesOf(data, size)), QStringLiteral("WfdCom.dat"));
        fuzz::check(s.joined || !s.formFile.isEmpty(), "a single report names its form");
        fuzz::check(s.repeatStart >= 0 && s.repeatStart <= limits::kSlotsPerPage, "the repeat start is bounded");
        fuzz::check(std::abs(s.offsetX) <= limits::kOffsetTenths && std::abs(s.offsetY) <= limits::kOffsetTenths,
                    "the offsets are bounded");
        fuzz::check(std::abs(s.zoom) <= limits::kZoomPercent, "the zoom is bounded");
        for (const DataBinding& b : s.data) fuzz::check(!b.file.isEmpty(), "a data line names its file");
    } catch (const EngineError& e) {
        fuzz::check(!e.message().isEmpty(), "a refusal says why");
    }
    return 0;
}

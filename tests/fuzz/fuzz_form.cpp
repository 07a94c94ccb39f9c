// The form reader on any bytes: a form (or a joined form) reads or is refused with an
// EngineError, and every size and count it reads lies within the engine's limits, so
// the layout can compute with them without overflow.

#include "engine/engine_error.h"
#include "engine/form.h"
#include "engine/limits.h"

#include "fuzz_support.h"

#include <cmath>

namespace {

bool inPaper(double v) { return std::abs(v) <= engine::limits::kLengthMm; }

void checkFields(const QList<engine::Field>& fields)
{
    for (const engine::Field& f : fields) {
        fuzz::check(inPaper(f.rect.x()) && inPaper(f.rect.y()) && inPaper(f.rect.width()) && inPaper(f.rect.height()),
                    "a field lies within the longest paper");
        fuzz::check(f.size > 0 && f.size <= engine::limits::kFontPoints, "a font size is bounded");
        for (const QRectF& box : f.boxes)
            fuzz::check(std::isfinite(box.x()) && std::isfinite(box.width()), "postal boxes are finite");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace engine;
    const QByteArray json = fuzz::bytesOf(data, size);
    try {
        if (isJoinedForm(json)) {
            const JoinedForm j = parseJoinedForm(json, QStringLiteral("tmp.wfd"));
            fuzz::check(parseJoinedForm(joinedFormJson(j), QStringLiteral("tmp.wfd")).reports.size() ==
                            j.reports.size(),
                        "a joined form writes back as it read");
            return 0;
        }
        const Form f = parseForm(json, QStringLiteral("hostile.wfd"));
        fuzz::check(f.paper.width() > 0 && f.paper.height() > 0 && inPaper(f.paper.width()) &&
                        inPaper(f.paper.height()),
                    "the paper is a real size within the limit");
        fuzz::check(f.cells.has_value() != f.list.has_value(), "a form is a grid or a list");
        if (f.cells) {
            const qint64 slots = qint64(f.cells->columns) * f.cells->rows;
            fuzz::check(slots >= 1 && slots <= limits::kSlotsPerPage, "cells per sheet are bounded");
            fuzz::check(f.cells->perPage() == slots, "cells per sheet do not overflow");
            const QRectF lastCell = f.cells->cell(int(slots) - 1);
            fuzz::check(std::isfinite(lastCell.right()) && std::isfinite(lastCell.bottom()),
                        "the last cell is computable");
        }
        if (f.list)
            fuzz::check(f.list->rows >= 1 && f.list->rows <= limits::kSlotsPerPage, "rows per page are bounded");
        checkFields(f.pageFields);
        checkFields(f.cellFields);
        checkFields(f.backFields);
        checkFields(f.rowFields);
    } catch (const EngineError& e) {
        fuzz::check(!e.message().isEmpty(), "a refusal says why");
    }
    return 0;
}

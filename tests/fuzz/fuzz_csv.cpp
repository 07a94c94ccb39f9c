// The engine's CSV reader on any bytes: a table reads or is refused with an
// EngineError, every row has one field per title, and every row knows its line.
//
// Input: the first byte says whether the file has a title line (odd: yes).

#include "base/text_codec.h"
#include "engine/csv_table.h"
#include "engine/engine_error.h"

#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace engine;
    if (size == 0) return 0;
    const bool hasTitle = data[0] & 1;
    const QString text = base::fromCp932(fuzz::bytesOf(data + 1, size - 1));
    try {
        const CsvTable t = parseCsv(text, QStringLiteral("シール.csv"), hasTitle);
        fuzz::check(t.rows.size() == t.rowLines.size(), "every row has its line");
        const int lineEnds = int(text.count(u'\n') + text.count(u'\r'));
        int last = 0;
        for (int r = 0; r < t.rows.size(); ++r) {
            if (hasTitle) fuzz::check(t.rows[r].size() == t.titles.size(), "a row has one field per title");
            fuzz::check(t.rowLines[r] > last && t.rowLines[r] <= lineEnds + 1,
                        "rows start on rising lines in the file");
            last = t.rowLines[r];
        }
    } catch (const EngineError& e) {
        fuzz::check(e.file() == QStringLiteral("シール.csv"), "a refusal names the file");
        fuzz::check(!e.message().isEmpty(), "a refusal says why");
    }
    return 0;
}

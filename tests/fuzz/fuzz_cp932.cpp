// The CP932 codec: any bytes decode without fault, a bad byte always leaves its mark,
// whole-character prefixes never split a character, and any text encodes to bytes
// that decode again.

#include "base/text_codec.h"

#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = fuzz::bytesOf(data, size);
    bool bad = false;
    const QString text = base::fromCp932(bytes, &bad);
    fuzz::check(bad == text.contains(QChar(0xFFFD)), "a bad byte is marked, and only a bad byte");
    fuzz::check(text.size() <= bytes.size(), "no byte becomes more than one character");

    const qsizetype cut = base::cp932PrefixLength(bytes, qsizetype(size / 2));
    fuzz::check(cut >= 0 && cut <= qsizetype(size / 2), "the prefix fits");
    if (!bad) {
        fuzz::check(base::fromCp932(bytes.left(cut)) + base::fromCp932(bytes.mid(cut)) == text,
                    "a prefix ends between characters");
        bool lossy = true;
        const QByteArray again = base::toCp932(text, &lossy);
        fuzz::check(!lossy && base::fromCp932(again) == text, "decoded text encodes back to the same text");
    }

    // The same bytes read as UTF-16 text: encoding never fails, "?" stands for what
    // CP932 cannot hold, and the result is clean CP932.
    const QString wide = QString::fromUtf16(reinterpret_cast<const char16_t*>(data), qsizetype(size / 2));
    const QByteArray encoded = base::toCp932(wide);
    bool encodedBad = true;
    base::fromCp932(encoded, &encodedBad);
    fuzz::check(!encodedBad, "encoded text is valid CP932");

    const QStringList lines = base::splitLines(text);
    for (const QString& line : lines)
        fuzz::check(!line.contains(u'\r') && !line.contains(u'\n'), "a line holds no line end");
    return 0;
}

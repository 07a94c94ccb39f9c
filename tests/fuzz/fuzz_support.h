#pragma once
// What the fuzz targets share: the libFuzzer entry point they each define, and a check
// that stops the run loudly, so that libFuzzer (or the corpus replay under CTest)
// keeps the input that broke a property.

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fuzz {

inline void check(bool holds, const char* property)
{
    if (holds) return;
    std::fprintf(stderr, "fuzz: property broken: %s\n", property);
    std::abort();
}

inline QByteArray bytesOf(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

}  // namespace fuzz

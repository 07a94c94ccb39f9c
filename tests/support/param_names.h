#pragma once
// Names for the cases of a parameterized suite, so that every CTest name is readable
// and the same from run to run (GoogleTest's default prints the parameter's bytes).

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace sealtest {

// A test name from a description: letters and digits kept, every other run of
// characters one '_'.
inline std::string caseName(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            out += c;
        else if (!out.empty() && out.back() != '_')
            out += '_';
    }
    while (!out.empty() && out.back() == '_') out.pop_back();
    return out.empty() ? std::string("unnamed") : out;
}

// The case's own `name` member.
struct ByName {
    template <class P>
    std::string operator()(const ::testing::TestParamInfo<P>& info) const
    {
        return caseName(info.param.name);
    }
};

// One name a case, in the order of the values.
struct Named {
    std::vector<std::string> names;
    template <class P>
    std::string operator()(const ::testing::TestParamInfo<P>& info) const
    {
        return names.at(info.index);
    }
};

}  // namespace sealtest

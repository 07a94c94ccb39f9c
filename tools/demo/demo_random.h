#pragma once
// The generator's one source of chance. std::mt19937's output is fixed by the C++
// standard, but the standard distributions are not, so the shaping is done here: the
// same seed gives the same installation with any standard library.

#include <QString>

#include <cstdint>
#include <random>
#include <vector>

namespace demo {

class Rng {
public:
    explicit Rng(std::uint32_t seed) : engine_(seed) {}

    // A whole number from lo to hi, both included (lo <= hi).
    int between(int lo, int hi);
    // True in about percent out of 100 draws.
    bool percent(int percent) { return between(0, 99) < percent; }
    // An index into a list of weights, chosen in proportion to them.
    int weighted(const std::vector<int>& weights);

    template <typename T>
    const T& pick(const std::vector<T>& items)
    {
        return items.at(static_cast<std::size_t>(between(0, static_cast<int>(items.size()) - 1)));
    }

    // n decimal digits, leading zeros allowed.
    QString digits(int n);

private:
    std::mt19937 engine_;
};

}  // namespace demo

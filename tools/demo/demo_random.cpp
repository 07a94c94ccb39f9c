#include "demo_random.h"

#include <numeric>
#include <stdexcept>

namespace demo {

int Rng::between(int lo, int hi)
{
    if (hi < lo) throw std::invalid_argument("Rng::between: empty range");
    const std::uint64_t span = static_cast<std::uint64_t>(hi) - static_cast<std::uint64_t>(lo) + 1;
    // Rejection keeps every value equally likely: draws from the incomplete top
    // stretch of the 32-bit range are thrown back.
    const std::uint64_t limit = (std::uint64_t{1} << 32) - ((std::uint64_t{1} << 32) % span);
    std::uint64_t draw;
    do {
        draw = engine_();
    } while (draw >= limit);
    return lo + static_cast<int>(draw % span);
}

int Rng::weighted(const std::vector<int>& weights)
{
    const int total = std::accumulate(weights.begin(), weights.end(), 0);
    int roll = between(0, total - 1);
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (roll < weights[i]) return static_cast<int>(i);
        roll -= weights[i];
    }
    return static_cast<int>(weights.size()) - 1;
}

QString Rng::digits(int n)
{
    QString s;
    s.reserve(n);
    for (int i = 0; i < n; ++i) s += QChar(u'0' + between(0, 9));
    return s;
}

}  // namespace demo

#include "shop/checking/lower_bound.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace shop::checking {

namespace {

constexpr double noiseOfFits = 1.1e-9;
constexpr double noiseOfBars = 1e-6;

} // namespace

int lowerBound(std::vector<double> lengths, double usable, double kerf)
{
    std::sort(lengths.begin(), lengths.end(), std::greater<>());
    std::vector<double> sums(lengths.size() + 1, 0.0); // Of the longest pieces, each with a kerf.
    for (std::size_t i = 0; i < lengths.size(); ++i)
        sums[i + 1] = sums[i] + lengths[i] + kerf;
    // Returns the number of pieces that are too long to share a bar with a piece of the length
    // `other`.
    const auto alone = [&](double other) {
        const double longest = usable + noiseOfFits - other - kerf;
        const auto end = std::partition_point(lengths.begin(), lengths.end(),
                                              [&](double each) { return each > longest; });
        return static_cast<std::size_t>(end - lengths.begin());
    };
    const double half = (usable + noiseOfFits - kerf) / 2;
    const std::size_t unpaired = alone(half);
    double bound = static_cast<double>(unpaired);
    for (std::size_t i = unpaired; i < lengths.size(); ++i) {
        if (i + 1 < lengths.size() && lengths[i + 1] == lengths[i])
            continue;
        const std::size_t apart = std::min(unpaired, alone(lengths[i]));
        const double shared = (sums[i + 1] - sums[apart]) / (usable + kerf);
        bound = std::max(bound, static_cast<double>(apart) + std::ceil(shared - noiseOfBars));
    }
    return static_cast<int>(bound);
}

} // namespace shop::checking

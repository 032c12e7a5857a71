#include "shop/planning/problem.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>

namespace shop::planning {

long Problem::pieces() const
{
    return std::accumulate(demand.begin(), demand.end(), 0L);
}

Size sizeOf(const Problem& problem, const Pattern& pattern)
{
    Size sum = 0;
    for (const Item& each : pattern)
        sum += problem.sizes[static_cast<std::size_t>(each.type)] * each.count;
    return sum;
}

int barsOf(const Packing& packing)
{
    return std::accumulate(packing.begin(), packing.end(), 0,
                           [](int sum, const Cut& each) { return sum + each.times; });
}

Packing bundled(const Packing& packing)
{
    Packing result;
    std::map<Pattern, std::size_t> places;
    for (const Cut& each : packing) {
        const auto [place, isNew] = places.emplace(each.pattern, result.size());
        if (isNew)
            result.push_back(each);
        else
            result[place->second].times += each.times;
    }
    return result;
}

int timesWithin(const Pattern& pattern, const std::vector<int>& pieces)
{
    int times = std::numeric_limits<int>::max();
    for (const Item& each : pattern)
        times = std::min(times, pieces[static_cast<std::size_t>(each.type)] / each.count);
    return pattern.empty() ? 0 : times;
}

void takeOut(const Pattern& pattern, int times, std::vector<int>& pieces)
{
    for (const Item& each : pattern)
        pieces[static_cast<std::size_t>(each.type)] -= each.count * times;
}

bool isEmpty(const std::vector<int>& pieces)
{
    return std::all_of(pieces.begin(), pieces.end(), [](int each) { return each == 0; });
}

} // namespace shop::planning

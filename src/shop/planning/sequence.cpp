#include "shop/planning/sequence.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>

namespace shop::planning {

namespace {

constexpr int none = -1;

/// Links bars to chains, in which the last length of a bar is the first length of the next one. A
/// type of piece is a length. Two bars can be linked by a type that both contain: the pieces of
/// this type are then cut at the end of the one bar and at the beginning of the other. Each of the
/// two ends of a bar can be linked to one other bar, by different types unless the bar has only one
/// type.
class Chains
{
public:
    explicit Chains(const Packing& packing)
        : packing_(packing), ends_(packing.size()), chainOf_(packing.size())
    {
        std::iota(chainOf_.begin(), chainOf_.end(), std::size_t(0));
    }

    /// Links bars that have a type of piece in common. Types that occur on few bars are linked
    /// first, because they offer the fewest possible links.
    void link()
    {
        std::map<int, std::vector<std::size_t>> barsOfType;
        for (std::size_t bar = 0; bar < packing_.size(); ++bar) {
            for (const Item& each : packing_[bar].pattern)
                barsOfType[each.type].push_back(bar);
        }
        std::vector<std::pair<std::size_t, int>> types;
        for (const auto& [type, bars] : barsOfType) {
            if (bars.size() > 1)
                types.emplace_back(bars.size(), type);
        }
        std::sort(types.begin(), types.end());
        for (const auto& [count, type] : types)
            linkAlong(type, barsOfType[type]);
    }

    Sequence sequence() const
    {
        Sequence result;
        std::vector<bool> isDone(packing_.size());
        for (std::size_t bar = 0; bar < packing_.size(); ++bar) {
            if (!isDone[bar] && (ends_[bar][0].type == none || ends_[bar][1].type == none))
                follow(bar, isDone, result);
        }
        return result;
    }

private:
    struct End
    {
        int type = none;
        std::size_t other = 0;
    };

    std::size_t chain(std::size_t bar) const
    {
        while (chainOf_[bar] != bar)
            bar = chainOf_[bar];
        return bar;
    }

    bool isFree(std::size_t bar, int type) const
    {
        const auto& [first, second] = ends_[bar];
        if (first.type != none && second.type != none)
            return false;
        return packing_[bar].pattern.size() == 1 || (first.type != type && second.type != type);
    }

    void setEnd(std::size_t bar, int type, std::size_t other)
    {
        (ends_[bar][0].type == none ? ends_[bar][0] : ends_[bar][1]) = {type, other};
    }

    void linkAlong(int type, const std::vector<std::size_t>& bars)
    {
        for (std::size_t i = 0; i < bars.size(); ++i) {
            for (std::size_t j = i + 1; j < bars.size() && isFree(bars[i], type); ++j) {
                const std::size_t one = chain(bars[i]);
                const std::size_t two = chain(bars[j]);
                if (one == two || !isFree(bars[j], type))
                    continue;
                setEnd(bars[i], type, bars[j]);
                setEnd(bars[j], type, bars[i]);
                chainOf_[std::max(one, two)] = std::min(one, two);
            }
        }
    }

    /// Returns the bar with the pieces of type `first` at its beginning and those of type `last` at
    /// its end.
    SequencedCut arranged(std::size_t bar, int first, int last) const
    {
        SequencedCut cut{packing_[bar].pattern, packing_[bar].times};
        const auto rank = [&](const Item& item) {
            return item.type == first ? 0 : item.type == last ? 2 : 1;
        };
        std::stable_sort(cut.items.begin(), cut.items.end(),
                         [&](const Item& a, const Item& b) { return rank(a) < rank(b); });
        return cut;
    }

    void follow(std::size_t bar, std::vector<bool>& isDone, Sequence& result) const
    {
        int first = none;
        for (;;) {
            isDone[bar] = true;
            const End* next = nullptr;
            for (const End& each : ends_[bar]) {
                if (each.type != none && !isDone[each.other])
                    next = &each;
            }
            result.push_back(arranged(bar, first, next == nullptr ? none : next->type));
            if (next == nullptr)
                return;
            first = next->type;
            bar = next->other;
        }
    }

    const Packing& packing_;
    std::vector<std::array<End, 2>> ends_;
    std::vector<std::size_t> chainOf_;
};

} // namespace

Sequence sequenced(const Packing& packing)
{
    Chains chains(packing);
    chains.link();
    return chains.sequence();
}

Sequence asItStands(const Packing& packing)
{
    Sequence sequence;
    for (const Cut& each : packing)
        sequence.push_back({each.pattern, each.times});
    return sequence;
}

int stopsOf(const Sequence& sequence)
{
    int stops = 0;
    int before = none;
    for (const SequencedCut& each : sequence) {
        for (const Item& item : each.items) {
            if (item.type != before)
                ++stops;
            before = item.type;
        }
    }
    return stops;
}

} // namespace shop::planning

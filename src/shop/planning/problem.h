#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <tuple>
#include <vector>

/// Plans how the pieces of a group are cut from as few bars as possible, which is the
/// one-dimensional cutting stock problem.
namespace shop::planning {

/// A length as an integer in units of 1e-12 of the measures' unit, so that sums and comparisons are
/// exact. The sum of the sizes on one bar never overflows. The sum over all bars of an order may
/// overflow.
using Size = std::int64_t;

/// The pieces of a group by type. All pieces of one type have the same length. Lengths that differ
/// only by floating-point noise are one type.
struct Problem
{
    std::vector<Size> sizes; ///< The size of a piece and its kerf, strictly descending.
    std::vector<int> demand; ///< The number of pieces of each type, greater than 0.
    /// The maximum sum of the sizes on one bar. A size includes the kerf, but the last piece needs
    /// no kerf if the bar ends there, so the maximum is the usable length plus one kerf.
    Size capacity = 0;

    std::size_t types() const { return sizes.size(); }
    long pieces() const;
    /// Returns the same problem with other numbers of pieces. A number may be 0.
    Problem withDemand(std::vector<int> pieces) const
    {
        return {sizes, std::move(pieces), capacity};
    }
};

struct Item
{
    int type = 0;
    int count = 0;

    bool operator==(const Item&) const = default;
    bool operator<(const Item& other) const
    {
        return std::tie(type, count) < std::tie(other.type, other.count);
    }
};

/// The pieces that are cut from one bar, sorted by ascending type.
using Pattern = std::vector<Item>;

/// A pattern and the number of bars that are cut with it.
struct Cut
{
    Pattern pattern;
    int times = 0;
};
using Packing = std::vector<Cut>;

Size sizeOf(const Problem& problem, const Pattern& pattern);
int barsOf(const Packing& packing);
/// Joins the packing's entries with the same pattern (set of pieces on one bar) into one entry, at
/// the position of the first of them.
Packing bundled(const Packing& packing);
/// Returns the greatest number of bars with this pattern for which there are enough pieces.
int timesWithin(const Pattern& pattern, const std::vector<int>& pieces);
void takeOut(const Pattern& pattern, int times, std::vector<int>& pieces);
bool isEmpty(const std::vector<int>& pieces);

/// The conditions that end a search early: a cancellation or a deadline. The search then returns
/// its best result so far.
class Limits
{
public:
    Limits() = default;
    Limits(const std::atomic<bool>* cancelled,
           std::optional<std::chrono::steady_clock::time_point> deadline)
        : cancelled_(cancelled), deadline_(deadline)
    {
    }
    bool isOver() const
    {
        return (cancelled_ != nullptr && cancelled_->load(std::memory_order_relaxed)) ||
               (deadline_ && std::chrono::steady_clock::now() >= *deadline_);
    }

private:
    const std::atomic<bool>* cancelled_ = nullptr;
    std::optional<std::chrono::steady_clock::time_point> deadline_;
};

/// Pseudo-random numbers that are the same in every run and on every machine.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    /// Returns a number from 0 to below 1. The standard distributions are not used, because their
    /// results differ between standard libraries.
    double next() { return static_cast<double>(engine_() >> 11U) * 0x1p-53; }

private:
    std::mt19937_64 engine_;
};

} // namespace shop::planning

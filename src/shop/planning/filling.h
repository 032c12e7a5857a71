#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// Finds a pattern, which is a set of pieces on one bar, with a high total value. The search is
/// branch and bound with a limited number of steps. It tries the types of pieces with the highest
/// value per size first. The pattern is empty if no piece fits.
class PatternSearch
{
public:
    explicit PatternSearch(const Problem& problem);

    /// `values` contains the value of one piece, by type (length). Types with a value of 0 or less
    /// are not used.
    Pattern best(const std::vector<double>& values, const std::vector<int>& pieces, int steps);

private:
    void search(std::size_t first, Size room, double value);

    struct Candidate
    {
        int type;
        Size size;
        double value;
        double density;
        int count;
        Size smallestFrom; ///< The smallest size of this and all later candidates.
    };

    const Problem& problem_;
    std::vector<Candidate> candidates_;
    Pattern current_;
    Pattern best_;
    double bestValue_ = 0;
    int steps_ = 0;
};

/// Fills one bar after the other, each with the most valuable set of the remaining pieces. The more
/// of a bar is wasted, the more valuable its types of pieces become. All pieces are then packed
/// again with the new values, so that types that cause waste are packed earlier.
class SequentialFilling
{
public:
    SequentialFilling(const Problem& problem, std::uint64_t seed);

    /// Returns the best packing of at most `rounds` attempts, each of which packs all pieces. Ends
    /// early if a packing has at most `target` bars. Returns an empty packing if a cancellation or
    /// the deadline ends the first attempt.
    Packing run(int rounds, int target, const Limits& limits);

private:
    Packing round(const Limits& limits);
    void correct(const Pattern& pattern);

    const Problem& problem_;
    PatternSearch search_;
    std::vector<double> values_;
    Dice dice_;
};

} // namespace shop::planning

#pragma once

#include "shop/planning/pricing.h"

#include <memory>
#include <set>

class ClpSimplex;

namespace shop::planning {

/// The numerical error of the solver's results.
constexpr double solverNoise = 1e-6;

/// A linear program that computes how many bars are cut with each pattern (set of pieces on one
/// bar). The numbers may be fractions. New patterns that can improve the solution are added step by
/// step (column generation).
class Columns
{
public:
    explicit Columns(const Problem& problem);
    ~Columns();

    void add(const Pattern& pattern);

    struct Relaxed
    {
        double bars = 0;           ///< The optimum of the known patterns.
        double bound = 0;          ///< A lower bound of all plans, also with other patterns.
        std::vector<double> times; ///< The solution, by pattern.
    };
    /// Solves the linear program for the given pieces. Then adds new patterns and solves it again,
    /// at most `rounds` times. Ends early if new patterns cannot change the result, rounded up to
    /// whole bars.
    Relaxed solve(const std::vector<int>& pieces, int rounds, const Limits& limits);

    const std::vector<Pattern>& patterns() const { return patterns_; }
    const Problem& problem() const { return problem_; }

private:
    std::vector<double> prices() const;

    const Problem& problem_;
    Pricing pricing_;
    std::unique_ptr<ClpSimplex> model_;
    std::vector<Pattern> patterns_;
    std::set<Pattern> known_;
};

/// Returns the number of bars rounded up to a whole number. A fraction as small as the numerical
/// error of the solver is rounded down.
int wholeBars(double bars);

} // namespace shop::planning

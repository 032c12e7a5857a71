#include "shop/planning/columns.h"

#include <ClpSimplex.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>

/// LAPACK, which the optimizer uses, calls this function if one of its functions gets a wrong
/// argument. LAPACK lets programs replace the function. The original needs the run-time library of
/// Fortran, which the program would otherwise load at every start.
extern "C" void xerbla_(const char* function, const int* argument, std::size_t length)
{
    std::fprintf(stderr, "Argument %d of %.*s is wrong.\n", *argument, static_cast<int>(length),
                 function);
    std::abort();
}

namespace shop::planning {

int wholeBars(double bars)
{
    return static_cast<int>(std::ceil(bars - solverNoise));
}

Columns::Columns(const Problem& problem)
    : problem_(problem), pricing_(problem), model_(std::make_unique<ClpSimplex>())
{
    model_->setLogLevel(0);
    model_->resize(static_cast<int>(problem.types()), 0);
    for (int row = 0; row < static_cast<int>(problem.types()); ++row)
        model_->setRowUpper(row, COIN_DBL_MAX);
}

Columns::~Columns() = default;

void Columns::add(const Pattern& pattern)
{
    if (!known_.insert(pattern).second)
        return;
    std::vector<int> rows;
    std::vector<double> counts;
    for (const Item& each : pattern) {
        rows.push_back(each.type);
        counts.push_back(each.count);
    }
    model_->addColumn(static_cast<int>(rows.size()), rows.data(), counts.data(), 0, COIN_DBL_MAX,
                      1);
    patterns_.push_back(pattern);
}

std::vector<double> Columns::prices() const
{
    const double* duals = model_->getRowPrice();
    std::vector<double> prices(problem_.types());
    for (std::size_t i = 0; i < prices.size(); ++i)
        prices[i] = std::max(0.0, duals[i]);
    return prices;
}

Columns::Relaxed Columns::solve(const std::vector<int>& pieces, int rounds, const Limits& limits)
{
    for (std::size_t i = 0; i < pieces.size(); ++i)
        model_->setRowLower(static_cast<int>(i), pieces[i]);
    model_->dual();
    Relaxed result;
    for (int round = 0;; ++round) {
        model_->primal();
        result.bars = model_->objectiveValue();
        if (round == rounds || limits.isOver())
            break;
        const std::vector<double> dual = prices();
        pricing_.setPrices(dual, pieces);
        // The linear program gives each piece a price. The total price of all pieces, divided by
        // the greatest total price that fits on one bar, is a lower bound of the number of bars.
        // That greatest price is not known exactly, so an upper bound of it is used.
        const double value = std::inner_product(pieces.begin(), pieces.end(), dual.begin(), 0.0);
        result.bound = std::max(result.bound, value / std::max(1.0, pricing_.bound()));
        if (wholeBars(result.bound) >= wholeBars(result.bars))
            break;
        const std::size_t before = patterns_.size();
        for (const Pattern& each : pricing_.patterns(problem_.types()))
            add(each);
        if (patterns_.size() == before)
            break;
    }
    const double* times = model_->getColSolution();
    result.times.assign(times, times + patterns_.size());
    return result;
}

} // namespace shop::planning

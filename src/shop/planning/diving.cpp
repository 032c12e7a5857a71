#include "shop/planning/diving.h"

#include "shop/planning/filling.h"

#include <CbcEventHandler.hpp>
#include <CbcModel.hpp>
#include <OsiClpSolverInterface.hpp>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace shop::planning {

namespace {

constexpr int roundsOfADive = 4;
constexpr int fillingsOfTheRest = 3;
constexpr double nearlyWhole = 0.75;

/// The solver Cbc is not documented as thread-safe, so only one thread uses it at a time.
std::mutex solverGuard;

/// Stores the bars that are cut so far and the remaining pieces, while a solution with fractions of
/// bars is turned into whole bars.
class Descent
{
public:
    Descent(const Columns& columns, std::uint64_t seed)
        : columns_(columns), dice_(seed), random_(seed > 0), left_(columns.problem().demand)
    {
    }

    const std::vector<int>& left() const { return left_; }
    const Packing& packing() const { return packing_; }

    void cut(std::size_t column, int times)
    {
        // If fewer pieces remain than the pattern contains, the bar gets only the remaining ones.
        for (; times > 0; --times) {
            Pattern pattern;
            for (const Item& each : columns_.patterns()[column]) {
                const int count = std::min(each.count, left_[static_cast<std::size_t>(each.type)]);
                if (count > 0)
                    pattern.push_back({each.type, count});
            }
            if (pattern.empty())
                return;
            const int possible = std::min(times, timesWithin(pattern, left_));
            takeOut(pattern, possible, left_);
            packing_.push_back({pattern, possible});
            times -= possible - 1;
        }
    }

    void cutMostUsed(const std::vector<double>& times)
    {
        const std::size_t before = packing_.size();
        for (std::size_t i = 0; i < times.size(); ++i) {
            const int whole = static_cast<int>(std::floor(times[i] + 1 - nearlyWhole));
            if (whole > 0)
                cut(i, whole);
        }
        if (packing_.size() > before)
            return;
        std::size_t most = 0;
        double mostWeight = 0;
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double weight = times[i] * (random_ ? 0.5 + dice_.next() : 1);
            if (weight > mostWeight) {
                mostWeight = weight;
                most = i;
            }
        }
        if (mostWeight > solverNoise)
            cut(most, 1);
    }

private:
    const Columns& columns_;
    Dice dice_;
    bool random_;
    std::vector<int> left_;
    Packing packing_;
};

/// Completes a partial plan: returns the bars that `descent` contains and further bars for the
/// remaining pieces. Returns no bars if the search for the further bars was cancelled or reached
/// its deadline.
Packing completed(const Problem& problem, const Descent& descent, int target, std::uint64_t seed,
                  const Limits& limits)
{
    Packing packing = descent.packing();
    const int bars = barsOf(packing);
    if (!isEmpty(descent.left())) {
        const Problem rest = problem.withDemand(descent.left());
        const Packing filled =
            SequentialFilling(rest, seed).run(fillingsOfTheRest, target - bars, limits);
        packing.insert(packing.end(), filled.begin(), filled.end());
    }
    return isEmpty(descent.left()) || barsOf(packing) > bars ? packing : Packing();
}

} // namespace

Packing dive(Columns& columns, int target, std::uint64_t seed, const Limits& limits)
{
    Descent descent(columns, seed);
    while (!limits.isOver()) {
        const Columns::Relaxed relaxed = columns.solve(descent.left(), roundsOfADive, limits);
        if (barsOf(descent.packing()) + wholeBars(relaxed.bound) > target)
            return {};
        const std::size_t before = descent.packing().size();
        descent.cutMostUsed(relaxed.times);
        Packing packing = completed(columns.problem(), descent, target, seed, limits);
        if (!packing.empty() && barsOf(packing) <= target)
            return packing;
        if (isEmpty(descent.left()) || descent.packing().size() == before)
            return {};
    }
    return {};
}

namespace {

OsiClpSolverInterface integerProgram(const Columns& columns)
{
    OsiClpSolverInterface solver;
    solver.messageHandler()->setLogLevel(0);
    CoinPackedMatrix matrix(true, 0, 0);
    matrix.setDimensions(static_cast<int>(columns.problem().types()), 0);
    for (const Pattern& pattern : columns.patterns()) {
        CoinPackedVector column;
        for (const Item& each : pattern)
            column.insert(each.type, each.count);
        matrix.appendCol(column);
    }
    const int count = matrix.getNumCols();
    const std::vector<double> ones(static_cast<std::size_t>(count), 1.0);
    const std::vector<double> zeros(ones.size(), 0.0);
    const std::vector<double> lower(columns.problem().demand.begin(),
                                    columns.problem().demand.end());
    const std::vector<double> upper(lower.size(), COIN_DBL_MAX);
    const std::vector<double> most(ones.size(), COIN_DBL_MAX);
    solver.loadProblem(matrix, zeros.data(), most.data(), ones.data(), lower.data(), upper.data());
    for (int i = 0; i < count; ++i)
        solver.setInteger(i);
    return solver;
}

/// Stops the solver's branch-and-bound search when the planning is cancelled or reaches its
/// deadline.
class LimitHandler : public CbcEventHandler
{
public:
    explicit LimitHandler(const Limits& limits) : limits_(limits) {}

    CbcAction event(CbcEvent /*event*/) override { return limits_.isOver() ? stop : noAction; }
    CbcEventHandler* clone() const override { return new LimitHandler(*this); }

private:
    Limits limits_;
};

} // namespace

Packing branchAndBound(const Columns& columns, int target, int nodes, const Limits& limits)
{
    const std::lock_guard lock(solverGuard);
    if (limits.isOver())
        return {};
    CbcModel model(integerProgram(columns));
    model.setLogLevel(0);
    LimitHandler handler(limits);
    model.passInEventHandler(&handler);
    model.setMaximumNodes(nodes);
    model.setMaximumSolutions(1);
    model.setCutoff(target + 0.5);
    model.branchAndBound();
    if (model.bestSolution() == nullptr)
        return {};
    Descent descent(columns, 0);
    for (std::size_t i = 0; i < columns.patterns().size(); ++i) {
        const int times = static_cast<int>(std::lround(model.bestSolution()[i]));
        if (times > 0)
            descent.cut(i, times);
    }
    return isEmpty(descent.left()) && barsOf(descent.packing()) <= target ? descent.packing()
                                                                          : Packing();
}

} // namespace shop::planning

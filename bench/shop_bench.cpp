#include "paired.h"

#include "shop/documents.h"
#include "shop/planning/planner.h"

#include <algorithm>
#include <map>
#include <random>

// Compares bar plans of random orders with the plans of best-fit decreasing and with cutting each
// window from new bars.

namespace {

using namespace Qt::StringLiterals;
using shop::planning::BarPlan;
using shop::planning::Demand;

/// Returns a random order of windows with one to four sashes. The sizes of the openings are
/// multiples of 0.01, or of 0.5 if the seed is divisible by 3, so that lengths repeat.
std::vector<shop::OrderLine> seededOrder(unsigned seed, int windows)
{
    std::mt19937 dice(seed);
    const auto measure = [&](unsigned from, unsigned to) {
        const double step = seed % 3 == 0 ? 0.5 : 0.01;
        const auto steps = static_cast<unsigned>((to - from) / step);
        return from + dice() % steps * step;
    };
    std::vector<shop::OrderLine> lines;
    for (int i = 1; i <= windows; ++i) {
        const double width = measure(50, 250);
        const double height = measure(50, 220);
        const int sashes = static_cast<int>(1 + dice() % 4);
        shop::OrderLine line;
        line.order = 1;
        line.line = i;
        line.frame = {width - 0.6, height - 0.6, 2, u"רגיל"_s, u"לבן"_s};
        line.sash = {(width - 2.8) / sashes, height - 6.5, 2 * sashes, u"רגילה"_s, u"לבן"_s};
        line.glass = {(width - 19.6) / sashes, height - 19.7, sashes, u"רגילה 4"_s, u"שקוף"_s};
        line.mesh = {(width - 2.4) / sashes, height - 6.9, sashes, u"פיברגלס"_s, u"אפור"_s};
        lines.push_back(line);
    }
    return lines;
}

std::vector<Demand> demandsOf(const std::vector<shop::Piece>& pieces, const shop::GroupKey& group)
{
    std::map<double, int> counts;
    for (const shop::Piece& each : pieces) {
        if (each.group == group)
            ++counts[each.length];
    }
    std::vector<Demand> demands;
    for (const auto& [length, count] : counts)
        demands.push_back({length, count});
    return demands;
}

/// Returns the number of bars that a group of pieces needs if the pieces of each window are cut
/// from new bars.
int barsWindowByWindow(const std::vector<shop::Piece>& pieces, const shop::GroupKey& group)
{
    std::map<int, std::vector<shop::Piece>> byLine;
    for (const shop::Piece& each : pieces) {
        if (each.group == group)
            byLine[each.line].push_back(each);
    }
    int bars = 0;
    for (const auto& [line, ofLine] : byLine)
        bars += shop::planning::planByBestFit(demandsOf(ofLine, group),
                                              shop::defaultSettings(group.part))
                    .barCount();
    return bars;
}

struct Sums
{
    int groups = 0;
    int proved = 0;
    int farAbove = 0;    ///< Groups more than one bar above their bound.
    int aboveSimple = 0; ///< Groups above best-fit decreasing.
    long bars = 0;
    long windowBars = 0;
    long stopsAtEqualBars = 0;
    long simpleStopsAtEqualBars = 0;
    std::vector<double> seconds;
};

void add(const std::vector<shop::OrderLine>& lines, Sums& sums)
{
    const shop::Pieces pieces = shop::piecesOf(lines, {});
    const bench::Stopwatch watch;
    const std::vector<shop::GroupPlan> plans = shop::planGroups(pieces.pieces, {});
    sums.seconds.push_back(watch.seconds());
    for (const shop::GroupPlan& plan : plans) {
        const BarPlan simple =
            shop::planning::planByBestFit(demandsOf(pieces.pieces, plan.group), plan.settings);
        ++sums.groups;
        sums.proved += plan.proved ? 1 : 0;
        sums.farAbove += plan.barCount() > plan.bound + 1 ? 1 : 0;
        sums.aboveSimple += plan.barCount() > simple.barCount() ? 1 : 0;
        sums.bars += plan.barCount();
        sums.windowBars += barsWindowByWindow(pieces.pieces, plan.group);
        if (plan.barCount() == simple.barCount()) {
            sums.stopsAtEqualBars += plan.stops;
            sums.simpleStopsAtEqualBars += simple.stops;
        }
    }
}

void report(const Sums& sums, benchmark::State& state)
{
    state.counters["groups"] = sums.groups;
    state.counters["proved %"] = 100.0 * sums.proved / sums.groups;
    state.counters["above bound+1"] = sums.farAbove;
    state.counters["above best fit"] = sums.aboveSimple;
    state.counters["bars saved %"] =
        100.0 * (1 - static_cast<double>(sums.bars) / static_cast<double>(sums.windowBars));
    if (sums.simpleStopsAtEqualBars > 0)
        state.counters["stops saved %"] =
            100.0 * (1 - static_cast<double>(sums.stopsAtEqualBars) /
                             static_cast<double>(sums.simpleStopsAtEqualBars));
    state.counters["median s"] = bench::median(sums.seconds);
    state.counters["longest s"] = *std::max_element(sums.seconds.begin(), sums.seconds.end());
}

/// Plans random orders. state.range(2) is the number of orders. Each order has from state.range(1)
/// to state.range(0) windows.
void BM_SeededOrders(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        std::mt19937 dice(static_cast<unsigned>(state.range(0)));
        Sums sums;
        const auto most = static_cast<unsigned>(state.range(0));
        const auto least = static_cast<unsigned>(state.range(1));
        for (unsigned i = 0; i < static_cast<unsigned>(state.range(2)); ++i)
            add(seededOrder(i + 1, static_cast<int>(least + dice() % (most - least + 1))), sums);
        report(sums, state);
    }
}

/// Plans one random order of state.range(0) windows and generates its plan.json.
void BM_PlanToJson(benchmark::State& state)
{
    const auto lines = seededOrder(7, static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        shop::ShopPack pack{shop::piecesOf(lines, {}), {}};
        pack.groups = shop::planGroups(pack.pieces.pieces, {});
        benchmark::DoNotOptimize(shop::planJson(pack));
    }
}

} // namespace

// Three benchmarks plan 1000 random orders together. The arguments of each benchmark are the
// greatest and the smallest number of windows of an order, and its number of orders.
BENCHMARK(BM_SeededOrders)
    ->Args({60, 5, 700})
    ->Args({150, 61, 200})
    ->Args({400, 151, 100})
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK(BM_PlanToJson)
    ->Arg(20)
    ->Arg(60)
    ->Arg(150)
    ->Arg(400)
    ->Iterations(3)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();

BENCHMARK_MAIN();

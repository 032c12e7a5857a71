#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

/// Functions for benchmarks on a machine whose speed varies. The measured work (the candidate) and
/// the work that it is compared with (the baseline) run alternately. The result is the ratio of
/// their median times in one run.
namespace bench {

/// Measures the time since its construction.
class Stopwatch
{
public:
    double seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

template <typename Action>
double secondsOf(Action&& action)
{
    const Stopwatch watch;
    action();
    return watch.seconds();
}

inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Collects pairs of times, one of the candidate and one of the baseline. Reports both medians,
/// their ratio, and the intended maximum of the ratio as counters of the benchmark.
class Pairs
{
public:
    void add(double candidate, double baseline)
    {
        candidates_.push_back(candidate);
        baselines_.push_back(baseline);
    }

    void report(benchmark::State& state, double goal) const
    {
        state.counters["candidate"] = median(candidates_);
        state.counters["baseline"] = median(baselines_);
        state.counters["ratio"] = median(candidates_) / median(baselines_);
        state.counters["goal"] = goal;
    }

private:
    std::vector<double> candidates_;
    std::vector<double> baselines_;
};

/// Runs the candidate and the baseline alternately in one benchmark and reports their times in
/// seconds. `goal` is the intended maximum of the candidate's time divided by the baseline's time.
template <typename Candidate, typename Baseline>
void runPaired(benchmark::State& state, double goal, Candidate&& candidate, Baseline&& baseline)
{
    Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        const double ours = secondsOf(candidate);
        pairs.add(ours, secondsOf(baseline));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}

} // namespace bench

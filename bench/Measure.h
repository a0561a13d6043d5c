#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// How promises of speed are measured and held.
namespace Measure
{
/// Machines that other work goes on beside are noisy; a figure half as bad again as promised is no noise.
inline constexpr double NoiseAllowance = 1.5;
inline constexpr std::string_view PromisePrefix = "most_";

/// Reports a figure and the most that it may be. A run that is reported is judged by it, see CPromiseReporter.
inline void Hold(benchmark::State& state, const std::string& figure, double measured, double promise)
{
    state.counters[figure] = measured;
    state.counters[std::string(PromisePrefix) + figure] = promise;
}

inline double Milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// Time on the processors, of all threads together, which other work on the machine does not lengthen; all that is
/// measured so waits for nothing.
inline double ProcessorMilliseconds(const std::function<void()>& work)
{
    const std::clock_t start = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

inline double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

using Clock = double (*)(const std::function<void()>&);

inline void MeasureMedian(benchmark::State& state, double promise, const std::function<void()>& prepare,
                          const std::function<void()>& work, Clock time = ProcessorMilliseconds)
{
    std::vector<double> times;
    for (auto step : state) {
        prepare();
        times.push_back(time(work));
        state.SetIterationTime(times.back() / 1000.0);
    }
    Hold(state, "median_ms", Median(times), promise);
}
} // namespace Measure

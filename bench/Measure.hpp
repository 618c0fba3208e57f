#ifndef BENCH_MEASURE_HPP
#define BENCH_MEASURE_HPP
#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

/** Functions of the benchmarks. Each benchmark prints the machine, then a table in Markdown, then its aims.
 */
namespace bench {

/** Prints processor, kernel and compiler. */
void printMachine();

/** Prints a result, its maximum in the same unit, and their ratio. */
void printAim(const char* what, const char* unit, double most, double result);

/** Processor time of the calling thread, in seconds. */
double threadSeconds();

/** Current and peak memory of the process in kilobytes (proc(5), VmRSS and VmHWM). */
long residentKilobytes();
long peakKilobytes();

/** Median of an odd number of results. */
double median(std::vector<double> results);

/** Median of the results of an odd number of runs of a measurement. */
template <class Measurement>
double medianOf(std::size_t runs, Measurement measure) {
    std::vector<double> results(runs);
    for (double& result : results)
        result = measure();
    return median(std::move(results));
}

/** Processor time of an action in the calling thread, in seconds. */
template <class Action>
double threadSecondsOf(Action action) {
    const double start = threadSeconds();
    action();
    return threadSeconds() - start;
}

/** Wall time of an action, in seconds. */
template <class Action>
double wallSecondsOf(Action action) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    action();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Runs a measurement and its output in a child process. Exits if it fails. */
void inChild(const std::function<void()>& measurement);

} // namespace bench
#endif

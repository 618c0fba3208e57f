#ifndef BENCH_MEASURE_HPP
#define BENCH_MEASURE_HPP
#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

/** What the measuring programs share. Each prints the machine, then a table in Markdown, then its aims. */
namespace bench {

/** Prints processor, kernel and compiler, so that figures can be told apart. */
void printMachine();

/** Prints how a result compares with what it may be at most; both in the same unit. */
void printAim(const char* what, const char* unit, double most, double result);

/** Processor time of the calling thread, in seconds. */
double threadSeconds();

/** Memory of the process, in kilobytes: now, and the most there has been (proc(5), VmRSS and VmHWM). */
long residentKilobytes();
long peakKilobytes();

/** Median of an odd number of results. */
double median(std::vector<double> results);

/** Median of what a measurement returns when it is run a number of times, an odd one. */
template <class Measurement>
double medianOf(std::size_t runs, Measurement measure) {
    std::vector<double> results(runs);
    for (double& result : results)
        result = measure();
    return median(std::move(results));
}

/** Processor time of the calling thread that an action takes, in seconds. */
template <class Action>
double threadSecondsOf(Action action) {
    const double start = threadSeconds();
    action();
    return threadSeconds() - start;
}

/** Wall time that an action takes, in seconds. */
template <class Action>
double wallSecondsOf(Action action) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    action();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Runs a measurement, which prints, in a process of its own. Ends the program when it fails. */
void inChild(const std::function<void()>& measurement);

} // namespace bench
#endif

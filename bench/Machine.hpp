#ifndef BENCH_MACHINE_HPP
#define BENCH_MACHINE_HPP
#include <utility>
#include <vector>

namespace bench {

/** Prints processor, kernel and compiler, so that figures can be told apart. */
void printMachine();

/** Processor time of the calling thread, in seconds. */
double threadSeconds();

/** Median of an odd number of results. */
double median(std::vector<double> results);

/** Median of what a measurement returns when it is run a number of times, an odd one. */
template <class Measurement>
double medianOf(int runs, Measurement measure) {
    std::vector<double> results;
    for (int i = 0; i < runs; ++i)
        results.push_back(measure());
    return median(std::move(results));
}

} // namespace bench
#endif

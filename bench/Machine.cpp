#include "Machine.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>
#include <sys/utsname.h>
#include <unistd.h>

namespace bench {
namespace {

std::string processorName() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.compare(0, 10, "model name") == 0)
            return line.substr(line.find(':') + 2);
    return "unknown processor";
}

} // namespace

void printMachine() {
    utsname system{};
    uname(&system);
    std::printf("%s, %ld processors, Linux %s, gcc %s, %zu-bit\n", processorName().c_str(),
                sysconf(_SC_NPROCESSORS_ONLN), system.release, __VERSION__, sizeof(void*) * 8);
}

double median(std::vector<double> results) {
    const auto middle = results.begin() + static_cast<std::ptrdiff_t>(results.size() / 2);
    std::nth_element(results.begin(), middle, results.end());
    return *middle;
}

double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace bench

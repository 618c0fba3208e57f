#include "Measure.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <sys/utsname.h>
#include <sys/wait.h>
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

long statusOf(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind(field + ":", 0) == 0)
            return std::strtol(line.c_str() + field.size() + 1, nullptr, 10);
    return 0;
}

} // namespace

long residentKilobytes() {
    return statusOf("VmRSS");
}

long peakKilobytes() {
    return statusOf("VmHWM");
}

void printMachine() {
    utsname system{};
    uname(&system);
    std::printf("%s, %ld processors, Linux %s, gcc %s, %zu-bit\n\n", processorName().c_str(),
                sysconf(_SC_NPROCESSORS_ONLN), system.release, __VERSION__, sizeof(void*) * 8);
}

void printAim(const char* what, const char* unit, double most, double result) {
    std::printf("aim | %s | %.3g %s | %.2f | %.2f |\n", what, most, unit, result, result / most);
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

void inChild(const std::function<void()>& measurement) {
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        measurement();
        std::fflush(stdout);
        ::_exit(EXIT_SUCCESS);
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0)
        std::exit(EXIT_FAILURE);
}

} // namespace bench

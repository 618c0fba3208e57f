// What the library costs before it is used: loading it, with the libraries that it needs, and the first call.
// Each run is a process of its own.
#include "Machine.hpp"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/** Milliseconds of loading, and of loading and the first call. */
std::pair<double, double> load() {
    const Clock::time_point start = Clock::now();
    void* const library = ::dlopen(OWB_LIBRARY, RTLD_NOW);
    if (library == nullptr)
        std::abort();
    const double loaded = millisecondsSince(start);
    // Decides on the trace, and looks the URL up.
    reinterpret_cast<long (*)(const char*)>(::dlsym(library, "OWB_URLSet"))(
        "owbinary.wbem://localhost:%2fnowhere");
    return {loaded, millisecondsSince(start)};
}

std::pair<double, double> loadInChild() {
    int ends[2];
    std::pair<double, double> times;
    if (::pipe(ends) != 0)
        std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        times = load();
        ::_exit(::write(ends[1], &times, sizeof times) == sizeof times ? 0 : 1);
    }
    if (::read(ends[0], &times, sizeof times) != sizeof times)
        std::abort();
    ::close(ends[0]);
    ::close(ends[1]);
    ::waitpid(child, nullptr, 0);
    return times;
}

} // namespace

int main() {
    bench::printMachine();
    std::vector<double> loading;
    std::vector<double> first;
    for (int run = 0; run < 101; ++run) {
        const auto [loaded, called] = loadInChild();
        loading.push_back(loaded);
        first.push_back(called);
    }
    std::printf("loading %.2f ms, with the first call %.2f ms\n", bench::median(loading),
                bench::median(first));
}

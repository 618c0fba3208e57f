// The time to load the library and its dependencies, and of the first call, compared with loading only the
// C++ library. Each run is a new process that has only the C library.
#include "Measure.hpp"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

void* load(const char* library) {
    void* const loaded = ::dlopen(library, RTLD_NOW);
    if (loaded == nullptr) {
        std::fprintf(stderr, "startup_bench: %s\n", ::dlerror());
        ::_exit(EXIT_FAILURE);
    }
    return loaded;
}

void loadStandardLibrary() {
    load("libstdc++.so.6");
}

void loadOwb() {
    load(OWB_LIBRARY);
}

/** The first call decides whether tracing is on. */
void loadOwbAndCall() {
    using URLSet = long (*)(const char*);
    reinterpret_cast<URLSet>(::dlsym(load(OWB_LIBRARY), "OWB_URLSet"))(
        "owbinary.wbem://localhost:%2fnowhere");
}

/** Milliseconds of an action in a new process. */
double timeInChild(void (*action)()) {
    int ends[2];
    if (::pipe(ends) != 0)
        std::abort();
    double time = 0;
    const pid_t child = ::fork();
    if (child == 0) {
        time = bench::wallSecondsOf(action) * 1e3;
        ::_exit(::write(ends[1], &time, sizeof time) == sizeof time ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    ::close(ends[1]);
    if (::read(ends[0], &time, sizeof time) != sizeof time)
        std::exit(EXIT_FAILURE);
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return time;
}

} // namespace

int main() {
    bench::printMachine();
    std::vector<double> standard;
    std::vector<double> loading;
    std::vector<double> first;
    for (int run = 0; run < 101; ++run) {
        standard.push_back(timeInChild(loadStandardLibrary));
        loading.push_back(timeInChild(loadOwb));
        first.push_back(timeInChild(loadOwbAndCall));
    }
    const double least = bench::median(standard);
    const auto print = [least](const char* what, double time) {
        std::printf("| %s | %.2f | %.2f |\n", what, time, time / least);
    };
    std::printf("| loading | ms | ratio |\n|---|---:|---:|\n");
    print("`libstdc++` alone", least);
    print("`libowb.so` and all that it needs", bench::median(loading));
    print("the same, and the first call", bench::median(first));
    bench::printAim("loading and the first call", "ms", 5, bench::median(first));
    return EXIT_SUCCESS;
}

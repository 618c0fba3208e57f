// The time of the trace: a call while it is off, and a line while it is on, compared with open, write and
// close of the same file. A process decides once whether tracing is on, so each case runs in a child.
#include "owb.h"

#include "Measure.hpp"
#include "support/TempDir.hpp"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

/** Nanoseconds of an action, by the clock. */
template <class Action>
double timeOf(int times, Action action) {
    return 1e9 / times * bench::medianOf(11, [&] {
               return bench::wallSecondsOf([&] {
                   for (int i = 0; i < times; ++i)
                       action();
               });
           });
}

void trace() {
    OWB_Debug(const_cast<char*>("file.cpp"), const_cast<char*>("function"), 17,
              const_cast<char*>("Add item %lu: '%s' group: %d\n"), 17UL, "SerialNumber", 3);
}

void openWriteClose(const std::string& path, const std::string& line) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::abort();
    ::close(file);
}

void print(const char* what, double time, double floor) {
    std::printf("| %s | %.0f | %.3f |\n", what, time, time / floor);
}

/** In a directory whose switch file turns the trace on. */
void measureOn(const support::TempDir& directory) {
    const std::string log = directory.file("log");
    directory.write("vdxDebug", log + "\n");
    if (::chdir(directory.path().c_str()) != 0)
        std::abort();
    trace();
    const std::string line = support::readFile(log);
    const std::string other = directory.file("other");
    const int times = 20000;
    const double floor = timeOf(times, [&] { openWriteClose(other, line); });
    print("open, write and close of the same line", floor, floor);
    print("a line of the trace", timeOf(times, trace), floor);
}

/** In a directory without a switch file; main() has checked /tmp. */
void measureOff(const support::TempDir& directory) {
    const std::string other = directory.file("other");
    if (::chdir(directory.path().c_str()) != 0)
        std::abort();
    const double floor = timeOf(20000, [&] { openWriteClose(other, "line\n"); });
    print("a call while the trace is off", timeOf(1000000, trace), floor);
}

} // namespace

int main() {
    if (::access("/tmp/vdxDebug", F_OK) == 0) {
        std::fprintf(stderr, "trace_bench: /tmp/vdxDebug exists and turns the trace on for every process\n");
        return EXIT_FAILURE;
    }
    bench::printMachine();
    std::printf("| | ns | ratio |\n|---|---:|---:|\n");
    bench::inChild([] { measureOn(support::TempDir()); });
    bench::inChild([] { measureOff(support::TempDir()); });
    return EXIT_SUCCESS;
}

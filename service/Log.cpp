#include "service/Log.hpp"

#include "util/OneLine.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace service {
namespace {

/** Whether standard error accepts a line now. A full pipe must not block the server. */
bool isWritable() {
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    return ::poll(&errors, 1, 0) == 1 && (errors.revents & POLLOUT) != 0;
}

const char* name = "owb";
unsigned long lost = 0; // lines since the last written one

bool isJournal() {
    struct stat errors;
    const char* const journal = std::getenv("JOURNAL_STREAM");
    if (!journal || ::fstat(STDERR_FILENO, &errors) != 0)
        return false;
    char device[48];
    std::snprintf(device, sizeof device, "%llu:%llu", static_cast<unsigned long long>(errors.st_dev),
                  static_cast<unsigned long long>(errors.st_ino));
    return std::strcmp(journal, device) == 0;
}

/** The local time in the form of ISO 8601: "2026-11-22T03:28:27+01:00 ". */
struct TimeText {
    TimeText() {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        ::localtime_r(&now, &local);
        char time[32] = "";
        std::strftime(time, sizeof time, "%FT%T%z", &local);
        const std::size_t minutes = std::strlen(time) - 2;
        std::snprintf(text, sizeof text, "%.*s:%s ", static_cast<int>(minutes), time, time + minutes);
    }
    char text[40];
};

bool write(const char* line) {
    const TimeText now;
    const char* const parts[] = {isJournal() ? "" : now.text, name, ": ", line, "\n"};
    iovec vectors[std::size(parts)];
    std::transform(std::begin(parts), std::end(parts), vectors, [](const char* part) {
        return iovec{const_cast<char*>(part), std::strlen(part)};
    });
    return isWritable() && ::writev(STDERR_FILENO, vectors, std::size(vectors)) >= 0;
}

} // namespace

void nameLog(const char* program) {
    name = program;
}

void log(const std::string& message) {
    if (lost > 0 && write(("lines lost: " + std::to_string(lost)).c_str()))
        lost = 0;
    if (!write(util::onOneAsciiLine(message).c_str()))
        ++lost;
}

void logWithoutMemory(const char* what, const char* why) noexcept {
    char line[256];
    std::snprintf(line, sizeof line, "%s: %s", what, why);
    std::replace_if(
        line, line + std::strlen(line), [](char c) { return c < ' ' || c > '~'; }, ' ');
    if (!write(line))
        ++lost;
}

} // namespace service

#include "system/Log.hpp"

#include "system/Text.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>

namespace cimom {
namespace {

/** Whether standard error takes a line now. One that nobody reads must not hold the clients up. */
bool isWritable() {
    pollfd errors{STDERR_FILENO, POLLOUT, 0};
    return ::poll(&errors, 1, 0) == 1 && (errors.revents & POLLOUT) != 0;
}

unsigned long lost = 0; // lines since the last one that was written

bool write(const char* line) {
    const char* const parts[] = {"owbcimomd: ", line, "\n"};
    iovec vectors[3];
    std::transform(std::begin(parts), std::end(parts), vectors, [](const char* part) {
        return iovec{const_cast<char*>(part), std::strlen(part)};
    });
    return isWritable() && ::writev(STDERR_FILENO, vectors, 3) >= 0;
}

} // namespace

void log(std::string message) {
    if (lost > 0 && write(("lines lost: " + std::to_string(lost)).c_str()))
        lost = 0;
    if (!write(onOneLine(std::move(message)).c_str()))
        ++lost;
}

void logWithoutMemory(const char* what, const char* why) noexcept {
    char line[256];
    std::snprintf(line, sizeof line, "%s: %s", what, why);
    std::replace_if(line, line + std::strlen(line), isControl, ' ');
    if (!write(line))
        ++lost;
}

} // namespace cimom

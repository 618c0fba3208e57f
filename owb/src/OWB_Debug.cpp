/* The trace, and owbStringClean(), which it needs for the name of its log file. */
#include "owb.h"

#include "OWB_trace.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

bool owbTraceIsOff = false;

/* The library's own OWB_Debug(), even if an agent interposes that name. */
extern "C" __attribute__((alias("OWB_Debug"), visibility("hidden"))) void
owbOwnDebug(char* file, char* function, unsigned long line, char* format, ...);

namespace {

/* Formats like vsnprintf(). A truncated text, and one that cannot be formatted, still ends in "\n". */
void formatBounded(char* buffer, size_t size, const char* format, va_list values) {
    const int length = std::vsnprintf(buffer, size, format, values);
    if (length < 0) {
        buffer[0] = '\n';
        buffer[1] = '\0';
    } else if (static_cast<size_t>(length) >= size) {
        buffer[size - 2] = '\n';
    }
}

__attribute__((format(printf, 3, 4))) void formatBounded(char* buffer, size_t size, const char* format, ...) {
    va_list values;
    va_start(values, format);
    formatBounded(buffer, size, format, values);
    va_end(values);
}

/* Reads the name of the log file from the switch file. False if there is no switch file. */
bool readSwitch(char* name, int size) {
    std::FILE* file = std::fopen("vdxDebug", "re");
    if (!file)
        file = std::fopen("/tmp/vdxDebug", "re");
    if (!file)
        return false;
    if (!std::fgets(name, size, file))
        name[0] = '\0';
    owbStringClean(name, NULL);
    std::fclose(file);
    return true;
}

/* open/write instead of stdio: stdio allocates, and out-of-memory must still be traced. */
void append(const char* fileName, const char* text) {
    const int log = open(fileName, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (log < 0)
        return;
    size_t rest = std::strlen(text);
    for (ssize_t written = 0; rest > 0 && (written = write(log, text, rest)) > 0; text += written)
        rest -= static_cast<size_t>(written);
    close(log);
}

/* Not isspace(): the vertical tab is kept, and the locale has no influence. */
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

void clean(char* text) {
    for (size_t length = std::strlen(text); length > 0 && isSpace(text[length - 1]); --length)
        text[length - 1] = '\0';
    const char* from = text;
    while (isSpace(*from))
        ++from;
    char* to = text;
    for (; *from; ++from)
        *to++ = *from == '"' ? '\'' : *from;
    *to = '\0';
}

} // namespace

extern "C" void OWB_Debug(char* file, char* function, unsigned long line, char* format, ...) {
    enum { UNDECIDED = 0, ON = 1, OFF = 2 };
    static int state = UNDECIDED;
    static char debugFileName[256];
    if (state == UNDECIDED)
        state = readSwitch(debugFileName, sizeof debugFileName) ? ON : OFF;
    if (state == OFF) {
        owbTraceIsOff = &OWB_Debug == &owbOwnDebug;
        return;
    }

    char message[1024];
    char traceLine[1024];
    struct timeval now = {};
    gettimeofday(&now, NULL);
    const time_t seconds = now.tv_sec;
    const struct tm* const local = localtime(&seconds);

    va_list values;
    va_start(values, format);
    formatBounded(message, sizeof message, format, values);
    va_end(values);
    formatBounded(traceLine, sizeof traceLine, "%02d:%02d:%02d:%03ld: %s:%s:%lu: %s", local->tm_hour,
                  local->tm_min, local->tm_sec, static_cast<long>(now.tv_usec / 1000), file, function, line,
                  message);
    append(debugFileName, traceLine);
}

char* owbStringClean(char* src, char* dst) {
    if (!src || !*src) {
        if (dst)
            *dst = '\0';
        return dst;
    }
    const size_t size = std::strlen(src) + 1;
    char* const copy = dst ? dst : static_cast<char*>(std::malloc(size));
    if (!copy) { /* out of memory: clean in place; the bytes after the new end then change, too */
        clean(src);
        return src;
    }
    std::memmove(copy, src, size);
    clean(copy);
    if (dst)
        return dst;
    std::memcpy(src, copy, std::strlen(copy) + 1);
    std::free(copy);
    return src;
}

/* The debug trace, and the text cleaner that it needs for the name of its log file. */
#include "owb.h"

#include "OWB_trace.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

enum { UNDECIDED = 0, ON = 1, OFF = 2 };
int state = UNDECIDED;
char debugFileName[256];

/* Formats as vsnprintf() does. A text that had to be cut, or that cannot be formatted, ends in a line end all
 * the same. */
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

/* Reads the switch file, if there is one: its first line names the log file. */
void decide() {
    std::FILE* file = std::fopen("vdxDebug", "re");
    if (!file)
        file = std::fopen("/tmp/vdxDebug", "re");
    if (!file) {
        state = OFF;
        return;
    }
    if (!std::fgets(debugFileName, sizeof debugFileName, file))
        debugFileName[0] = '\0';
    owbStringClean(debugFileName, NULL);
    std::fclose(file);
    state = ON;
}

/* Opened for each line: the log may be moved away while the process runs. Not by stdio, which needs memory: a
 * trace of what happens without it shall not lose its lines. */
void append(const char* text) {
    const int log = open(debugFileName, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (log < 0)
        return;
    size_t rest = std::strlen(text);
    for (ssize_t written = 0; rest > 0 && (written = write(log, text, rest)) > 0; text += written)
        rest -= static_cast<size_t>(written);
    close(log);
}

void writeLine(const char* file, const char* function, unsigned long line, const char* format,
               va_list values) {
    struct timeval now = {};
    struct tm local = {};
    char message[1024];
    char traceLine[1024];

    gettimeofday(&now, NULL);
    const time_t seconds = now.tv_sec;
    tzset(); /* localtime_r() need not look at a TZ that has changed; localtime() would */
    localtime_r(&seconds, &local);
    formatBounded(message, sizeof message, format, values);
    formatBounded(traceLine, sizeof traceLine, "%02d:%02d:%02d:%03ld: %s:%s:%lu: %s", local.tm_hour,
                  local.tm_min, local.tm_sec, static_cast<long>(now.tv_usec / 1000), file, function, line,
                  message);

    append(traceLine);
}

/* Not isspace(): the vertical tab is kept, and the locale has no say. */
bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

} // namespace

bool owbTracing() {
    if (state == UNDECIDED)
        decide();
    return state == ON;
}

extern "C" void OWB_Debug(char* file, char* function, unsigned long line, char* format, ...) {
    if (!owbTracing())
        return;
    va_list values;
    va_start(values, format);
    writeLine(file, function, line, format, values);
    va_end(values);
}

char* owbStringClean(char* src, char* dst) {
    char* const result = dst ? dst : src;
    if (!src || !*src) {
        if (dst)
            *dst = '\0';
        return dst;
    }
    const char* first = src;
    const char* end = src + std::strlen(src);
    while (end != first && isSpace(end[-1]))
        --end;
    while (first != end && isSpace(*first))
        ++first;
    const size_t length = static_cast<size_t>(end - first);
    std::memmove(result, first, length);
    result[length] = '\0';
    for (char* c = result; *c; ++c)
        if (*c == '"')
            *c = '\'';
    return result;
}

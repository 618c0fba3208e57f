#include "SoftwareType.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/* RFC 2790, hrSWRunType. */
const unsigned short operatingSystem = 2;
const unsigned short deviceDriver = 3;
const unsigned short application = 4;

/* Whether a word is a prefix of another or equals it. Only the low 16 bits of the length of the word count.
 */
template <std::size_t size>
bool isBeginningOf(const char (&whole)[size], const char* word) {
    const std::size_t length = static_cast<unsigned short>(std::strlen(word));
    return std::memcmp(word, whole, length < size ? length : size) == 0;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat" /* "%ms" is POSIX, not ISO C++ */

/* The run type that the fourth word of a line denotes; 0 if the line has no fourth word. */
unsigned short typeIn(const char* line) {
    char* word;
    if (std::sscanf(line, "%*s %*s %*s %ms", &word) != 1)
        return 0;
    const unsigned short type = isBeginningOf("Driver", word)      ? deviceDriver
                                : isBeginningOf("Operating", word) ? operatingSystem
                                                                   : application;
    std::free(word);
    return type;
}

#pragma GCC diagnostic pop

} // namespace

namespace inventory {

unsigned short softwareType(const char* const* lines, const OpenWBEM::String& name) {
    if (!lines)
        return application;
    const std::size_t size = static_cast<unsigned short>(name.length());
    unsigned short result = application;
    for (; *lines; ++lines) {
        if (std::strncmp(*lines, name.c_str(), size) != 0)
            continue;
        result = typeIn(*lines);
        if (result == 0)
            return application;
    }
    return result;
}

} // namespace inventory

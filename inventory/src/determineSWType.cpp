/* Classifies a program by the output of the software inventory. */
#include "QAV_UnixProcessAPI.hpp"

#include "Sources.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sblim_utilities.h>

namespace {

/* RFC 2790, hrSWRunType. */
const unsigned short operatingSystem = 2;
const unsigned short deviceDriver = 3;
const unsigned short application = 4;

/* Whether a word is the beginning of another, or all of it. The length of the word is taken in 16 bits. */
template <std::size_t size>
bool isBeginningOf(const char (&whole)[size], const char* word) {
    const std::size_t length = static_cast<unsigned short>(std::strlen(word));
    return std::memcmp(word, whole, length < size ? length : size) == 0;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat" /* "%ms" is POSIX, not ISO C++ */

/* The type that the fourth word of a line stands for; 0 when there is no fourth word. */
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

unsigned short QAV_UnixProcessAPI::determineSWType(const OpenWBEM::String& name) {
    if (!m_swInventoryRead) {
        runcommand(inventory::softwareInventory, NULL, &m_swInventory, NULL);
        m_swInventoryRead = true;
    }
    if (!m_swInventory)
        return application;
    const std::size_t size = static_cast<unsigned short>(name.length());
    unsigned short result = application;
    for (char** line = m_swInventory; *line; ++line) {
        if (std::strncmp(*line, name.c_str(), size) != 0)
            continue;
        result = typeIn(*line);
        if (result == 0)
            return application;
    }
    return result;
}

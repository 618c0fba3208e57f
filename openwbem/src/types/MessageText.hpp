#ifndef OPENWBEM_MESSAGE_TEXT_HPP_INCLUDED
#define OPENWBEM_MESSAGE_TEXT_HPP_INCLUDED
#include <cstring>
#include <string>

namespace OpenWBEM {

/** Bytes of a text that an exception tells. */
const std::size_t longestMessage = 64 * 1024;

/** As much of a text as an exception tells: peers choose how long theirs are. A null pointer is no text. */
inline std::string messageText(const char* text) {
    return text ? std::string(text, ::strnlen(text, longestMessage)) : std::string();
}

} // namespace OpenWBEM
#endif

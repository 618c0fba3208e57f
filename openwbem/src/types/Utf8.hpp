#ifndef OPENWBEM_UTF8_HPP_INCLUDED
#define OPENWBEM_UTF8_HPP_INCLUDED
#include "OW_Types.hpp"

#include <string>

namespace OpenWBEM {

/** What takeUtf8() gives for a byte that is no part of a character is this and the byte. */
const char32_t malformedByte = 0xDC00; // surrogates, which no text has

/** Appends a character (UCS-2) in UTF-8. */
void appendUtf8(std::string& text, UInt16 code);

/**
 * Takes the next character off a NUL-terminated UTF-8 text (RFC 3629) and advances the pointer behind it.
 * The NUL counts as a character.
 */
char32_t takeUtf8(const char*& text);

} // namespace OpenWBEM
#endif

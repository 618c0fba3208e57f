#ifndef OPENWBEM_UTF8_HPP_INCLUDED
#define OPENWBEM_UTF8_HPP_INCLUDED
#include "OW_Types.hpp"

#include <string>

namespace OpenWBEM {

/** takeUtf8() returns this plus the byte for a byte that belongs to no character. In the range of surrogates,
 * which UTF-8 never encodes. */
const char32_t malformedByte = 0xDC00;

/** Appends a character (UCS-2) in UTF-8. */
void appendUtf8(std::string& text, UInt16 code);

/**
 * Returns the first character of a NUL-terminated UTF-8 text (RFC 3629) and moves the pointer past it. The
 * NUL is returned as a character.
 */
char32_t takeUtf8(const char*& text);

/** The character without its case: Unicode's simple case folding, without the Turkish rules for the letter I.
 */
char32_t foldCase(char32_t code);

/**
 * Compares two UTF-8 texts by the folded case of their characters: negative, zero or positive. Independent of
 * the process locale. A malformed byte equals only itself.
 */
int compareIgnoringCase(const char* a, const char* b);

} // namespace OpenWBEM
#endif

#ifndef CIMOM_PROTOCOL_XML_TEXT_HPP_INCLUDED
#define CIMOM_PROTOCOL_XML_TEXT_HPP_INCLUDED
#include <cstddef>
#include <string>

namespace cimom {

/**
 * Replaces by U+FFFD what an XML document may not contain (XML 1.0, Char): control characters except tab and
 * line ends, and each byte that is not part of a character in UTF-8. The arguments of a process, for example,
 * may be any bytes, and must not make the whole reply unreadable.
 *
 * @param from index of the first byte to look at
 */
void replaceForbidden(std::string& document, std::size_t from);

} // namespace cimom
#endif

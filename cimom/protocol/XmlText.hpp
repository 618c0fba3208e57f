#ifndef CIMOM_PROTOCOL_XML_TEXT_HPP_INCLUDED
#define CIMOM_PROTOCOL_XML_TEXT_HPP_INCLUDED
#include <cstddef>
#include <string>

namespace cimom {

/**
 * Replaces what no XML document may hold (XML 1.0, Char), in a document in UTF-8: control characters but tab
 * and line ends become U+FFFD, and so does each byte that is no part of a character. The arguments of a
 * process, for one, may be any bytes, and must not make the reply about all others unreadable.
 *
 * @param from where to begin; what stands before is left alone
 */
void replaceForbidden(std::string& document, std::size_t from);

} // namespace cimom
#endif

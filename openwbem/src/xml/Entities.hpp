#ifndef OPENWBEM_XML_ENTITIES_HPP_INCLUDED
#define OPENWBEM_XML_ENTITIES_HPP_INCLUDED
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * Appends a text with its references decoded: the five named entities of XML 1.0, and numeric references up
 * to 127. Any other "&" is copied. The output is never longer than the input.
 *
 * @return the invalid numeric reference at which decoding stopped; empty on success
 */
std::string_view decode(std::string_view text, std::string& to);

/** Appends a text escaped for the content of an element or an attribute: markup, quotes and line ends become
 * references, all other bytes are copied. */
void appendEscaped(std::string& to, std::string_view text);

} // namespace xml
} // namespace OpenWBEM
#endif

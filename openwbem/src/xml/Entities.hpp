#ifndef OPENWBEM_XML_ENTITIES_HPP_INCLUDED
#define OPENWBEM_XML_ENTITIES_HPP_INCLUDED
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * Appends a text with its references replaced by what they stand for: the five names of XML 1.0, and numbers
 * up to 127. Any other "&" stands for itself. Never appends more than it takes.
 *
 * @return the first numeric reference that cannot be replaced, where it stopped; empty when there is none
 */
std::string_view decode(std::string_view text, std::string& to);

/** Appends a text for the content of an element or an attribute: markup, quotes and line ends as references,
 * all other bytes as they are. */
void appendEscaped(std::string& to, std::string_view text);

} // namespace xml
} // namespace OpenWBEM
#endif

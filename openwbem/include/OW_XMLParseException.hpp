#ifndef OW_XML_PARSE_EXCEPTION_HPP_INCLUDED
#define OW_XML_PARSE_EXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"

namespace OpenWBEM {

/** A reply is not well-formed XML; the message starts with the line. */
OW_DECLARE_EXCEPTION(XMLParse)

} // namespace OpenWBEM
#endif

#ifndef OPENWBEM_BINARY_REPLY_HPP_INCLUDED
#define OPENWBEM_BINARY_REPLY_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "io/Source.hpp"

namespace OpenWBEM {
namespace binary {

/**
 * Read the body of a reply, and nothing after it.
 *
 * Throw CIMException for a reported error with a code, IOException for a reported error without a code and
 * for a malformed body, StringConversionException for a real that is not a number, and the exceptions of the
 * source.
 */
CIMInstanceEnumeration readInstances(io::Source& body);
CIMInstance readInstance(io::Source& body);
/** A reply without a return value. */
void readDone(io::Source& body);

} // namespace binary
} // namespace OpenWBEM
#endif

#ifndef OPENWBEM_BINARY_REPLY_HPP_INCLUDED
#define OPENWBEM_BINARY_REPLY_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "io/Source.hpp"

namespace OpenWBEM {
namespace binary {

/**
 * Read the body of a reply. What follows behind a whole body is left alone.
 *
 * Throw CIMException for an error that the object manager reports with a code, IOException for one that it
 * reports without and for a malformed body, StringConversionException for a real that is no number, and what
 * the source throws.
 */
CIMInstanceEnumeration readInstances(io::Source& body);
CIMInstance readInstance(io::Source& body);
/** A reply that says only that the operation was carried out. */
void readDone(io::Source& body);

} // namespace binary
} // namespace OpenWBEM
#endif

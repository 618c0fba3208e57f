#ifndef OPENWBEM_IO_LIMITS_HPP_INCLUDED
#define OPENWBEM_IO_LIMITS_HPP_INCLUDED
// Limits of the data that decoders accept from a peer. Data beyond a limit is an error.
#include <cstddef>

namespace OpenWBEM {
namespace io {

/** Nesting depth of embedded objects; limits the use of the stack. */
const unsigned maximumDepth = 64;
/** Bytes of one text. */
const std::size_t maximumText = 16 * 1024 * 1024;
/** Elements of one array, properties of one object, and so on. */
const std::size_t maximumElements = 1024 * 1024;
/** Bytes of one instance of a reply, including all bytes before it, and of the bytes after the last instance.
 */
const std::size_t maximumObject = 64 * 1024 * 1024;

} // namespace io
} // namespace OpenWBEM
#endif

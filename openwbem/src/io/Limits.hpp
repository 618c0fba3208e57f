#ifndef OPENWBEM_IO_LIMITS_HPP_INCLUDED
#define OPENWBEM_IO_LIMITS_HPP_INCLUDED
// What decoders take of what a peer sends. Whatever goes beyond is refused.
#include <cstddef>

namespace OpenWBEM {
namespace io {

/** Levels of objects within objects, so that no reply can exhaust the stack. */
const unsigned maximumDepth = 64;
/** Bytes of one text. */
const std::size_t maximumText = 16 * 1024 * 1024;
/** Elements of one array, properties of one object, and so on. */
const std::size_t maximumElements = 1024 * 1024;
/** Bytes of one instance of a reply, with all that stands in front of it, and of what follows the last one.
 */
const std::size_t maximumObject = 64 * 1024 * 1024;

} // namespace io
} // namespace OpenWBEM
#endif

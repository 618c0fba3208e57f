#ifndef OPENWBEM_IO_SOURCE_HPP_INCLUDED
#define OPENWBEM_IO_SOURCE_HPP_INCLUDED
#include <cstddef>

namespace OpenWBEM {
namespace io {

/** Bytes that come piece by piece. */
class Source {
public:
    virtual ~Source() = default;
    /**
     * Reads up to size bytes, size being at least 1, and returns how many; 0 at the end, and again at every
     * call after it. Waits until there is at least one. Throws an OpenWBEM::Exception when the bytes break
     * off before their end.
     */
    virtual std::size_t read(char* to, std::size_t size) = 0;
};

} // namespace io
} // namespace OpenWBEM
#endif

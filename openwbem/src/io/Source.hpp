#ifndef OPENWBEM_IO_SOURCE_HPP_INCLUDED
#define OPENWBEM_IO_SOURCE_HPP_INCLUDED
#include <cstddef>

namespace OpenWBEM {
namespace io {

/** A stream of bytes that arrives in pieces. */
class Source {
public:
    virtual ~Source() = default;
    /**
     * Reads up to size bytes, which must be at least 1; waits for at least one. Returns the number of bytes
     * read; 0 at the end and after it. Throws an OpenWBEM::Exception if the stream is truncated.
     */
    virtual std::size_t read(char* to, std::size_t size) = 0;
};

} // namespace io
} // namespace OpenWBEM
#endif

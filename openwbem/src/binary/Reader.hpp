#ifndef OPENWBEM_BINARY_READER_HPP_INCLUDED
#define OPENWBEM_BINARY_READER_HPP_INCLUDED
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include <cstddef>
#include <string_view>

namespace OpenWBEM {
namespace binary {

/**
 * Reads the primitives of the binary protocol from a buffer that it does not own. Every read is checked
 * against what is left, before anything is allocated; a short or malformed buffer throws IOException.
 */
class Reader {
public:
    Reader(const char* data, std::size_t size)
        : m_next(data)
        , m_end(data + size) {}

    std::size_t remaining() const { return static_cast<std::size_t>(m_end - m_next); }

    UInt8 u8() { return static_cast<UInt8>(*take(1)); }
    UInt16 u16();
    UInt32 u32();
    UInt64 u64();
    bool boolean() { return u8() != 0; }

    /** A number in the form that counts and lengths have: one byte up to 127, else a byte count and the
     * bytes. */
    UInt32 number();
    /** A number of elements that follow, each at least elementSize bytes long. */
    UInt32 count(std::size_t elementSize);
    /** A text, as bytes of the buffer. */
    std::string_view text();
    String string();

    /** The byte that comes next, which stays; throws at the end. */
    UInt8 peek() const;
    /** Consumes one byte, which must be this signature. */
    void expect(UInt8 signature);

private:
    const char* take(std::size_t size);

    const char* m_next;
    const char* m_end;
};

/** Throws IOException: the buffer ends before the data does. */
[[noreturn]] void throwTruncated();

} // namespace binary
} // namespace OpenWBEM
#endif

#ifndef OPENWBEM_BINARY_READER_HPP_INCLUDED
#define OPENWBEM_BINARY_READER_HPP_INCLUDED
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "io/Window.hpp"

#include <cstddef>
#include <string_view>

namespace OpenWBEM {
namespace binary {

/**
 * Reads the primitives of the binary protocol. Throws IOException if the input is truncated, and
 * BadCIMSignatureException, a subclass, for an unexpected signature.
 */
class Reader {
public:
    /** Input in memory that must outlive the reader. */
    Reader(const char* data, std::size_t size)
        : m_in(data, size) {}
    /** Input from a source, which must outlive the reader. */
    explicit Reader(io::Source& source)
        : m_in(source) {}

    UInt8 u8() { return static_cast<UInt8>(*take(1)); }
    UInt16 u16();
    UInt32 u32();
    UInt64 u64();
    bool boolean() { return u8() != 0; }

    /** A number in the variable-length form of counts and lengths: one byte up to 127, else a byte count and
     * the bytes. */
    UInt32 number();
    /** The bytes of a text, at most io::maximumText. Valid until the next read. */
    std::string_view text();
    String string();

    /** The next byte, without consuming it; throws at the end. */
    UInt8 peek();
    /** Consumes one byte; throws if it is not this signature. */
    void expect(UInt8 signature);
    bool atEnd() { return !m_in.need(1); }

    /** Consumes these bytes if they are next; else returns false. */
    bool skip(std::string_view bytes);
    /** Starts the next object of a message. An object is limited to io::maximumObject bytes. */
    void beginObject() { m_in.beginObject(); }
    /** Starts a slice: endSlice() returns the bytes read from here on. */
    void beginSlice() { m_in.beginSlice(); }
    /** The bytes read since beginSlice(). Valid until the next read. */
    std::string_view endSlice() { return m_in.endSlice(); }

private:
    const char* take(std::size_t size) {
        if (!m_in.need(size))
            throwTruncated();
        const char* const bytes = m_in.begin();
        m_in.consume(size);
        return bytes;
    }
    [[noreturn]] static void throwTruncated();

    io::Window m_in;
};

} // namespace binary
} // namespace OpenWBEM
#endif

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
 * Reads the primitives of the binary protocol. Throws IOException where the bytes end too early, and
 * BadCIMSignatureException, which is one, where others are expected.
 */
class Reader {
public:
    /** Bytes in memory that must outlive the reader. */
    Reader(const char* data, std::size_t size)
        : m_in(data, size) {}
    /** Bytes that come from a source, which must outlive the reader. */
    explicit Reader(io::Source& source)
        : m_in(source) {}

    UInt8 u8() { return static_cast<UInt8>(*take(1)); }
    UInt16 u16();
    UInt32 u32();
    UInt64 u64();
    bool boolean() { return u8() != 0; }

    /** A number in the form that counts and lengths have: one byte up to 127, else a byte count and the
     * bytes. */
    UInt32 number();
    /** A text, as bytes that stay until the next read. Not longer than io::maximumText. */
    std::string_view text();
    String string();

    /** The byte that comes next, which stays; throws at the end. */
    UInt8 peek();
    /** Consumes one byte, which must be this signature. */
    void expect(UInt8 signature);
    bool atEnd() { return !m_in.need(1); }

    /** Consumes these bytes if they come next; false when others do. */
    bool skip(std::string_view bytes);
    /** Begins the next object of a message, none of which may be longer than io::maximumObject. */
    void beginObject() { m_in.beginObject(); }
    /** Keeps what is read from here on, for held(). */
    void hold() { m_in.hold(); }
    /** What was read since hold(), which it ends; valid until the next read. */
    std::string_view held() { return m_in.held(); }

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

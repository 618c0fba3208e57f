#ifndef OPENWBEM_BINARY_WRITER_HPP_INCLUDED
#define OPENWBEM_BINARY_WRITER_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"

#include <string>
#include <string_view>

namespace OpenWBEM {
namespace binary {

/** Writes the primitives of the binary protocol to a buffer. */
class Writer {
public:
    void u8(UInt8 value) { m_bytes += static_cast<char>(value); }
    void u16(UInt16 value);
    void u32(UInt32 value);
    void u64(UInt64 value);
    void boolean(bool value) { u8(value ? 1 : 0); }
    /** The variable-length form of Reader::number(). */
    void number(UInt32 value);
    void text(std::string_view value);
    void string(const String& value);

    /** Arguments of an operation. A null list means that there is no list. */
    void booleanArgument(bool value);
    void stringArgument(const String& value);
    void stringListArgument(const StringArray* values);

    const std::string& bytes() const { return m_bytes; }
    std::string release() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

} // namespace binary
} // namespace OpenWBEM
#endif

#ifndef OPENWBEM_BINARY_WRITER_HPP_INCLUDED
#define OPENWBEM_BINARY_WRITER_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"

#include <string>
#include <string_view>

namespace OpenWBEM {
namespace binary {

/** Appends the primitives of the binary protocol to a buffer of its own. */
class Writer {
public:
    void u8(UInt8 value) { m_bytes += static_cast<char>(value); }
    void u16(UInt16 value);
    void u32(UInt32 value);
    void u64(UInt64 value);
    void boolean(bool value) { u8(value ? 1 : 0); }
    /** A count, a length or a small number, see Reader::number(). */
    void number(UInt32 value);
    void text(std::string_view value);
    void string(const String& value);

    /** A truth value, a text and a list of texts as arguments of an operation; a null list means "none
     * given". */
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

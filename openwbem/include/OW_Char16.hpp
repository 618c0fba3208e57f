#ifndef OW_CHAR16_HPP_INCLUDED
#define OW_CHAR16_HPP_INCLUDED
#include "OW_Bool.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

namespace OpenWBEM {

/** A CIM char16: one UCS-2 code unit. */
class OW_COMMON_API Char16 {
public:
    Char16()
        : m_value(0) {}
    Char16(UInt16 value)
        : m_value(value) {}
    /** The first character of a UTF-8 text; 0xFFFF if it is malformed or above 0xFFFF; 0 for the empty text.
     */
    explicit Char16(const String& text);
    explicit Char16(char c)
        : m_value(static_cast<unsigned char>(c)) {}
    /** A number, truncated to 16 bits. */
    explicit Char16(Bool value)
        : m_value(value ? 1 : 0) {}
    explicit Char16(UInt8 value)
        : m_value(value) {}
    explicit Char16(Int8 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(Int16 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(UInt32 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(Int32 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(UInt64 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(Int64 value)
        : m_value(static_cast<UInt16>(value)) {}
    /** A real, truncated to an integer, which must fit in 16 bits. */
    explicit Char16(Real32 value)
        : m_value(static_cast<UInt16>(value)) {}
    explicit Char16(Real64 value)
        : m_value(static_cast<UInt16>(value)) {}

    UInt16 getValue() const { return m_value; }
    operator UInt16() const { return m_value; }
    /** The character in UTF-8. */
    String toString() const;

private:
    UInt16 m_value;
};

} // namespace OpenWBEM
#endif

#ifndef OW_CHAR16_HPP_INCLUDED
#define OW_CHAR16_HPP_INCLUDED
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

    UInt16 getValue() const { return m_value; }
    operator UInt16() const { return m_value; }
    /** The character in UTF-8. */
    String toString() const;

private:
    UInt16 m_value;
};

} // namespace OpenWBEM
#endif

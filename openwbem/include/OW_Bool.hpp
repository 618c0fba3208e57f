#ifndef OW_BOOL_HPP_INCLUDED
#define OW_BOOL_HPP_INCLUDED
#include "OW_String.hpp"

namespace OpenWBEM {

/** A CIM boolean. Pointers do not convert to it. */
class OW_COMMON_API Bool {
public:
    Bool()
        : m_value(false) {}
    Bool(bool value)
        : m_value(value) {}
    Bool(const volatile void*) = delete;

    operator bool() const { return m_value; }
    /** "true" or "false". */
    String toString() const;

private:
    bool m_value;
};

} // namespace OpenWBEM
#endif

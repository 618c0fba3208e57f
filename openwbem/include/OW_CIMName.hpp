#ifndef OW_CIMNAME_HPP_INCLUDED
#define OW_CIMNAME_HPP_INCLUDED
#include "OW_String.hpp"
#include "detail/OW_SafeBool.hpp"
#include <utility>

namespace OpenWBEM {

/** Name of a CIM element. Keeps its letter case; comparisons ignore case. */
class OW_COMMON_API CIMName {
public:
    CIMName() = default;
    CIMName(String name) noexcept
        : m_name(std::move(name)) {}
    /** A null pointer gives the empty name. */
    CIMName(const char* name)
        : m_name(name) {}

    String toString() const { return m_name; }
    /** Whether the name is not empty. */
    bool isValid() const { return !m_name.empty(); }
    operator detail::SafeBool() const { return detail::safeBool(isValid()); }
    bool operator!() const { return !isValid(); }

    friend bool operator==(const CIMName& a, const CIMName& b) { return a.compare(b) == 0; }
    friend bool operator!=(const CIMName& a, const CIMName& b) { return a.compare(b) != 0; }
    friend bool operator<(const CIMName& a, const CIMName& b) { return a.compare(b) < 0; }
    friend bool operator<=(const CIMName& a, const CIMName& b) { return a.compare(b) <= 0; }
    friend bool operator>(const CIMName& a, const CIMName& b) { return a.compare(b) > 0; }
    friend bool operator>=(const CIMName& a, const CIMName& b) { return a.compare(b) >= 0; }

private:
    int compare(const CIMName& other) const { return m_name.compareToIgnoreCase(other.m_name); }

    String m_name;
};

} // namespace OpenWBEM
#endif

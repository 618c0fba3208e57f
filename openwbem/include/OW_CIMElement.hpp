#ifndef OW_CIMELEMENT_HPP_INCLUDED
#define OW_CIMELEMENT_HPP_INCLUDED
#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"

namespace OpenWBEM {

/** Common base of named CIM objects. */
class OW_COMMON_API CIMElement : public CIMBase {
public:
    /** The name, with its letter case as stored. */
    virtual String getName() const = 0;
    virtual void setName(const CIMName& name) = 0;
    /** The name. */
    String toString() const override;
    /** Compares the names without case. */
    bool equals(const CIMElement& other) const { return getName().equalsIgnoreCase(other.getName()); }
};

inline bool operator==(const CIMElement& a, const CIMElement& b) {
    return a.equals(b);
}
inline bool operator!=(const CIMElement& a, const CIMElement& b) {
    return !a.equals(b);
}

} // namespace OpenWBEM
#endif

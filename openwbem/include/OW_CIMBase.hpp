#ifndef OW_CIMBASE_HPP_INCLUDED
#define OW_CIMBASE_HPP_INCLUDED
#include "OW_String.hpp"

namespace OpenWBEM {

/** Common base of the CIM object types. */
class OW_COMMON_API CIMBase {
public:
    virtual ~CIMBase() = default;
    /** Makes the handle null. */
    virtual void setNull() = 0;
    /** The object as text. Each class documents its form. */
    virtual String toString() const = 0;
    /** The object in the Managed Object Format (DSP0004). */
    virtual String toMOF() const = 0;

protected:
    CIMBase() = default;
    CIMBase(const CIMBase&) = default;
    CIMBase(CIMBase&&) = default;
    CIMBase& operator=(const CIMBase&) = default;
    CIMBase& operator=(CIMBase&&) = default;
};

} // namespace OpenWBEM
#endif

#ifndef OW_CIMELEMENT_HPP_INCLUDED
#define OW_CIMELEMENT_HPP_INCLUDED
#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"

namespace OpenWBEM {

/** Common base of the CIM objects that have a name. */
class OW_COMMON_API CIMElement : public CIMBase {
public:
    /** The name in the spelling in which it was stored. */
    virtual String getName() const = 0;
    virtual void setName(const CIMName& name) = 0;
    /** The name. */
    String toString() const override;
};

} // namespace OpenWBEM
#endif

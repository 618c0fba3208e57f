#ifndef OW_CIMCLASS_HPP_INCLUDED
#define OW_CIMCLASS_HPP_INCLUDED
#include "OW_CIMElement.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "detail/OW_SafeBool.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

/** A class: name, superclass, properties with default values. Copies share the data; may be null. */
class OW_COMMON_API CIMClass : public CIMElement {
public:
    struct Data;

    /** A class without name and properties; not null. */
    CIMClass();
    explicit CIMClass(CIMNULL_t);
    explicit CIMClass(const CIMName& name);
    explicit CIMClass(const char* name);

    String getName() const override;
    void setName(const CIMName& name) override;
    CIMName getSuperClass() const;
    CIMClass& setSuperClass(const CIMName& name);
    bool isAssociation() const;
    /** All properties, in order. */
    CIMPropertyArray getAllProperties() const;
    CIMClass& setProperties(const CIMPropertyArray& properties);

    /** A new instance with the declared types and default values of the properties. */
    CIMInstance newInstance() const;

    void setNull() override;
    /** The same as toMOF(). */
    String toString() const override;
    /** The declaration of the class in the Managed Object Format (DSP0004). */
    String toMOF() const override;

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_data)); }
    bool operator!() const { return !m_data; }

private:
    friend struct ObjectAccess;
    detail::Shared<Data> m_data;
};

} // namespace OpenWBEM
#endif

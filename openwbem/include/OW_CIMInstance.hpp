#ifndef OW_CIMINSTANCE_HPP_INCLUDED
#define OW_CIMINSTANCE_HPP_INCLUDED
#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMProperty.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

/** An instance of a class: ordered properties, and keys. Copies share the data; may be null. */
class OW_COMMON_API CIMInstance : public CIMElement {
public:
    struct Data;
    enum EErrorCodes { E_INSTANCE_HAS_NO_SUCH_PROPERTY = 0 };

    /** An instance without class and properties; not null. */
    CIMInstance();
    explicit CIMInstance(CIMNULL_t);
    explicit CIMInstance(const CIMName& className);
    explicit CIMInstance(const char* className);

    String getClassName() const;
    CIMInstance& setClassName(const CIMName& className);
    /** The class name. */
    String getName() const override;
    void setName(const CIMName& className) override;

    /** All properties, in order, or only those of one declared type. */
    CIMPropertyArray getProperties(Int32 valueDataType = CIMDataType::INVALID) const;
    CIMInstance& setProperties(const CIMPropertyArray& properties);
    /** The property with this name, compared without case; a null property if there is none. */
    CIMProperty getProperty(const CIMName& name) const;
    /** The value of the property with this name; the null value if there is none. */
    CIMValue getPropertyValue(const CIMName& name) const;
    /** Like getProperty(), but throws NoSuchPropertyException if there is none. */
    CIMProperty getPropertyT(const CIMName& name) const;
    /** Whether the property with this name exists and has a value. */
    bool propertyHasValue(const CIMName& name) const;
    /**
     * Sets the value of a property, see CIMProperty::setValue(). If there is none with this name, appends one
     * with the type of the value; a null value leaves its type unset for good. Updates the key with this
     * name, too.
     */
    CIMInstance& setProperty(const CIMName& name, const CIMValue& value);
    /** Replaces the property with the same name, or appends the property. Ignores a null property. */
    CIMInstance& setProperty(const CIMProperty& property);

    CIMInstance& removeProperty(const CIMName& name);

    /** The keys, as sent by the object manager. */
    CIMPropertyArray getKeyValuePairs() const;
    CIMInstance& setKeys(const CIMPropertyArray& keys);

    /** The language of the texts, as sent by the object manager; usually empty. */
    String getLanguage() const;
    void setLanguage(const String& language);

    void setNull() override;
    /** `instance of <class> {`, a line `<name> = <value>;` for each property, `}`. */
    String toString() const override;
    /** `instance of <class> {` and the properties that have a value. */
    String toMOF() const override;

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_data)); }
    bool operator!() const { return !m_data; }

private:
    friend struct ObjectAccess;
    detail::Shared<Data> m_data;
};

} // namespace OpenWBEM
#endif

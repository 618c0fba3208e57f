#ifndef OW_CIMINSTANCE_HPP_INCLUDED
#define OW_CIMINSTANCE_HPP_INCLUDED
#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMProperty.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

/** An instance of a class: its properties, in their order, and its keys. Copies share the data; may be null.
 */
class OW_COMMON_API CIMInstance : public CIMElement {
public:
    struct Data;
    enum EErrorCodes { E_INSTANCE_HAS_NO_SUCH_PROPERTY = 0 };

    /** No class, no properties; not a null handle. */
    CIMInstance();
    explicit CIMInstance(CIMNULL_t);
    explicit CIMInstance(const CIMName& className);
    explicit CIMInstance(const char* className);

    String getClassName() const;
    CIMInstance& setClassName(const CIMName& className);
    /** The class name. */
    String getName() const override;
    void setName(const CIMName& className) override;

    /** All properties in their order, or only those that were declared with one type. */
    CIMPropertyArray getProperties(Int32 valueDataType = CIMDataType::INVALID) const;
    CIMInstance& setProperties(const CIMPropertyArray& properties);
    /** The property of this name, whatever the case of its letters; a null property when there is none. */
    CIMProperty getProperty(const CIMName& name) const;
    /** The value of the property of this name; the null value when there is no such property. */
    CIMValue getPropertyValue(const CIMName& name) const;
    /** The property of this name; NoSuchPropertyException when there is none. */
    CIMProperty getPropertyT(const CIMName& name) const;
    /** Whether there is a property of this name and it has a value. */
    bool propertyHasValue(const CIMName& name) const;
    /**
     * Gives a property a value, see CIMProperty::setValue(), or appends a property, declared with the type of
     * the value: of no type for the null value, and so for good. Keys of that name follow.
     */
    CIMInstance& setProperty(const CIMName& name, const CIMValue& value);
    /** Replaces the property of the same name in its place, or appends it. A null property changes nothing.
     */
    CIMInstance& setProperty(const CIMProperty& property);

    CIMInstance& removeProperty(const CIMName& name);

    /** The properties that identify the instance, as the object manager named them. */
    CIMPropertyArray getKeyValuePairs() const;
    CIMInstance& setKeys(const CIMPropertyArray& keys);

    /** The language of the texts, as the object manager named it; mostly empty. */
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

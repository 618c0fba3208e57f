#ifndef OW_CIMPROPERTY_HPP_INCLUDED
#define OW_CIMPROPERTY_HPP_INCLUDED
#include "OW_CIMDataType.hpp"
#include "OW_CIMElement.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMValue.hpp"
#include "detail/OW_Shared.hpp"
#include <utility>

namespace OpenWBEM {

struct Declaration;

/** A property: name, declared type and value, which may be null. Copies share what declares it; the property
 * itself may be null. */
class OW_COMMON_API CIMProperty : public CIMElement {
public:
    /** No name, no type, no value; not a null handle. */
    CIMProperty();
    explicit CIMProperty(CIMNULL_t);
    explicit CIMProperty(const CIMName& name);
    explicit CIMProperty(const char* name);
    /** Declared with the type of the value, which must not be null. */
    CIMProperty(const CIMName& name, const CIMValue& value);
    /** Without a value. */
    CIMProperty(const CIMName& name, const CIMDataType& type);

    String getName() const override;
    void setName(const CIMName& name) override;
    /** The value; the null value when there is none. */
    CIMValue getValue() const;
    /** The value; NULLValueException when there is none. */
    CIMValue getValueT() const;
    /**
     * Stores a value. One that is neither null nor an object is cast to the declared type if that is set and
     * differs, see CIMValueCast::castValueToDataType().
     */
    CIMProperty& setValue(const CIMValue& value);
    CIMDataType getDataType() const;
    /** Declares another type, to which a value that is there is cast. */
    CIMProperty& setDataType(const CIMDataType& type);
    /** The number of elements that came with the property, -1 when none was given. */
    Int32 getSize() const;
    /** The class that declares the property; empty when unknown. */
    String getOriginClass() const;
    CIMProperty& setOriginClass(const CIMName& className);
    /** Whether the class inherits the property. */
    bool getPropagated() const;
    CIMProperty& setPropagated(bool propagated);
    bool isReference() const;
    /** Whether the declared type is a reference or the qualifier Key is true. */
    bool isKey() const;

    void setNull() override;
    /** `<type>:<name>=<value>`, the value "null" when there is none. */
    String toString() const override;
    /** `<type> <name> = <value>;` in the form of a class's declaration. */
    String toMOF() const override;

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_declaration)); }
    bool operator!() const { return !m_declaration; }

private:
    friend struct ObjectAccess;
    CIMProperty(detail::Shared<Declaration> declaration, CIMValue value) noexcept
        : m_declaration(std::move(declaration))
        , m_value(std::move(value)) {}

    detail::Shared<Declaration> m_declaration; // null for the null property
    CIMValue m_value;
};

} // namespace OpenWBEM
#endif

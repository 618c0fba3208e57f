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

/** A property: declaration and value. The value may be null, and so may the property. Copies share the
 * declaration. */
class OW_COMMON_API CIMProperty : public CIMElement {
public:
    /** A property without name, type and value; not null. */
    CIMProperty();
    explicit CIMProperty(CIMNULL_t);
    explicit CIMProperty(const CIMName& name);
    explicit CIMProperty(const char* name);
    /** A property of the type of the value, which must not be null. */
    CIMProperty(const CIMName& name, const CIMValue& value);
    /** A property without a value. */
    CIMProperty(const CIMName& name, const CIMDataType& type);

    String getName() const override;
    void setName(const CIMName& name) override;
    /** The value; the null value if there is none. */
    CIMValue getValue() const;
    /** Like getValue(), but throws NULLValueException if there is none. */
    CIMValue getValueT() const;
    /**
     * Sets the value. Casts it to the declared type, if that is set and differs, see
     * CIMValueCast::castValueToDataType(); null values and embedded objects are stored as they are.
     */
    CIMProperty& setValue(const CIMValue& value);
    CIMDataType getDataType() const;
    /** Sets the declared type and casts the value to it. */
    CIMProperty& setDataType(const CIMDataType& type);
    /** The array size that the object manager sent; -1 if it sent none. */
    Int32 getSize() const;
    /** The class that declares the property; empty if unknown. */
    String getOriginClass() const;
    CIMProperty& setOriginClass(const CIMName& className);
    /** Whether the class inherits the property. */
    bool getPropagated() const;
    CIMProperty& setPropagated(bool propagated);
    bool isReference() const;
    /** Whether the declared type is a reference or the qualifier Key is true. */
    bool isKey() const;

    void setNull() override;
    /** `<type>:<name>=<value>`; "null" for a null value. */
    String toString() const override;
    /** `<type> <name> = <value>;`, the form of a class declaration. */
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

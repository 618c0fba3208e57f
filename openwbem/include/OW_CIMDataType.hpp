#ifndef OW_CIMDATATYPE_HPP_INCLUDED
#define OW_CIMDATATYPE_HPP_INCLUDED
#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_Types.hpp"
#include "detail/OW_SafeBool.hpp"

namespace OpenWBEM {

/** Declared type of a property: element type, arrayness, class of a reference. */
class OW_COMMON_API CIMDataType : public CIMBase {
public:
    /** The numbers of the wire format. As a filter, INVALID means any type. */
    enum Type {
        CIMNULL = 0,
        UINT8 = 1,
        SINT8 = 2,
        UINT16 = 3,
        SINT16 = 4,
        UINT32 = 5,
        SINT32 = 6,
        UINT64 = 7,
        SINT64 = 8,
        STRING = 9,
        BOOLEAN = 10,
        REAL32 = 11,
        REAL64 = 12,
        DATETIME = 13,
        CHAR16 = 14,
        REFERENCE = 15,
        EMBEDDEDCLASS = 16,
        EMBEDDEDINSTANCE = 17,
        MAXDATATYPE = 18,
        INVALID = 99
    };
    enum { SIZE_SINGLE = 0, SIZE_UNLIMITED = 1, SIZE_LIMITED = 2 };

    /** Type CIMNULL; false in a boolean context. */
    CIMDataType();
    explicit CIMDataType(CIMNULL_t);
    CIMDataType(Type type);
    /** An array of up to arraySize elements; a size below 1 means unlimited. */
    CIMDataType(Type type, Int32 arraySize);
    /** A reference to objects of a class. */
    explicit CIMDataType(const CIMName& refClass);

    Type getType() const { return m_type; }
    bool isArrayType() const { return m_sizeRange != SIZE_SINGLE; }
    bool isReferenceType() const { return m_type == REFERENCE; }
    bool isNumericType() const { return isNumericType(m_type); }
    /** 1 for a single value, the maximum size of a limited array, -1 for an unlimited array. */
    Int32 getSize() const { return m_size; }
    String getRefClassName() const { return m_refClass.toString(); }
    /** Turns the type into an array type; a size below 1 means unlimited. Returns false, and changes nothing,
     * for the types CIMNULL and INVALID. */
    bool setToArrayType(Int32 size);
    /** Copies type and arrayness of a value. Returns false, and changes nothing, for the null value. */
    bool syncWithValue(const CIMValue& value);

    /** Whether element type and arrayness are equal. */
    bool equals(const CIMDataType& other) const;
    void setNull() override;
    /** CIM name of the element type, as in "uint16". */
    String toString() const override;
    /** The same as toString(). */
    String toMOF() const override;
    /** "[]" or "[size]" for an array type, "" for a single value. */
    String getArrayMOF() const;

    /** Whether values of a type are integers or reals. */
    static bool isNumericType(Type type);
    /** The type with a CIM name, compared without case; INVALID for any other text. */
    static Type strToSimpleType(const String& name);
    static CIMDataType getDataType(const String& name) { return CIMDataType(strToSimpleType(name)); }

    /** False for the types CIMNULL and INVALID. */
    operator detail::SafeBool() const { return detail::safeBool(isSet()); }
    bool operator!() const { return !isSet(); }

    /** Compares all fields, including the size and the class of a reference. */
    friend bool operator==(const CIMDataType& a, const CIMDataType& b) {
        return a.equals(b) && a.m_size == b.m_size && a.m_sizeRange == b.m_sizeRange &&
               a.m_refClass == b.m_refClass;
    }
    friend bool operator!=(const CIMDataType& a, const CIMDataType& b) { return !(a == b); }

private:
    friend struct ObjectAccess;
    bool isSet() const { return m_type != CIMNULL && m_type != INVALID; }

    Type m_type;
    Int32 m_size;
    Int32 m_sizeRange;
    CIMName m_refClass;
};

} // namespace OpenWBEM
#endif

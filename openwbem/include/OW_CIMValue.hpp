#ifndef OW_CIMVALUE_HPP_INCLUDED
#define OW_CIMVALUE_HPP_INCLUDED
#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMBase.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_Char16.hpp"
#include "OW_String.hpp"
#include "detail/OW_Shared.hpp"
#include <cstring>

namespace OpenWBEM {

/**
 * A value or an array of one CIM type; may be null. Stores numbers, booleans and characters inline; copies
 * share all other data.
 */
class OW_COMMON_API CIMValue : public CIMBase {
public:
    explicit CIMValue(CIMNULL_t) noexcept
        : m_type(CIMDataType::CIMNULL)
        , m_isArray(false)
        , m_plain() {}
    CIMValue(const CIMValue& other);
    CIMValue(CIMValue&& other) noexcept
        : CIMValue(CIMNULL) {
        take(other);
    }
    ~CIMValue() override { destroy(); }
    CIMValue& operator=(const CIMValue& other);
    CIMValue& operator=(CIMValue&& other) noexcept {
        if (this != &other) {
            destroy();
            take(other);
        }
        return *this;
    }

    explicit CIMValue(Bool value);
    explicit CIMValue(bool value);
    explicit CIMValue(UInt8 value);
    explicit CIMValue(Int8 value);
    explicit CIMValue(UInt16 value);
    explicit CIMValue(Int16 value);
    explicit CIMValue(UInt32 value);
    explicit CIMValue(Int32 value);
    explicit CIMValue(UInt64 value);
    explicit CIMValue(Int64 value);
    explicit CIMValue(Real32 value);
    explicit CIMValue(Real64 value);
    /** A string; a null pointer gives the empty string, not the null value. */
    explicit CIMValue(const char* value);
    explicit CIMValue(const Char16& value);
    explicit CIMValue(const String& value);
    explicit CIMValue(const CIMDateTime& value);
    explicit CIMValue(const CIMObjectPath& value);
    explicit CIMValue(const CIMClass& value);
    explicit CIMValue(const CIMInstance& value);
    explicit CIMValue(const BoolArray& value);
    explicit CIMValue(const UInt8Array& value);
    explicit CIMValue(const Int8Array& value);
    explicit CIMValue(const UInt16Array& value);
    explicit CIMValue(const Int16Array& value);
    explicit CIMValue(const UInt32Array& value);
    explicit CIMValue(const Int32Array& value);
    explicit CIMValue(const UInt64Array& value);
    explicit CIMValue(const Int64Array& value);
    explicit CIMValue(const Real32Array& value);
    explicit CIMValue(const Real64Array& value);
    explicit CIMValue(const Char16Array& value);
    explicit CIMValue(const StringArray& value);
    explicit CIMValue(const CIMDateTimeArray& value);
    explicit CIMValue(const CIMObjectPathArray& value);
    explicit CIMValue(const CIMClassArray& value);
    explicit CIMValue(const CIMInstanceArray& value);
    /** Prevents the conversion of pointers to bool. */
    explicit CIMValue(const volatile void*) = delete;

    /**
     * Copies the value to out. Throws ValueCastException if type or arrayness differ. One exception: a single
     * sint64 converts to every numeric type, truncated.
     */
    void get(Bool& out) const;
    void get(UInt8& out) const;
    void get(Int8& out) const;
    void get(UInt16& out) const;
    void get(Int16& out) const;
    void get(UInt32& out) const;
    void get(Int32& out) const;
    void get(UInt64& out) const;
    void get(Int64& out) const;
    void get(Real32& out) const;
    void get(Real64& out) const;
    void get(Char16& out) const;
    void get(String& out) const;
    void get(CIMDateTime& out) const;
    void get(CIMObjectPath& out) const;
    void get(CIMClass& out) const;
    void get(CIMInstance& out) const;
    void get(BoolArray& out) const;
    void get(UInt8Array& out) const;
    void get(Int8Array& out) const;
    void get(UInt16Array& out) const;
    void get(Int16Array& out) const;
    void get(UInt32Array& out) const;
    void get(Int32Array& out) const;
    void get(UInt64Array& out) const;
    void get(Int64Array& out) const;
    void get(Real32Array& out) const;
    void get(Real64Array& out) const;
    void get(Char16Array& out) const;
    void get(StringArray& out) const;
    void get(CIMDateTimeArray& out) const;
    void get(CIMObjectPathArray& out) const;
    void get(CIMClassArray& out) const;
    void get(CIMInstanceArray& out) const;
    /** Returns the value, under the conditions of get(). */
    bool toBool() const;
    UInt8 toUInt8() const;
    Int8 toInt8() const;
    UInt16 toUInt16() const;
    Int16 toInt16() const;
    UInt32 toUInt32() const;
    Int32 toInt32() const;
    UInt64 toUInt64() const;
    Int64 toInt64() const;
    Real32 toReal32() const;
    Real64 toReal64() const;
    Char16 toChar16() const;
    CIMDateTime toCIMDateTime() const;
    CIMObjectPath toCIMObjectPath() const;
    CIMClass toCIMClass() const;
    CIMInstance toCIMInstance() const;
    BoolArray toBoolArray() const;
    UInt8Array toUInt8Array() const;
    Int8Array toInt8Array() const;
    UInt16Array toUInt16Array() const;
    Int16Array toInt16Array() const;
    UInt32Array toUInt32Array() const;
    Int32Array toInt32Array() const;
    UInt64Array toUInt64Array() const;
    Int64Array toInt64Array() const;
    Real32Array toReal32Array() const;
    Real64Array toReal64Array() const;
    Char16Array toChar16Array() const;
    StringArray toStringArray() const;
    CIMDateTimeArray toCIMDateTimeArray() const;
    CIMObjectPathArray toCIMObjectPathArray() const;
    CIMClassArray toCIMClassArray() const;
    CIMInstanceArray toCIMInstanceArray() const;

    bool isArray() const;
    /** Type of the value, or of the elements of an array. */
    CIMDataType::Type getType() const;
    /** The type as a declaration; arrays are unlimited. */
    CIMDataType getCIMDataType() const;
    /** Number of elements, 1 for a single value. */
    UInt32 getArraySize() const;
    bool isNumericType() const;
    /** Whether type and arrayness are equal. */
    bool sameType(const CIMValue& other) const;
    /** Whether both are null, or type, arrayness and value are equal. */
    bool equal(const CIMValue& other) const;
    CIMValue& set(const CIMValue& other) { return *this = other; }
    /** Parses a text as a value of a type, given by its CIM name, as in "uint16". Null for an unknown name.
     */
    static CIMValue createSimpleValue(const String& typeName, const String& text);

    void setNull() override;
    /**
     * The value as plain text, without quotes or escapes. The elements of an array are separated by ",". The
     * null value is "(null)". Reals have six significant digits. A single char16 is one byte: its low eight
     * bits.
     */
    String toString() const override;
    /** Like toString(), with quotes around strings and datetimes, escapes in strings, braces around arrays.
     */
    String toMOF() const override;

    operator detail::SafeBool() const { return detail::safeBool(m_type != CIMDataType::CIMNULL); }
    bool operator!() const { return m_type == CIMDataType::CIMNULL; }

private:
    friend struct ValueAccess;
    enum Form { PLAIN, TEXT, SHARED };
    /** The active member of the union. */
    Form form() const {
        if (m_isArray)
            return SHARED;
        if (m_type == CIMDataType::STRING)
            return TEXT;
        return m_type == CIMDataType::DATETIME || m_type >= CIMDataType::REFERENCE ? SHARED : PLAIN;
    }
    void copy(const CIMValue& other);
    /** Moves the value of another into this null value. A byte-wise copy: strings and shared data are
     * pointers. */
    void take(CIMValue& other) noexcept {
        m_type = other.m_type;
        m_isArray = other.m_isArray;
        std::memcpy(m_plain, other.m_plain, sizeof m_plain);
        other.m_type = CIMDataType::CIMNULL;
        other.m_isArray = false;
    }
    void destroy() noexcept {
        if (form() == TEXT)
            m_text.~String();
        else if (form() == SHARED)
            m_shared.~Shared();
    }
    void requireValue() const;
    template <class T>
    void hold(const T& value);
    template <class T>
    void read(T& out) const;

    UInt8 m_type; // CIMDataType::Type; CIMNULL for the null value
    bool m_isArray;
    union {
        unsigned char m_plain[8]; // the bytes of a number, a boolean or a character
        String m_text;            // a single string
        detail::Shared<const detail::Counted> m_shared;
    };
};

inline bool operator==(const CIMValue& a, const CIMValue& b) {
    return a.equal(b);
}
inline bool operator!=(const CIMValue& a, const CIMValue& b) {
    return !a.equal(b);
}
/** An order for sorting: by type, then by text. */
OW_COMMON_API bool operator<(const CIMValue& a, const CIMValue& b);

} // namespace OpenWBEM
#endif

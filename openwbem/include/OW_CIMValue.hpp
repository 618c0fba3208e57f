#ifndef OW_CIMVALUE_HPP_INCLUDED
#define OW_CIMVALUE_HPP_INCLUDED
#include "OW_Array.hpp"
#include "OW_Bool.hpp"
#include "OW_CIMBase.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_Char16.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

/** A value of one CIM type, or an array of them; may be null. Copies share the data. */
class OW_COMMON_API CIMValue : public CIMBase {
public:
    struct Data;

    explicit CIMValue(CIMNULL_t);
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
    explicit CIMValue(const Char16& value);
    explicit CIMValue(const String& value);
    /** A string; a null pointer gives the empty string, not the null value. */
    explicit CIMValue(const char* value);
    explicit CIMValue(const CIMDateTime& value);
    explicit CIMValue(const CIMObjectPath& value);
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
    explicit CIMValue(const CIMInstanceArray& value);
    /** No other pointer becomes a boolean. */
    explicit CIMValue(const volatile void*) = delete;

    /**
     * Reads the value into out. Type and arrayness must be those of the value, else ValueCastException; the
     * one exception is a single sint64, which every numeric type takes, cut to its width.
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
    void get(CIMInstanceArray& out) const;

    bool isArray() const;
    /** Type of the value, of the elements for an array. */
    CIMDataType::Type getType() const;
    /** The type as a declaration: arrays are of any size. */
    CIMDataType getCIMDataType() const;
    /** Number of elements, 1 for a single value. */
    UInt32 getArraySize() const;

    void setNull() override;
    /**
     * The value as plain text, without quotes or escapes; the elements of an array joined by ","; "(null)"
     * for the null value. Reals have six significant digits. A single char16 is the one byte of its
     * low eight bits.
     */
    String toString() const override;

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_data)); }
    bool operator!() const { return !m_data; }

private:
    friend struct ObjectAccess;
    explicit CIMValue(detail::Shared<const Data> data);
    template <class T>
    void read(T& out) const;

    detail::Shared<const Data> m_data;
};

} // namespace OpenWBEM
#endif

#include "OW_CIMDataType.hpp"

#include "OW_CIMValue.hpp"

#include <string>

namespace OpenWBEM {
namespace {

// DSP0004, intrinsic data types. Embedded objects are declared as strings. A name maps to its first type.
struct TypeName {
    CIMDataType::Type type;
    const char* name;
};
const TypeName typeNames[] = {
    {CIMDataType::UINT8, "uint8"},       {CIMDataType::SINT8, "sint8"},
    {CIMDataType::UINT16, "uint16"},     {CIMDataType::SINT16, "sint16"},
    {CIMDataType::UINT32, "uint32"},     {CIMDataType::SINT32, "sint32"},
    {CIMDataType::UINT64, "uint64"},     {CIMDataType::SINT64, "sint64"},
    {CIMDataType::STRING, "string"},     {CIMDataType::EMBEDDEDCLASS, "string"},
    {CIMDataType::BOOLEAN, "boolean"},   {CIMDataType::EMBEDDEDINSTANCE, "string"},
    {CIMDataType::REAL32, "real32"},     {CIMDataType::REAL64, "real64"},
    {CIMDataType::DATETIME, "datetime"}, {CIMDataType::CHAR16, "char16"},
    {CIMDataType::REFERENCE, "REF"},
};

} // namespace

CIMDataType::CIMDataType()
    : CIMDataType(CIMNULL) {}

CIMDataType::CIMDataType(CIMNULL_t)
    : CIMDataType(CIMNULL) {}

CIMDataType::CIMDataType(Type type)
    : m_type(type)
    , m_size(1)
    , m_sizeRange(SIZE_SINGLE) {}

CIMDataType::CIMDataType(Type type, Int32 arraySize)
    : m_type(type)
    , m_size(arraySize < 1 ? -1 : arraySize)
    , m_sizeRange(arraySize < 1 ? SIZE_UNLIMITED : SIZE_LIMITED) {}

CIMDataType::CIMDataType(const CIMName& refClass)
    : m_type(REFERENCE)
    , m_size(1)
    , m_sizeRange(SIZE_SINGLE)
    , m_refClass(refClass) {}

bool CIMDataType::equals(const CIMDataType& other) const {
    return m_type == other.m_type && isArrayType() == other.isArrayType();
}

void CIMDataType::setNull() {
    *this = CIMDataType();
}

bool CIMDataType::setToArrayType(Int32 size) {
    if (!isSet())
        return false;
    *this = CIMDataType(m_type, size);
    return true;
}

bool CIMDataType::syncWithValue(const CIMValue& value) {
    if (!value)
        return false;
    if (!equals(value.getCIMDataType()))
        *this = value.getCIMDataType();
    return true;
}

String CIMDataType::toString() const {
    for (const TypeName& entry : typeNames)
        if (entry.type == m_type)
            return entry.name;
    return "** INVALID DATA TYPE IN CIMDATATYPE - toString **";
}

String CIMDataType::toMOF() const {
    return toString();
}

String CIMDataType::getArrayMOF() const {
    if (!isArrayType())
        return String();
    return m_sizeRange == SIZE_LIMITED ? String(("[" + std::to_string(m_size) + "]").c_str()) : String("[]");
}

bool CIMDataType::isNumericType(Type type) {
    return (type >= UINT8 && type <= SINT64) || type == REAL32 || type == REAL64;
}

CIMDataType::Type CIMDataType::strToSimpleType(const String& name) {
    for (const TypeName& entry : typeNames)
        if (name.equalsIgnoreCase(entry.name))
            return entry.type;
    return INVALID;
}

} // namespace OpenWBEM

#include "OW_CIMDataType.hpp"

namespace OpenWBEM {

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

String CIMDataType::toString() const {
    switch (m_type) {
    case UINT8:
        return "uint8";
    case SINT8:
        return "sint8";
    case UINT16:
        return "uint16";
    case SINT16:
        return "sint16";
    case UINT32:
        return "uint32";
    case SINT32:
        return "sint32";
    case UINT64:
        return "uint64";
    case SINT64:
        return "sint64";
    case STRING:
    case EMBEDDEDCLASS:
    case EMBEDDEDINSTANCE:
        return "string";
    case BOOLEAN:
        return "boolean";
    case REAL32:
        return "real32";
    case REAL64:
        return "real64";
    case DATETIME:
        return "datetime";
    case CHAR16:
        return "char16";
    case REFERENCE:
        return "REF";
    case CIMNULL:
    case MAXDATATYPE:
    case INVALID:
        break;
    }
    return "** INVALID DATA TYPE IN CIMDATATYPE - toString **";
}

} // namespace OpenWBEM

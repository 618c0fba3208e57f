#include "OW_CIMValue.hpp"

#include "OW_CIMValueCast.hpp"
#include "ValueData.hpp"
#include "ValueText.hpp"

#include <new>
#include <string>

namespace OpenWBEM {
namespace {

[[noreturn]] void throwTypeMismatch(const char* name) {
    const std::string message = std::string("CIMValue::CIMValueImpl::get - Value is not a ") + name;
    OW_THROW(ValueCastException, message.c_str());
}

} // namespace

CIMValue::CIMValue(const CIMValue& other)
    : CIMValue(CIMNULL) {
    copy(other);
}

CIMValue& CIMValue::operator=(const CIMValue& other) {
    return *this = CIMValue(other);
}

// Copies another value into this null value.
void CIMValue::copy(const CIMValue& other) {
    m_type = other.m_type;
    m_isArray = other.m_isArray;
    switch (form()) {
    case PLAIN:
        std::memcpy(m_plain, other.m_plain, sizeof m_plain);
        break;
    case TEXT:
        new (&m_text) String(other.m_text);
        break;
    case SHARED:
        new (&m_shared) detail::Shared<const detail::Counted>(other.m_shared);
        break;
    }
}

template <class T>
void CIMValue::hold(const T& value) {
    *this = ValueAccess::make<T>(value);
}

template <class T>
void CIMValue::read(T& out) const {
    requireValue();
    if (ValueAccess::holds<T>(*this)) {
        out = ValueAccess::content<T>(*this);
        return;
    }
    if constexpr (std::is_arithmetic_v<T>) {
        if (ValueAccess::holds<Int64>(*this)) {
            out = static_cast<T>(ValueAccess::content<Int64>(*this));
            return;
        }
    }
    throwTypeMismatch(TypeOf<T>::name);
}

CIMValue::CIMValue(bool value)
    : CIMValue(Bool(value)) {}
CIMValue::CIMValue(const char* value)
    : CIMValue(String(value)) {}

// One constructor, one get() and one toXxx() for each C++ type of a value.
#define OPENWBEM_VALUE_TYPE(PARAMETER, TYPE)                                                                 \
    CIMValue::CIMValue(PARAMETER value)                                                                      \
        : CIMValue(CIMNULL) {                                                                                \
        hold<TYPE>(value);                                                                                   \
    }                                                                                                        \
    void CIMValue::get(TYPE& out) const {                                                                    \
        read(out);                                                                                           \
    }
#define OPENWBEM_SMALL_TYPE(TYPE)                                                                            \
    OPENWBEM_VALUE_TYPE(TYPE, TYPE)                                                                          \
    TYPE CIMValue::to##TYPE() const {                                                                        \
        TYPE value = 0;                                                                                      \
        read(value);                                                                                         \
        return value;                                                                                        \
    }
#define OPENWBEM_LARGE_TYPE(TYPE)                                                                            \
    OPENWBEM_VALUE_TYPE(const TYPE&, TYPE)                                                                   \
    TYPE CIMValue::to##TYPE() const {                                                                        \
        TYPE value;                                                                                          \
        read(value);                                                                                         \
        return value;                                                                                        \
    }

OPENWBEM_VALUE_TYPE(Bool, Bool)
OPENWBEM_SMALL_TYPE(UInt8)
OPENWBEM_SMALL_TYPE(Int8)
OPENWBEM_SMALL_TYPE(UInt16)
OPENWBEM_SMALL_TYPE(Int16)
OPENWBEM_SMALL_TYPE(UInt32)
OPENWBEM_SMALL_TYPE(Int32)
OPENWBEM_SMALL_TYPE(UInt64)
OPENWBEM_SMALL_TYPE(Int64)
OPENWBEM_SMALL_TYPE(Real32)
OPENWBEM_SMALL_TYPE(Real64)
OPENWBEM_LARGE_TYPE(Char16)
OPENWBEM_VALUE_TYPE(const String&, String)
OPENWBEM_LARGE_TYPE(CIMDateTime)
OPENWBEM_LARGE_TYPE(CIMObjectPath)
OPENWBEM_LARGE_TYPE(CIMClass)
OPENWBEM_LARGE_TYPE(CIMInstance)
OPENWBEM_LARGE_TYPE(BoolArray)
OPENWBEM_LARGE_TYPE(UInt8Array)
OPENWBEM_LARGE_TYPE(Int8Array)
OPENWBEM_LARGE_TYPE(UInt16Array)
OPENWBEM_LARGE_TYPE(Int16Array)
OPENWBEM_LARGE_TYPE(UInt32Array)
OPENWBEM_LARGE_TYPE(Int32Array)
OPENWBEM_LARGE_TYPE(UInt64Array)
OPENWBEM_LARGE_TYPE(Int64Array)
OPENWBEM_LARGE_TYPE(Real32Array)
OPENWBEM_LARGE_TYPE(Real64Array)
OPENWBEM_LARGE_TYPE(Char16Array)
OPENWBEM_LARGE_TYPE(StringArray)
OPENWBEM_LARGE_TYPE(CIMDateTimeArray)
OPENWBEM_LARGE_TYPE(CIMObjectPathArray)
OPENWBEM_LARGE_TYPE(CIMClassArray)
OPENWBEM_LARGE_TYPE(CIMInstanceArray)

bool CIMValue::toBool() const {
    Bool value;
    read(value);
    return value;
}

void CIMValue::requireValue() const {
    if (!*this)
        detail::throwNullReference();
}

bool CIMValue::isArray() const {
    requireValue();
    return m_isArray;
}

CIMDataType::Type CIMValue::getType() const {
    requireValue();
    return static_cast<CIMDataType::Type>(m_type);
}

CIMDataType CIMValue::getCIMDataType() const {
    return isArray() ? CIMDataType(getType(), -1) : CIMDataType(getType());
}

UInt32 CIMValue::getArraySize() const {
    return ValueAccess::visit(*this, [](const auto& content) -> UInt32 {
        if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray)
            return static_cast<UInt32>(content.size());
        else
            return 1;
    });
}

bool CIMValue::isNumericType() const {
    return CIMDataType::isNumericType(getType());
}

bool CIMValue::sameType(const CIMValue& other) const {
    return getType() == other.getType() && isArray() == other.isArray();
}

bool CIMValue::equal(const CIMValue& other) const {
    if (!*this || !other)
        return !*this && !other;
    if (!sameType(other))
        return false;
    if (m_type == CIMDataType::EMBEDDEDCLASS || m_type == CIMDataType::EMBEDDEDINSTANCE)
        return toString() == other.toString();
    return ValueAccess::visit(*this, [&other](const auto& content) -> bool {
        return content == ValueAccess::content<std::decay_t<decltype(content)>>(other);
    });
}

bool operator<(const CIMValue& a, const CIMValue& b) {
    if (!a || !b || a.getType() != b.getType())
        return (a ? a.getType() : 0) < (b ? b.getType() : 0);
    return a.toString() < b.toString();
}

CIMValue CIMValue::createSimpleValue(const String& typeName, const String& text) {
    const CIMDataType type(CIMDataType::strToSimpleType(typeName));
    return type ? CIMValueCast::castValueToDataType(CIMValue(text), type) : CIMValue(CIMNULL);
}

void CIMValue::setNull() {
    destroy();
    m_type = CIMDataType::CIMNULL;
    m_isArray = false;
}

String CIMValue::toString() const {
    if (!*this)
        return "(null)";
    if (form() == TEXT)
        return m_text;
    std::string text;
    ValueAccess::visit(*this, [&text](const auto& content) {
        if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray) {
            const char* separator = "";
            for (const auto& element : content) {
                text += separator;
                appendElementText(text, element);
                separator = ",";
            }
        } else {
            appendText(text, content);
        }
    });
    return stringOf(text);
}

} // namespace OpenWBEM

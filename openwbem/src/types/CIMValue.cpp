#include "OW_CIMValue.hpp"

#include "OW_CIMValueCast.hpp"
#include "ObjectData.hpp"
#include "ValueText.hpp"

#include <string>
#include <type_traits>

namespace OpenWBEM {
namespace {

template <class T>
std::shared_ptr<const CIMValue::Data> share(const T& content) {
    return std::make_shared<const CIMValue::Data>(CIMValue::Data{content});
}

[[noreturn]] void throwWrongType(const char* word) {
    const std::string message = std::string("CIMValue::CIMValueImpl::get - Value is not a ") + word;
    OW_THROW(ValueCastException, message.c_str());
}

} // namespace

CIMValue::CIMValue(CIMNULL_t) {}
CIMValue::CIMValue(detail::Shared<const Data> data)
    : m_data(std::move(data)) {}
CIMValue::CIMValue(bool value)
    : m_data(share(Bool(value))) {}
CIMValue::CIMValue(const char* value)
    : m_data(share(String(value))) {}

// One constructor and one get() for every type that a value can hold.
#define OPENWBEM_VALUE_TYPE(PARAMETER, TYPE)                                                                 \
    CIMValue::CIMValue(PARAMETER value)                                                                      \
        : m_data(share(value)) {}                                                                            \
    void CIMValue::get(TYPE& out) const {                                                                    \
        read(out);                                                                                           \
    }
#define OPENWBEM_SMALL_TYPE(TYPE) OPENWBEM_VALUE_TYPE(TYPE, TYPE)
#define OPENWBEM_LARGE_TYPE(TYPE) OPENWBEM_VALUE_TYPE(const TYPE&, TYPE)

template <class T>
void CIMValue::read(T& out) const {
    const auto& content = m_data->content;
    if (const T* const own = std::get_if<T>(&content)) {
        out = *own;
        return;
    }
    if constexpr (std::is_arithmetic_v<T>) {
        if (const Int64* const number = std::get_if<Int64>(&content)) {
            out = static_cast<T>(*number);
            return;
        }
    }
    throwWrongType(TypeOf<T>::word);
}

OPENWBEM_SMALL_TYPE(Bool)
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
OPENWBEM_LARGE_TYPE(String)
OPENWBEM_LARGE_TYPE(CIMDateTime)
OPENWBEM_LARGE_TYPE(CIMObjectPath)
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
OPENWBEM_LARGE_TYPE(CIMInstanceArray)

bool CIMValue::isArray() const {
    return std::visit([](const auto& content) { return TypeOf<std::decay_t<decltype(content)>>::isArray; },
                      m_data->content);
}

CIMDataType::Type CIMValue::getType() const {
    return std::visit([](const auto& content) { return TypeOf<std::decay_t<decltype(content)>>::type; },
                      m_data->content);
}

CIMDataType CIMValue::getCIMDataType() const {
    return isArray() ? CIMDataType(getType(), -1) : CIMDataType(getType());
}

UInt32 CIMValue::getArraySize() const {
    return std::visit(
        [](const auto& content) -> UInt32 {
            if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray)
                return static_cast<UInt32>(content.size());
            else
                return 1;
        },
        m_data->content);
}

void CIMValue::setNull() {
    m_data.reset();
}

String CIMValue::toString() const {
    if (!m_data)
        return "(null)";
    if (const String* const own = std::get_if<String>(&m_data->content))
        return *own;
    std::string text;
    std::visit(
        [&text](const auto& content) {
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
        },
        m_data->content);
    return String(text.data(), text.size());
}

} // namespace OpenWBEM

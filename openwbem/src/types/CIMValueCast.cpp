#include "OW_CIMValueCast.hpp"

#include "OW_CIMDataType.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMValue.hpp"
#include "ValueData.hpp"

#include <string>
#include <type_traits>

namespace OpenWBEM {
namespace {

bool isPlainType(CIMDataType::Type type) {
    return CIMDataType::isNumericType(type) || type == CIMDataType::BOOLEAN || type == CIMDataType::CHAR16;
}

bool canCast(CIMDataType::Type from, CIMDataType::Type to) {
    return from == to || from == CIMDataType::STRING || to == CIMDataType::STRING ||
           (isPlainType(from) && isPlainType(to));
}

// The elements of an array, or a single value as one element.
CIMValueArray elementsOf(const CIMValue& value) {
    return ValueAccess::visit(value, [&value](const auto& content) {
        CIMValueArray elements;
        if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray) {
            elements.reserve(content.size());
            for (const auto& element : content)
                elements.push_back(CIMValue(element));
        } else {
            elements.push_back(value);
        }
        return elements;
    });
}

// Converts one element to a T by parsing its text, unless it is a T.
template <class T, class Read>
T convert(const CIMValue& element, Read read) {
    if (element.getType() != TypeOf<T>::type)
        return T(read(element.toString()));
    T same;
    element.get(same);
    return same;
}

// An array of all elements, or the first element alone.
template <class T, class Read>
CIMValue build(const CIMValueArray& elements, bool isArray, Read read) {
    if (!isArray)
        return CIMValue(convert<T>(elements[0], read));
    Array<T> converted;
    converted.reserve(elements.size());
    for (const CIMValue& element : elements)
        converted.push_back(convert<T>(element, read));
    return CIMValue(converted);
}

CIMValue build(const CIMValueArray& elements, const CIMDataType& type) {
    const bool isArray = type.isArrayType();
    switch (type.getType()) {
    case CIMDataType::UINT8:
        return build<UInt8>(elements, isArray, [](const String& text) { return text.toUInt8(); });
    case CIMDataType::SINT8:
        return build<Int8>(elements, isArray, [](const String& text) { return text.toInt8(); });
    case CIMDataType::UINT16:
        return build<UInt16>(elements, isArray, [](const String& text) { return text.toUInt16(); });
    case CIMDataType::SINT16:
        return build<Int16>(elements, isArray, [](const String& text) { return text.toInt16(); });
    case CIMDataType::UINT32:
        return build<UInt32>(elements, isArray, [](const String& text) { return text.toUInt32(); });
    case CIMDataType::SINT32:
        return build<Int32>(elements, isArray, [](const String& text) { return text.toInt32(); });
    case CIMDataType::UINT64:
        return build<UInt64>(elements, isArray, [](const String& text) { return text.toUInt64(); });
    case CIMDataType::SINT64:
        return build<Int64>(elements, isArray, [](const String& text) { return text.toInt64(); });
    case CIMDataType::REAL32:
        return build<Real32>(elements, isArray, [](const String& text) { return text.toReal32(); });
    case CIMDataType::REAL64:
        return build<Real64>(elements, isArray, [](const String& text) { return text.toReal64(); });
    case CIMDataType::BOOLEAN:
        return build<Bool>(elements, isArray, [](const String& text) { return text.toBool(); });
    case CIMDataType::CHAR16:
        return build<Char16>(elements, isArray, [](const String& text) { return text.toChar16(); });
    case CIMDataType::DATETIME:
        return build<CIMDateTime>(elements, isArray, [](const String& text) { return CIMDateTime(text); });
    case CIMDataType::REFERENCE:
        return build<CIMObjectPath>(elements, isArray, &CIMObjectPath::parse);
    default: // STRING: the caller excludes all other types
        return build<String>(elements, isArray, [](const String& text) { return text; });
    }
}

} // namespace

CIMValue CIMValueCast::castValueToDataType(const CIMValue& value, const CIMDataType& type) {
    if (!type || !value)
        return CIMValue(CIMNULL);
    if (type.equals(value.getCIMDataType()))
        return value;
    if (type.getType() > CIMDataType::REFERENCE) {
        const std::string message = "Invalid to datatype: " + std::to_string(type.getType());
        OW_THROW(ValueCastException, message.c_str());
    }
    if (!canCast(value.getType(), type.getType())) {
        const String message = "Failed to convert \"" + value.toString() + "\" to " + type.toString();
        OW_THROWCIMMSG(CIMException::FAILED, message.c_str());
    }
    try {
        return build(elementsOf(value), type);
    } catch (const StringConversionException& e) {
        OW_THROWCIM_SUBEX(CIMException::FAILED, e);
    }
}

} // namespace OpenWBEM

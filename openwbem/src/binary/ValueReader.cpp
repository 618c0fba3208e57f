// Single values and arrays.
#include "OW_IOException.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "types/ValueData.hpp"
#include "types/ValueText.hpp"

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace OpenWBEM {
namespace binary {

template <class T>
T ObjectReader::element() {
    if constexpr (std::is_same_v<T, Bool>)
        return m_in.boolean();
    else if constexpr (std::is_same_v<T, Char16>)
        return m_in.u16();
    else if constexpr (std::is_same_v<T, String>)
        return m_in.string();
    else if constexpr (std::is_same_v<T, CIMObjectPath>)
        return objectPath();
    else if constexpr (std::is_same_v<T, CIMClass>)
        return classObject();
    else if constexpr (std::is_same_v<T, CIMInstance>)
        return instance();
    else if constexpr (sizeof(T) == 1)
        return static_cast<T>(m_in.u8());
    else if constexpr (sizeof(T) == 2)
        return static_cast<T>(m_in.u16());
    else if constexpr (sizeof(T) == 4)
        return static_cast<T>(m_in.u32());
    else
        return static_cast<T>(m_in.u64());
}

template <>
Real64 ObjectReader::element<Real64>() {
    const std::string_view text = m_in.text();
    Real64 number = 0;
    if (!parseReal(text.data(), text.size(), number)) {
        const std::string message = "Unable to convert \"" + std::string(text) + "\" into Real64";
        OW_THROW(StringConversionException, message.c_str());
    }
    return number;
}

template <>
Real32 ObjectReader::element<Real32>() {
    const Real64 number = element<Real64>();
    const Real64 largest = std::numeric_limits<Real32>::max();
    if (std::abs(number) > largest) // the conversion would be undefined
        return static_cast<Real32>(std::copysign(std::numeric_limits<Real32>::infinity(), number));
    return static_cast<Real32>(number);
}

template <>
CIMDateTime ObjectReader::element<CIMDateTime>() {
    CIMDateTime time;
    time.setYear(m_in.u16());
    time.setMonth(m_in.u8());
    time.setDays(m_in.u32());
    time.setHours(m_in.u8());
    time.setMinutes(m_in.u8());
    time.setSeconds(m_in.u8());
    time.setMicroSeconds(m_in.u32());
    time.setUtc(static_cast<Int16>(m_in.u16()));
    time.setInterval(m_in.boolean());
    return time;
}

template <class T>
CIMValue ObjectReader::valueOf(bool isArray) {
    if (!isArray)
        return ValueAccess::make(element<T>());
    return ValueAccess::make(array<T>([this] { return element<T>(); }));
}

CIMValue ObjectReader::value() {
    m_in.expect(sig::value);
    const UInt32 type = m_in.number();
    const bool isArray = m_in.boolean();
    switch (type) {
    case CIMDataType::UINT8:
        return valueOf<UInt8>(isArray);
    case CIMDataType::SINT8:
        return valueOf<Int8>(isArray);
    case CIMDataType::UINT16:
        return valueOf<UInt16>(isArray);
    case CIMDataType::SINT16:
        return valueOf<Int16>(isArray);
    case CIMDataType::UINT32:
        return valueOf<UInt32>(isArray);
    case CIMDataType::SINT32:
        return valueOf<Int32>(isArray);
    case CIMDataType::UINT64:
        return valueOf<UInt64>(isArray);
    case CIMDataType::SINT64:
        return valueOf<Int64>(isArray);
    case CIMDataType::STRING:
        return valueOf<String>(isArray);
    case CIMDataType::BOOLEAN:
        return valueOf<Bool>(isArray);
    case CIMDataType::REAL32:
        return valueOf<Real32>(isArray);
    case CIMDataType::REAL64:
        return valueOf<Real64>(isArray);
    case CIMDataType::DATETIME:
        return valueOf<CIMDateTime>(isArray);
    case CIMDataType::CHAR16:
        return valueOf<Char16>(isArray);
    case CIMDataType::REFERENCE:
        return valueOf<CIMObjectPath>(isArray);
    case CIMDataType::EMBEDDEDCLASS:
        return valueOf<CIMClass>(isArray);
    case CIMDataType::EMBEDDEDINSTANCE:
        return valueOf<CIMInstance>(isArray);
    default:
        OW_THROW(IOException, ("Received a value of unknown type " + std::to_string(type)).c_str());
    }
}

} // namespace binary
} // namespace OpenWBEM

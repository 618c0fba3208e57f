#include "binary/ObjectReader.hpp"

#include "OW_IOException.hpp"
#include "OW_URL.hpp"
#include "binary/Protocol.hpp"
#include "types/ObjectData.hpp"
#include "types/ValueText.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace OpenWBEM {
namespace binary {
namespace {

const std::size_t smallestProperty = 13; // a property without name, origin, qualifier and value

CIMDataType::Type typeOf(UInt32 number) {
    if (number > CIMDataType::EMBEDDEDINSTANCE && number != CIMDataType::INVALID)
        OW_THROW(IOException, ("Received unknown data type " + std::to_string(number)).c_str());
    return static_cast<CIMDataType::Type>(number);
}

// The least number of bytes that an element of a type takes.
template <class T>
constexpr std::size_t smallestElement() {
    if constexpr (std::is_integral_v<T>)
        return sizeof(T);
    else if constexpr (std::is_same_v<T, Char16>)
        return 2;
    else if constexpr (std::is_same_v<T, CIMInstance>)
        return 5; // no name, keys, properties and qualifiers
    else if constexpr (std::is_same_v<T, CIMObjectPath>)
        return 7; // all empty
    else if constexpr (std::is_same_v<T, CIMDateTime>)
        return 17;
    else
        return 1;
}

// Memory for elements that are announced. A count is believed up to here only: arrays may hold arrays, each
// of which could announce as many elements as the rest of the message has room for.
template <class T>
void reserve(Array<T>& elements, UInt32 count) {
    elements.reserve(std::min<UInt32>(count, 1024));
}

} // namespace

// Counts how deep objects hold objects, and refuses what is too deep.
class ObjectReader::Nesting {
public:
    explicit Nesting(unsigned& depth)
        : m_depth(depth) {
        if (m_depth == maximumDepth)
            OW_THROW(IOException, "Failed reading data: objects are nested too deeply");
        ++m_depth;
    }
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    unsigned& m_depth;
};

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
        return ObjectAccess::value(element<T>());
    const UInt32 size = m_in.count(smallestElement<T>());
    Array<T> elements;
    reserve(elements, size);
    for (UInt32 i = 0; i < size; ++i)
        elements.push_back(element<T>());
    return ObjectAccess::value(std::move(elements));
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
    case CIMDataType::EMBEDDEDINSTANCE:
        return valueOf<CIMInstance>(isArray);
    default:
        OW_THROW(IOException, ("Received a value of unknown type " + std::to_string(type)).c_str());
    }
}

CIMInstance ObjectReader::instance() {
    if (m_depth == 0)
        m_nextName = 0;
    const Nesting nesting(m_depth);
    const bool isVersioned = m_in.remaining() > 0 && m_in.peek() == sig::versionedInstance;
    const UInt32 received = version(sig::instance, sig::versionedInstance, highestInstanceVersion);
    CIMInstance::Data data;
    data.className = name();
    data.keys = properties();
    data.properties = properties();
    skipQualifiers();
    if (isVersioned)
        m_in.text(); // language
    if (received >= 2)
        m_in.text(); // namespace
    return ObjectAccess::instance(std::move(data));
}

CIMObjectPath ObjectReader::objectPath() {
    const Nesting nesting(m_depth);
    CIMObjectPath::Data data;
    m_in.expect(sig::objectPath);
    m_in.expect(sig::nameSpace);
    data.nameSpace = m_in.string();
    m_in.expect(sig::url);
    const String url = m_in.string();
    if (!url.empty()) {
        const URL parts(url);
        data.protocol = parts.scheme;
        data.host = parts.host;
        data.port = parts.port;
    }
    data.className = name();
    data.keys = properties();
    return ObjectAccess::path(std::move(data));
}

CIMPropertyArray ObjectReader::properties() {
    const UInt32 size = m_in.count(smallestProperty);
    CIMPropertyArray all;
    reserve(all, size);
    for (UInt32 i = 0; i < size; ++i)
        all.push_back(property());
    return all;
}

CIMProperty ObjectReader::property() {
    CIMProperty::Data data;
    m_in.expect(sig::property);
    data.name = name();
    m_in.text(); // overridden property
    m_in.text(); // class of origin
    data.type = dataType();
    m_in.number();  // array size; says nothing about arrayness
    m_in.boolean(); // propagated
    skipQualifiers();
    if (m_in.boolean())
        data.value = value();
    return ObjectAccess::property(std::move(data));
}

CIMDataType ObjectReader::dataType() {
    m_in.expect(sig::dataType);
    const CIMDataType::Type type = typeOf(m_in.number());
    const Int32 size = static_cast<Int32>(m_in.number());
    const Int32 sizeRange = static_cast<Int32>(m_in.number());
    return ObjectAccess::dataType(type, size, sizeRange, m_in.string());
}

void ObjectReader::skipQualifiers() {
    const UInt32 size = m_in.count(1);
    for (UInt32 i = 0; i < size; ++i)
        skipQualifier();
}

void ObjectReader::skipQualifier() {
    const bool hasLanguage = m_in.peek() == sig::versionedQualifier;
    version(sig::qualifier, sig::versionedQualifier, highestQualifierVersion);
    m_in.text(); // name
    if (m_in.boolean())
        value();
    m_in.expect(sig::qualifierType);
    m_in.text(); // name of the type
    dataType();
    skipNumbers(); // scopes
    skipNumbers(); // flavors of the type
    if (m_in.boolean())
        value();
    m_in.boolean(); // propagated
    skipNumbers();  // flavors
    if (hasLanguage)
        m_in.text();
}

void ObjectReader::skipNumbers() {
    const UInt32 size = m_in.count(1);
    for (UInt32 i = 0; i < size; ++i)
        m_in.number();
}

UInt32 ObjectReader::version(UInt8 unversioned, UInt8 versioned, UInt32 highest) {
    const UInt8 got = m_in.u8();
    if (got == unversioned)
        return 0;
    if (got != versioned) {
        const std::string message =
            std::string("Signature does not match. In CIMBase::readSig. signature read: ") +
            static_cast<char>(got) + ", expected: " + static_cast<char>(unversioned) + " or " +
            static_cast<char>(versioned);
        OW_THROW(IOException, message.c_str());
    }
    const UInt32 number = m_in.number();
    if (number > highest) {
        const std::string message = "CIMBase::readSig. Unknown version " + std::to_string(number) +
                                    ", only versions <= " + std::to_string(highest) + " are handled.";
        OW_THROW(IOException, message.c_str());
    }
    return number;
}

CIMName ObjectReader::name() {
    const std::string_view text = m_in.text();
    if (m_nextName == m_names.size())
        m_names.emplace_back();
    CIMName& known = m_names[m_nextName++];
    const String knownText = known.toString();
    if (text != std::string_view(knownText.c_str(), knownText.length()))
        known = String(text.data(), text.size());
    return known;
}

} // namespace binary
} // namespace OpenWBEM

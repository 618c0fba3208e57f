#ifndef TESTS_OPENWBEM_RANDOM_OBJECTS_HPP
#define TESTS_OPENWBEM_RANDOM_OBJECTS_HPP
#include "types/ObjectData.hpp"
#include "types/ValueData.hpp"

#include <limits>
#include <random>
#include <string>
#include <type_traits>

namespace random_objects {

using namespace OpenWBEM;

/** Creates random objects, the same in every run. */
class RandomObjects {
public:
    /** The protocol. Texts for the binary protocol contain any bytes except NUL; their lengths are close to
     * the limits of the encodings of lengths. Texts for CIM-XML consist of characters. Dates for CIM-XML have
     * an exact text form. */
    enum class Kind { binary, xml };
    explicit RandomObjects(Kind kind)
        : m_kind(kind) {}

    CIMInstance instance(unsigned depth = 0) {
        auto* const data = new CIMInstance::Data;
        const CIMInstance instance = ObjectAccess::object<CIMInstance>(data);
        data->className = name();
        data->keys = properties(2, depth);
        data->properties = properties(8, depth);
        data->qualifiers = qualifiers(depth);
        data->language = string(4);
        return instance;
    }

    CIMValue value(CIMDataType::Type type, bool isArray, unsigned depth = 0) {
        switch (type) {
        case CIMDataType::UINT8:
            return valueOf<UInt8>(isArray, depth);
        case CIMDataType::SINT8:
            return valueOf<Int8>(isArray, depth);
        case CIMDataType::UINT16:
            return valueOf<UInt16>(isArray, depth);
        case CIMDataType::SINT16:
            return valueOf<Int16>(isArray, depth);
        case CIMDataType::UINT32:
            return valueOf<UInt32>(isArray, depth);
        case CIMDataType::SINT32:
            return valueOf<Int32>(isArray, depth);
        case CIMDataType::UINT64:
            return valueOf<UInt64>(isArray, depth);
        case CIMDataType::SINT64:
            return valueOf<Int64>(isArray, depth);
        case CIMDataType::BOOLEAN:
            return valueOf<Bool>(isArray, depth);
        case CIMDataType::REAL32:
            return valueOf<Real32>(isArray, depth);
        case CIMDataType::REAL64:
            return valueOf<Real64>(isArray, depth);
        case CIMDataType::DATETIME:
            return valueOf<CIMDateTime>(isArray, depth);
        case CIMDataType::CHAR16:
            return valueOf<Char16>(isArray, depth);
        case CIMDataType::REFERENCE:
            return valueOf<CIMObjectPath>(isArray, depth);
        case CIMDataType::EMBEDDEDCLASS:
            return valueOf<CIMClass>(isArray, depth);
        case CIMDataType::EMBEDDEDINSTANCE:
            return valueOf<CIMInstance>(isArray, depth);
        default:
            return valueOf<String>(isArray, depth);
        }
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }
    bool maybe() { return below(2) == 0; }

    String string(unsigned length) { return m_kind == Kind::xml ? characters(length) : bytes(length); }

    String bytes(unsigned length) {
        static const unsigned lengths[] = {127, 128, 255, 256, 65535, 65536, 65537};
        const unsigned size = below(200) == 0 ? lengths[below(7)] : below(length + 1);
        std::string text(size, '\0');
        for (char& c : text)
            c = static_cast<char>(1 + below(255));
        return String(text.data(), text.size());
    }

    String characters(unsigned length) {
        static const char* const some[] = {"a", "Z",   "0",  " ",  "&",  "<",        ">",           "\"",
                                           "'", "]]>", "\t", "\n", "\r", "\xc3\xa9", "\xe2\x82\xac"};
        std::string text;
        for (unsigned i = below(length + 1); i > 0; --i)
            text += some[below(15)];
        return String(text.data(), text.size());
    }

    CIMName name() { return "x" + string(20); }

    template <class T>
    T element(unsigned depth) {
        if constexpr (std::is_floating_point_v<T>)
            return (static_cast<T>(below(4000)) - 2000) / 4; // exact in six digits
        else if constexpr (std::is_integral_v<T>)
            return maybe() ? static_cast<T>(m_random()) : std::numeric_limits<T>::min();
        else if constexpr (std::is_same_v<T, Bool>)
            return maybe();
        else if constexpr (std::is_same_v<T, Char16>)
            return Char16(static_cast<UInt16>(m_kind == Kind::xml ? ' ' + below(0xD700) : m_random()));
        else if constexpr (std::is_same_v<T, String>)
            return string(60);
        else if constexpr (std::is_same_v<T, CIMDateTime>)
            return dateTime();
        else if constexpr (std::is_same_v<T, CIMObjectPath>)
            return path(depth + 1);
        else if constexpr (std::is_same_v<T, CIMClass>)
            return classObject(depth + 1);
        else
            return instance(depth + 1);
    }

    template <class T>
    CIMValue valueOf(bool isArray, unsigned depth) {
        if (!isArray)
            return ValueAccess::make(element<T>(depth));
        Array<T> all;
        for (unsigned i = below(4); i > 0; --i)
            all.push_back(element<T>(depth));
        return ValueAccess::make(all);
    }

    CIMDateTime dateTime() {
        const bool isAny = m_kind == Kind::binary;
        const auto upTo = [this, isAny](unsigned most) {
            return isAny ? static_cast<unsigned>(m_random()) : below(most + 1);
        };
        CIMDateTime time;
        time.setInterval(maybe());
        time.setYear(static_cast<UInt16>(isAny || !time.isInterval() ? upTo(9999) : 0));
        time.setMonth(static_cast<UInt8>(isAny || !time.isInterval() ? upTo(12) : 0));
        time.setDays(upTo(31));
        time.setHours(static_cast<UInt8>(upTo(23)));
        time.setMinutes(static_cast<UInt8>(upTo(59)));
        time.setSeconds(static_cast<UInt8>(upTo(59)));
        time.setMicroSeconds(upTo(999999));
        time.setUtc(static_cast<Int16>(isAny || !time.isInterval() ? upTo(720) : 0));
        return time;
    }

    CIMObjectPath path(unsigned depth) {
        CIMObjectPath path(name(), "root/cimv2");
        path.setHost("some.host");
        path.setKeys(m_kind == Kind::xml ? stringKeys() : properties(3, depth));
        return path;
    }

    // In CIM-XML, keys are strings, numbers or booleans.
    CIMPropertyArray stringKeys() {
        CIMPropertyArray all;
        for (unsigned i = below(4); i > 0; --i)
            all.push_back(CIMProperty(name(), CIMValue(string(20))));
        return all;
    }

    CIMClass classObject(unsigned depth) {
        auto* const data = new CIMClass::Data;
        const CIMClass object = ObjectAccess::object<CIMClass>(data);
        data->name = name();
        data->superClass = name();
        data->isAssociation = maybe();
        data->isKeyed = maybe();
        data->qualifiers = qualifiers(depth);
        data->properties = properties(3, depth);
        Method method;
        method.name = name();
        method.returnType = CIMDataType(CIMDataType::UINT32);
        method.parameters.push_back(Parameter{name(), CIMDataType(name()), qualifiers(depth)});
        data->methods.push_back(method);
        return object;
    }

    CIMPropertyArray properties(unsigned most, unsigned depth) {
        CIMPropertyArray all;
        for (unsigned i = below(most + 1); i > 0; --i)
            all.push_back(property(depth));
        return all;
    }

    CIMDataType::Type type(unsigned depth) {
        const unsigned types = depth < 2 ? CIMDataType::EMBEDDEDINSTANCE : CIMDataType::CHAR16;
        return static_cast<CIMDataType::Type>(1 + below(types));
    }

    CIMProperty property(unsigned depth) {
        auto* const data = new Declaration;
        const detail::Shared<Declaration> declaration(data);
        const CIMDataType::Type kind = type(depth);
        const bool isArray = maybe();
        data->name = name();
        data->overridden = name();
        data->originClass = name();
        data->type = isArray ? CIMDataType(kind, static_cast<Int32>(below(5))) : CIMDataType(kind);
        data->arraySize = static_cast<Int32>(m_random());
        data->propagated = maybe();
        data->qualifiers = qualifiers(depth);
        return ObjectAccess::property(declaration,
                                      below(4) == 0 ? CIMValue(CIMNULL) : value(kind, isArray, depth));
    }

    QualifierArray qualifiers(unsigned depth) {
        QualifierArray all;
        for (unsigned i = depth < 2 ? below(3) : 0; i > 0; --i) {
            Qualifier qualifier;
            qualifier.name = name();
            qualifier.value = value(CIMDataType::BOOLEAN, maybe());
            qualifier.typeName = name();
            qualifier.type = CIMDataType(CIMDataType::BOOLEAN);
            qualifier.scopes.push_back(static_cast<Int32>(below(12)));
            qualifier.flavors.push_back(static_cast<Int32>(below(6)));
            qualifier.propagated = maybe();
            qualifier.language = string(3);
            all.push_back(qualifier);
        }
        return all;
    }

    const Kind m_kind;
    std::mt19937 m_random{20261121};
};

} // namespace random_objects
#endif

// What the encoder writes the decoder reads back, for objects made at random under a fixed seed.
#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include "PieceSource.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/ObjectWriter.hpp"
#include "types/ObjectData.hpp"
#include "types/ValueData.hpp"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

using namespace OpenWBEM;

class Generator {
public:
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

    String string(unsigned length) {
        // Lengths on both sides of the borders of the wire's length field.
        static const unsigned lengths[] = {127, 128, 255, 256, 65535, 65536, 65537};
        const unsigned size = below(200) == 0 ? lengths[below(7)] : below(length + 1);
        std::string text(size, '\0');
        for (char& c : text)
            c = static_cast<char>(1 + below(255));
        return String(text.data(), text.size());
    }
    CIMName name() { return string(20); }

    template <class T>
    T element(unsigned depth) {
        if constexpr (std::is_floating_point_v<T>)
            return (static_cast<T>(below(4000)) - 2000) / 4; // exact in six digits
        else if constexpr (std::is_integral_v<T>)
            return maybe() ? static_cast<T>(m_random()) : std::numeric_limits<T>::min();
        else if constexpr (std::is_same_v<T, Bool>)
            return maybe();
        else if constexpr (std::is_same_v<T, Char16>)
            return Char16(static_cast<UInt16>(m_random()));
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
        CIMDateTime time;
        time.setInterval(maybe());
        time.setYear(static_cast<UInt16>(m_random()));
        time.setMonth(static_cast<UInt8>(m_random()));
        time.setDays(static_cast<UInt32>(m_random()));
        time.setHours(static_cast<UInt8>(m_random()));
        time.setMinutes(static_cast<UInt8>(m_random()));
        time.setSeconds(static_cast<UInt8>(m_random()));
        time.setMicroSeconds(static_cast<UInt32>(m_random()));
        time.setUtc(static_cast<Int16>(m_random()));
        return time;
    }

    CIMObjectPath path(unsigned depth) {
        CIMObjectPath path(name(), "root/cimv2");
        path.setHost("some.host");
        path.setKeys(properties(3, depth));
        return path;
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

    std::mt19937 m_random{20261121};
};

std::string encode(const CIMInstance& instance) {
    binary::Writer out;
    binary::write(out, instance);
    return out.release();
}

TEST(RoundTrip, GivesBackEveryTypeOfValue) {
    Generator generator;
    for (int type = CIMDataType::UINT8; type <= CIMDataType::EMBEDDEDINSTANCE; ++type) {
        for (int i = 0; i < 200; ++i) {
            const CIMValue value = generator.value(static_cast<CIMDataType::Type>(type), i % 2 == 0);
            binary::Writer out;
            binary::write(out, value);
            binary::Reader in(out.bytes().data(), out.bytes().size());
            binary::ObjectReader objects(in);
            const CIMValue back = objects.value();
            EXPECT_TRUE(in.atEnd());
            ASSERT_EQ(type, back.getType());
            EXPECT_EQ(value.isArray(), back.isArray());
            EXPECT_EQ(value.getArraySize(), back.getArraySize());
            EXPECT_EQ(value.toString(), back.toString());
            EXPECT_TRUE(value == back);
        }
    }
}

TEST(RoundTrip, GivesBackEveryPartOfAnInstance) {
    Generator generator;
    for (int i = 0; i < 500; ++i) {
        const std::string bytes = encode(generator.instance());
        binary::Reader in(bytes.data(), bytes.size());
        EXPECT_TRUE(bytes == encode(binary::ObjectReader(in).instance())) << i;
        EXPECT_TRUE(in.atEnd()) << i;
    }
}

TEST(RoundTrip, DoesNotDependOnHowTheBytesCome) {
    Generator generator;
    std::string bytes;
    for (int i = 0; i < 20; ++i) {
        const std::string one = encode(generator.instance());
        bytes += one + one; // the second one's declarations are recognised
    }
    for (const std::size_t piece : {1U, 7U, 1000U}) {
        PieceSource source(bytes, piece);
        binary::Reader in(source);
        binary::ObjectReader objects(in);
        std::string back;
        while (!in.atEnd())
            back += encode(objects.instance());
        EXPECT_TRUE(bytes == back) << piece;
    }
}

} // namespace

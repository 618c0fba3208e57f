#ifndef OPENWBEM_VALUE_DATA_HPP_INCLUDED
#define OPENWBEM_VALUE_DATA_HPP_INCLUDED
// The content of a CIMValue, by C++ type.

#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include <cstring>
#include <type_traits>
#include <utility>

namespace OpenWBEM {

/** The CIM type of a C++ type, and its name in messages. */
template <class T>
struct TypeOf;
#define OPENWBEM_TYPE_OF(CPP, TYPE, NAME, ARRAY_NAME)                                                        \
    template <>                                                                                              \
    struct TypeOf<CPP> {                                                                                     \
        static constexpr CIMDataType::Type type = CIMDataType::TYPE;                                         \
        static constexpr bool isArray = false;                                                               \
        static constexpr const char* name = NAME;                                                            \
    };                                                                                                       \
    template <>                                                                                              \
    struct TypeOf<Array<CPP>> {                                                                              \
        static constexpr CIMDataType::Type type = CIMDataType::TYPE;                                         \
        static constexpr bool isArray = true;                                                                \
        static constexpr const char* name = ARRAY_NAME;                                                      \
    }
OPENWBEM_TYPE_OF(Bool, BOOLEAN, "BOOLEAN", "BOOLEAN ARRAY");
OPENWBEM_TYPE_OF(UInt8, UINT8, "UINT8", "UINT8 ARRAY");
OPENWBEM_TYPE_OF(Int8, SINT8, "SINT8", "SINT8 ARRAY");
OPENWBEM_TYPE_OF(UInt16, UINT16, "UINT16", "UINT16 ARRAY");
OPENWBEM_TYPE_OF(Int16, SINT16, "SINT16", "SINT16 ARRAY");
OPENWBEM_TYPE_OF(UInt32, UINT32, "UINT32", "UINT32 ARRAY");
OPENWBEM_TYPE_OF(Int32, SINT32, "SINT32", "SINT32 ARRAY");
OPENWBEM_TYPE_OF(UInt64, UINT64, "UINT64", "UINT64 ARRAY");
OPENWBEM_TYPE_OF(Int64, SINT64, "SINT64", "SINT64 ARRAY");
OPENWBEM_TYPE_OF(Real32, REAL32, "REAL32", "REAL32 ARRAY");
OPENWBEM_TYPE_OF(Real64, REAL64, "REAL64", "REAL64 ARRAY");
OPENWBEM_TYPE_OF(Char16, CHAR16, "CHAR16", "CHAR16 ARRAY");
OPENWBEM_TYPE_OF(String, STRING, "STRING", "STRING ARRAY");
OPENWBEM_TYPE_OF(CIMDateTime, DATETIME, "DATETIME", "DATETIME ARRAY");
OPENWBEM_TYPE_OF(CIMObjectPath, REFERENCE, "REFERENCE", "OBJECTPATH ARRAY");
OPENWBEM_TYPE_OF(CIMClass, EMBEDDEDCLASS, "EMBEDDEDCLASS", "EMBEDDEDCLASS ARRAY");
OPENWBEM_TYPE_OF(CIMInstance, EMBEDDEDINSTANCE, "EMBEDDEDINSTANCE", "EMBEDDEDINSTANCE ARRAY");
#undef OPENWBEM_TYPE_OF

/** Whether a CIMValue stores values of a type inline, as bytes. */
template <class T>
inline constexpr bool isPlain =
    std::is_arithmetic_v<T> || std::is_same_v<T, Bool> || std::is_same_v<T, Char16>;

/** The shared data of a single value. */
template <class T>
struct Boxed : detail::Counted {
    explicit Boxed(T value)
        : content(std::move(value)) {}
    const T content;
};

struct ValueAccess {
    /** Creates a value of any C++ type in TypeOf. */
    template <class T>
    static CIMValue make(T content) {
        CIMValue value{CIMNULL};
        if constexpr (isPlain<T>)
            std::memcpy(value.m_plain, &content, sizeof content);
        else if constexpr (std::is_same_v<T, String>)
            new (&value.m_text) String(std::move(content));
        else if constexpr (TypeOf<T>::isArray)
            new (&value.m_shared) detail::Shared<const detail::Counted>(std::move(content.m_elements));
        else
            new (&value.m_shared) detail::Shared<const detail::Counted>(new Boxed<T>(std::move(content)));
        value.m_type = TypeOf<T>::type;
        value.m_isArray = TypeOf<T>::isArray;
        return value;
    }

    template <class T>
    static bool holds(const CIMValue& value) {
        return value.m_type == TypeOf<T>::type && value.m_isArray == TypeOf<T>::isArray;
    }

    /** The content of a value of type T. */
    template <class T>
    static decltype(auto) content(const CIMValue& value) {
        if constexpr (isPlain<T>) {
            T content;
            std::memcpy(&content, value.m_plain, sizeof content);
            return content;
        } else if constexpr (std::is_same_v<T, String>) {
            return static_cast<const String&>(value.m_text);
        } else if constexpr (TypeOf<T>::isArray) {
            return T(detail::Shared<typename T::Elements>(value.m_shared));
        } else {
            return static_cast<const T&>(static_cast<const Boxed<T>&>(value.m_shared.read()).content);
        }
    }

    /** Calls the visitor with the content of a value, which must not be null. */
    template <class Visitor>
    static decltype(auto) visit(const CIMValue& value, Visitor&& visitor) {
        switch (value.getType()) {
        case CIMDataType::UINT8:
            return visitType<UInt8>(value, visitor);
        case CIMDataType::SINT8:
            return visitType<Int8>(value, visitor);
        case CIMDataType::UINT16:
            return visitType<UInt16>(value, visitor);
        case CIMDataType::SINT16:
            return visitType<Int16>(value, visitor);
        case CIMDataType::UINT32:
            return visitType<UInt32>(value, visitor);
        case CIMDataType::SINT32:
            return visitType<Int32>(value, visitor);
        case CIMDataType::UINT64:
            return visitType<UInt64>(value, visitor);
        case CIMDataType::SINT64:
            return visitType<Int64>(value, visitor);
        case CIMDataType::REAL32:
            return visitType<Real32>(value, visitor);
        case CIMDataType::REAL64:
            return visitType<Real64>(value, visitor);
        case CIMDataType::BOOLEAN:
            return visitType<Bool>(value, visitor);
        case CIMDataType::CHAR16:
            return visitType<Char16>(value, visitor);
        case CIMDataType::DATETIME:
            return visitType<CIMDateTime>(value, visitor);
        case CIMDataType::REFERENCE:
            return visitType<CIMObjectPath>(value, visitor);
        case CIMDataType::EMBEDDEDCLASS:
            return visitType<CIMClass>(value, visitor);
        case CIMDataType::EMBEDDEDINSTANCE:
            return visitType<CIMInstance>(value, visitor);
        default: // STRING
            return visitType<String>(value, visitor);
        }
    }

private:
    template <class T, class Visitor>
    static decltype(auto) visitType(const CIMValue& value, Visitor& visitor) {
        return value.isArray() ? visitor(content<Array<T>>(value)) : visitor(content<T>(value));
    }
};

} // namespace OpenWBEM
#endif

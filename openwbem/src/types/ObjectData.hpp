#ifndef OPENWBEM_OBJECT_DATA_HPP_INCLUDED
#define OPENWBEM_OBJECT_DATA_HPP_INCLUDED
// What the handles of the CIM objects share, and the way in for the code that builds objects off the wire.

#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include <memory>
#include <utility>
#include <variant>

namespace OpenWBEM {

struct CIMProperty::Data {
    CIMName name;
    CIMDataType type;
    CIMValue value{CIMNULL};
};

struct CIMObjectPath::Data {
    String protocol{"http"};
    String host{"127.0.0.1"};
    String port{"5988"};
    String nameSpace;
    CIMName className;
    CIMPropertyArray keys;
};

struct CIMInstance::Data {
    CIMName className;
    CIMPropertyArray keys;
    CIMPropertyArray properties;
};

struct CIMValue::Data {
    std::variant<Bool, UInt8, Int8, UInt16, Int16, UInt32, Int32, UInt64, Int64, Real32, Real64, Char16,
                 String, CIMDateTime, CIMObjectPath, CIMInstance, BoolArray, UInt8Array, Int8Array,
                 UInt16Array, Int16Array, UInt32Array, Int32Array, UInt64Array, Int64Array, Real32Array,
                 Real64Array, Char16Array, StringArray, CIMDateTimeArray, CIMObjectPathArray,
                 CIMInstanceArray>
        content;
};

/** Makes and opens handles for this library's own code, without the casts and copies of the public interface.
 */
struct ObjectAccess {
    template <class T>
    static CIMValue value(T&& content) {
        return CIMValue(detail::Shared<const CIMValue::Data>(
            std::make_shared<const CIMValue::Data>(CIMValue::Data{std::forward<T>(content)})));
    }
    static CIMProperty property(CIMProperty::Data&& data) {
        CIMProperty property{CIMNULL};
        property.m_data =
            detail::Shared<CIMProperty::Data>(std::make_shared<CIMProperty::Data>(std::move(data)));
        return property;
    }
    static CIMObjectPath path(CIMObjectPath::Data&& data) {
        CIMObjectPath path{CIMNULL};
        path.m_data =
            detail::Shared<CIMObjectPath::Data>(std::make_shared<CIMObjectPath::Data>(std::move(data)));
        return path;
    }
    static CIMInstance instance(CIMInstance::Data&& data) {
        CIMInstance instance{CIMNULL};
        instance.m_data =
            detail::Shared<CIMInstance::Data>(std::make_shared<CIMInstance::Data>(std::move(data)));
        return instance;
    }
    static CIMDataType dataType(CIMDataType::Type type, Int32 size, Int32 sizeRange, const String& refClass) {
        CIMDataType result(type);
        result.m_size = size;
        result.m_sizeRange = sizeRange;
        result.m_refClass = refClass;
        return result;
    }

    static const CIMValue::Data& data(const CIMValue& value) { return value.m_data.read(); }
    static const CIMProperty::Data& data(const CIMProperty& property) { return property.m_data.read(); }
    static const CIMObjectPath::Data& data(const CIMObjectPath& path) { return path.m_data.read(); }
    static const CIMInstance::Data& data(const CIMInstance& instance) { return instance.m_data.read(); }
    static Int32 sizeRange(const CIMDataType& type) { return type.m_sizeRange; }
};

/** The CIM type of a C++ type, and how messages call it. */
template <class T>
struct TypeOf;
#define OPENWBEM_TYPE_OF(CPP, TYPE, WORD, ARRAY_WORD)                                                        \
    template <>                                                                                              \
    struct TypeOf<CPP> {                                                                                     \
        static constexpr CIMDataType::Type type = CIMDataType::TYPE;                                         \
        static constexpr bool isArray = false;                                                               \
        static constexpr const char* word = WORD;                                                            \
    };                                                                                                       \
    template <>                                                                                              \
    struct TypeOf<Array<CPP>> {                                                                              \
        static constexpr CIMDataType::Type type = CIMDataType::TYPE;                                         \
        static constexpr bool isArray = true;                                                                \
        static constexpr const char* word = ARRAY_WORD;                                                      \
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
OPENWBEM_TYPE_OF(CIMInstance, EMBEDDEDINSTANCE, "EMBEDDEDINSTANCE", "EMBEDDEDINSTANCE ARRAY");
#undef OPENWBEM_TYPE_OF

} // namespace OpenWBEM
#endif

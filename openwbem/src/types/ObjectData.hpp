#ifndef OPENWBEM_OBJECT_DATA_HPP_INCLUDED
#define OPENWBEM_OBJECT_DATA_HPP_INCLUDED
// The data that handles of CIM objects refer to, and access to it for code of this library.

#include "OW_CIMClass.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include <algorithm>
#include <utility>

namespace OpenWBEM {

/** A qualifier with its qualifier type (DSP0004, qualifiers). Stored so that it can be sent back unchanged.
 */
struct Qualifier {
    enum Flavor : Int32 { NOT_OVERRIDABLE = 2, RESTRICTED = 3, TO_SUBCLASS = 4, TRANSLATABLE = 5 };

    CIMName name;
    CIMValue value{CIMNULL};
    CIMName typeName;
    CIMDataType type;
    Int32Array scopes;
    Int32Array typeFlavors;
    CIMValue defaultValue{CIMNULL};
    bool propagated = false;
    Int32Array flavors;
    String language;
};
typedef Array<Qualifier> QualifierArray;

/** Whether the qualifier has this name and the value true. */
bool isTrue(const Qualifier& qualifier, const CIMName& name);
/** Whether a qualifier with this name has the value true. */
bool isTrue(const QualifierArray& qualifiers, const CIMName& name);

/** A property without its value. Instances of a class share the declarations of their properties. */
struct Declaration : detail::Counted {
    CIMName name;
    CIMName overridden;
    CIMName originClass;
    CIMDataType type;
    Int32 arraySize = -1; // -1: unknown, also for arrays
    bool propagated = false;
    QualifierArray qualifiers;
};

/** The address in paths without a host. All such paths share its strings. */
struct LocalAddress {
    const String protocol{"http"};
    const String host{"127.0.0.1"};
    const String port{"5988"};

    static const LocalAddress& get() {
        static const LocalAddress* const only = new LocalAddress; // never destroyed: outlives every path
        return *only;
    }
};

/** Whether a path's host is the host of the object manager that returned the path. */
bool isLocalHost(const String& host);

struct CIMObjectPath::Data : detail::Counted {
    String protocol = LocalAddress::get().protocol;
    String host = LocalAddress::get().host;
    String port = LocalAddress::get().port;
    String nameSpace;
    CIMName className;
    CIMPropertyArray keys;
};

struct CIMInstance::Data : detail::Counted {
    CIMName className;
    CIMPropertyArray keys;
    CIMPropertyArray properties;
    QualifierArray qualifiers;
    String language;
};

struct Parameter {
    CIMName name;
    CIMDataType type;
    QualifierArray qualifiers;
};

struct Method {
    CIMName name;
    CIMDataType returnType;
    QualifierArray qualifiers;
    Array<Parameter> parameters;
    CIMName originClass;
    CIMName overridden;
    bool propagated = false;
};

struct CIMClass::Data : detail::Counted {
    CIMName name;
    CIMName superClass;
    bool isAssociation = false;
    bool isKeyed = false;
    QualifierArray qualifiers;
    CIMPropertyArray properties;
    Array<Method> methods;
};

/** Creates handles and accesses their data, without the copies of the public interface. */
struct ObjectAccess {
    static CIMProperty property(detail::Shared<Declaration> declaration, CIMValue value) {
        return CIMProperty(std::move(declaration), std::move(value));
    }
    /** Takes ownership of new data. */
    template <class Object>
    static Object object(typename Object::Data* data) {
        Object object{CIMNULL};
        object.m_data = detail::Shared<typename Object::Data>(data);
        return object;
    }
    template <class Object>
    static const typename Object::Data& data(const Object& object) {
        return object.m_data.read();
    }
    static const Declaration& declaration(const CIMProperty& property) {
        return property.m_declaration.read();
    }
    /** Undefined for the null property. */
    static const CIMValue& value(const CIMProperty& property) { return property.m_value; }

    static CIMDataType dataType(CIMDataType::Type type, Int32 size, Int32 sizeRange, const String& refClass) {
        CIMDataType result(type);
        result.m_size = size;
        result.m_sizeRange = sizeRange;
        result.m_refClass = refClass;
        return result;
    }
    static Int32 sizeRange(const CIMDataType& type) { return type.m_sizeRange; }
};

/** Iterator to the first property with a name; end() if there is none. Skips null properties. */
template <class Properties>
auto findByName(Properties& properties, const CIMName& name) {
    return std::find_if(properties.begin(), properties.end(), [&name](const CIMProperty& property) {
        return property && ObjectAccess::declaration(property).name == name;
    });
}

} // namespace OpenWBEM
#endif

#include "binary/ObjectWriter.hpp"

#include "binary/Protocol.hpp"
#include "types/ObjectData.hpp"
#include "types/ValueData.hpp"
#include "types/ValueText.hpp"

#include <type_traits>

namespace OpenWBEM {
namespace binary {
namespace {

void element(Writer& out, Bool value) {
    out.boolean(value);
}
void element(Writer& out, const Char16& value) {
    out.u16(value.getValue());
}
void element(Writer& out, const String& value) {
    out.string(value);
}
void element(Writer& out, const CIMObjectPath& value) {
    write(out, value);
}
void element(Writer& out, const CIMClass& value) {
    write(out, value);
}
void element(Writer& out, const CIMInstance& value) {
    write(out, value);
}

void element(Writer& out, const CIMDateTime& value) {
    out.u16(value.getYear());
    out.u8(value.getMonth());
    out.u32(value.getDays());
    out.u8(value.getHours());
    out.u8(value.getMinutes());
    out.u8(value.getSeconds());
    out.u32(value.getMicroSeconds());
    out.u16(static_cast<UInt16>(value.getUtc()));
    out.boolean(value.isInterval());
}

template <class T, class = std::enable_if_t<std::is_arithmetic_v<T>>>
void element(Writer& out, T value) {
    if constexpr (std::is_floating_point_v<T>) {
        std::string text;
        appendText(text, value);
        out.text(text);
    } else if constexpr (sizeof(T) == 1) {
        out.u8(static_cast<UInt8>(value));
    } else if constexpr (sizeof(T) == 2) {
        out.u16(static_cast<UInt16>(value));
    } else if constexpr (sizeof(T) == 4) {
        out.u32(static_cast<UInt32>(value));
    } else {
        out.u64(static_cast<UInt64>(value));
    }
}

void dataType(Writer& out, const CIMDataType& type) {
    out.u8(sig::dataType);
    out.number(type.getType());
    out.number(static_cast<UInt32>(type.getSize()));
    out.number(static_cast<UInt32>(ObjectAccess::sizeRange(type)));
    out.string(type.getRefClassName());
}

void name(Writer& out, const CIMName& value) {
    out.string(value.toString());
}

void optionalValue(Writer& out, const CIMValue& value) {
    out.boolean(static_cast<bool>(value));
    if (value)
        write(out, value);
}

void numbers(Writer& out, const Int32Array& all) {
    out.number(static_cast<UInt32>(all.size()));
    for (const Int32 number : all)
        out.number(static_cast<UInt32>(number));
}

void qualifiers(Writer& out, const QualifierArray& all) {
    out.number(static_cast<UInt32>(all.size()));
    for (const Qualifier& qualifier : all) {
        out.u8(sig::versionedQualifier);
        out.number(qualifierVersion);
        name(out, qualifier.name);
        optionalValue(out, qualifier.value);
        out.u8(sig::qualifierType);
        name(out, qualifier.typeName);
        dataType(out, qualifier.type);
        numbers(out, qualifier.scopes);
        numbers(out, qualifier.typeFlavors);
        optionalValue(out, qualifier.defaultValue);
        out.boolean(qualifier.propagated);
        numbers(out, qualifier.flavors);
        out.string(qualifier.language);
    }
}

void properties(Writer& out, const CIMPropertyArray& all) {
    out.number(static_cast<UInt32>(all.size()));
    for (const CIMProperty& property : all)
        write(out, property);
}

void method(Writer& out, const Method& method) {
    out.u8(sig::method);
    name(out, method.name);
    dataType(out, method.returnType);
    qualifiers(out, method.qualifiers);
    out.number(static_cast<UInt32>(method.parameters.size()));
    for (const Parameter& parameter : method.parameters) {
        out.u8(sig::parameter);
        name(out, parameter.name);
        dataType(out, parameter.type);
        qualifiers(out, parameter.qualifiers);
    }
    name(out, method.originClass);
    name(out, method.overridden);
    out.boolean(method.propagated);
}

} // namespace

void write(Writer& out, const CIMInstance& instance) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    out.u8(sig::versionedInstance);
    out.number(instanceVersion);
    name(out, data.className);
    properties(out, data.keys);
    properties(out, data.properties);
    qualifiers(out, data.qualifiers);
    out.string(data.language);
}

void write(Writer& out, const CIMObjectPath& path) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    out.u8(sig::objectPath);
    out.u8(sig::nameSpace);
    out.string(data.nameSpace);
    out.u8(sig::url);
    out.string(data.protocol + "://" + data.host + ":" + data.port + "/cimom");
    name(out, data.className);
    properties(out, data.keys);
}

void write(Writer& out, const CIMClass& object) {
    const CIMClass::Data& data = ObjectAccess::data(object);
    out.u8(sig::classObject);
    name(out, data.name);
    name(out, data.superClass);
    out.boolean(data.isAssociation);
    out.boolean(data.isKeyed);
    qualifiers(out, data.qualifiers);
    properties(out, data.properties);
    out.number(static_cast<UInt32>(data.methods.size()));
    for (const Method& each : data.methods)
        method(out, each);
}

void write(Writer& out, const CIMProperty& property) {
    const Declaration& declaration = ObjectAccess::declaration(property);
    out.u8(sig::property);
    name(out, declaration.name);
    name(out, declaration.overridden);
    name(out, declaration.originClass);
    dataType(out, declaration.type);
    out.number(static_cast<UInt32>(declaration.arraySize));
    out.boolean(declaration.propagated);
    qualifiers(out, declaration.qualifiers);
    optionalValue(out, ObjectAccess::value(property));
}

void write(Writer& out, const CIMValue& value) {
    out.u8(sig::value);
    out.number(value.getType());
    out.boolean(value.isArray());
    ValueAccess::visit(value, [&out](const auto& content) {
        if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray) {
            out.number(static_cast<UInt32>(content.size()));
            for (const auto& each : content)
                element(out, each);
        } else {
            element(out, content);
        }
    });
}

} // namespace binary
} // namespace OpenWBEM

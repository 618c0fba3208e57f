#include "binary/ObjectWriter.hpp"

#include "binary/Protocol.hpp"
#include "types/ObjectData.hpp"
#include "types/ValueText.hpp"

#include <type_traits>
#include <utility>

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

void properties(Writer& out, const CIMPropertyArray& all) {
    out.number(static_cast<UInt32>(all.size()));
    for (const CIMProperty& property : all)
        write(out, property);
}

} // namespace

void write(Writer& out, const CIMInstance& instance) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    out.u8(sig::versionedInstance);
    out.number(instanceVersion);
    out.string(data.className.toString());
    properties(out, data.keys);
    properties(out, data.properties);
    out.number(0); // qualifiers
    out.text("");  // language
}

void write(Writer& out, const CIMObjectPath& path) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    out.u8(sig::objectPath);
    out.u8(sig::nameSpace);
    out.string(data.nameSpace);
    out.u8(sig::url);
    out.string(data.protocol + "://" + data.host + ":" + data.port + "/cimom");
    out.string(data.className.toString());
    properties(out, data.keys);
}

void write(Writer& out, const CIMProperty& property) {
    const CIMProperty::Data& data = ObjectAccess::data(property);
    out.u8(sig::property);
    out.string(data.name.toString());
    out.text(""); // overridden property
    out.text(""); // class of origin
    dataType(out, data.type);
    out.number(static_cast<UInt32>(-1)); // array size: not given
    out.boolean(false);                  // propagated
    out.number(0);                       // qualifiers
    out.boolean(static_cast<bool>(data.value));
    if (data.value)
        write(out, data.value);
}

void write(Writer& out, const CIMValue& value) {
    out.u8(sig::value);
    out.number(value.getType());
    out.boolean(value.isArray());
    std::visit(
        [&out](const auto& content) {
            if constexpr (TypeOf<std::decay_t<decltype(content)>>::isArray) {
                out.number(static_cast<UInt32>(content.size()));
                for (const auto& each : content)
                    element(out, each);
            } else {
                element(out, content);
            }
        },
        ObjectAccess::data(value).content);
}

} // namespace binary
} // namespace OpenWBEM

// Values and paths, which contain each other.
#include "types/ObjectData.hpp"
#include "types/ValueData.hpp"
#include "types/ValueText.hpp"
#include "xml/ElementWriter.hpp"
#include "xml/ObjectWriter.hpp"

#include <type_traits>

namespace OpenWBEM {
namespace xml {
namespace {

void appendContent(std::string& out, const String& text) {
    appendEscaped(out, std::string_view(text.c_str(), text.length()));
}

void appendContent(std::string& out, const Char16& character) {
    std::string text;
    if (character.getValue() != 0)
        appendUtf8(text, character.getValue());
    appendEscaped(out, text);
}

template <class T>
void appendContent(std::string& out, const T& value) {
    if constexpr (std::is_same_v<T, CIMInstance> || std::is_same_v<T, CIMClass>) {
        std::string text;
        write(text, value);
        appendEscaped(out, text);
    } else {
        appendText(out, value);
    }
}

template <class T>
void writeElement(std::string& out, const T& value, KeyType keyType) {
    if constexpr (std::is_same_v<T, CIMObjectPath>)
        appendElement(out, "VALUE.REFERENCE", [&] { write(out, value, keyType); });
    else
        appendElement(out, "VALUE", [&] { appendContent(out, value); });
}

template <class T>
void writeElement(std::string& out, const Array<T>& values, KeyType keyType) {
    appendElement(out, std::is_same_v<T, CIMObjectPath> ? "VALUE.REFARRAY" : "VALUE.ARRAY", [&] {
        for (const T& value : values)
            writeElement(out, value, keyType);
    });
}

// The attribute VALUETYPE of a key.
const char* valueType(const CIMValue& value) {
    if (!value)
        return "string";
    switch (value.getType()) {
    case CIMDataType::BOOLEAN:
        return "boolean";
    case CIMDataType::STRING:
    case CIMDataType::DATETIME:
    case CIMDataType::CHAR16:
        return "string";
    default:
        return "numeric";
    }
}

void appendKey(std::string& out, const CIMValue& value) {
    if (value)
        ValueAccess::visit(value, [&out](const auto& content) {
            if constexpr (!TypeOf<std::decay_t<decltype(content)>>::isArray)
                appendContent(out, content);
        });
}

void writeKeyValue(std::string& out, const CIMValue& value, KeyType keyType) {
    StartTag tag(out, "KEYVALUE");
    tag.attribute("VALUETYPE", valueType(value));
    if (keyType == KeyType::written)
        tag.attribute("TYPE", value ? CIMDataType(value.getType()).toString() : String("string"));
    tag.content([&] { appendKey(out, value); });
}

void writeKey(std::string& out, const CIMProperty& key, KeyType keyType) {
    const CIMValue& value = ObjectAccess::value(key);
    StartTag(out, "KEYBINDING").attribute("NAME", key.getName()).content([&] {
        if (value && value.getType() == CIMDataType::REFERENCE)
            write(out, value, keyType);
        else
            writeKeyValue(out, value, keyType);
    });
}

void writeObjectName(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    if (data.keys.empty())
        StartTag(out, "CLASSNAME").attribute("NAME", data.className.toString()).content([] {});
    else
        writeName(out, path, keyType);
}

void writeNameSpacePath(std::string& out, const CIMObjectPath::Data& data) {
    appendElement(out, "NAMESPACEPATH", [&] {
        appendElement(out, "HOST", [&] {
            appendContent(out, data.port == "5988" ? data.host : data.host + ":" + data.port);
        });
        writeNameSpace(out, data.nameSpace);
    });
}

} // namespace

void write(std::string& out, const CIMValue& value, KeyType keyType) {
    if (value)
        ValueAccess::visit(value,
                           [&out, keyType](const auto& content) { writeElement(out, content, keyType); });
}

void writeName(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    StartTag(out, "INSTANCENAME").attribute("CLASSNAME", data.className.toString()).content([&] {
        for (const CIMProperty& key : data.keys)
            writeKey(out, key, keyType);
    });
}

void write(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    if (isLocalHost(data.host) && data.nameSpace.empty())
        return writeObjectName(out, path, keyType);
    if (isLocalHost(data.host))
        return appendElement(out, data.keys.empty() ? "LOCALCLASSPATH" : "LOCALINSTANCEPATH", [&] {
            writeNameSpace(out, data.nameSpace);
            writeObjectName(out, path, keyType);
        });
    appendElement(out, data.keys.empty() ? "CLASSPATH" : "INSTANCEPATH", [&] {
        writeNameSpacePath(out, data);
        writeObjectName(out, path, keyType);
    });
}

void writeNameSpace(std::string& out, const String& nameSpace) {
    appendElement(out, "LOCALNAMESPACEPATH", [&] {
        for (const String& name : String(nameSpace.c_str()).tokenize("/\\")) // a NUL ends it, as in HTTP
            StartTag(out, "NAMESPACE").attribute("NAME", name).content([] {});
    });
}

} // namespace xml
} // namespace OpenWBEM

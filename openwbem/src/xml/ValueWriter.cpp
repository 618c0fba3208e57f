// Values and paths, which hold each other.
#include "types/ObjectData.hpp"
#include "types/PathText.hpp"
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
    constexpr bool isReference = std::is_same_v<T, CIMObjectPath>;
    const Element element(out, isReference ? "VALUE.REFERENCE" : "VALUE");
    if constexpr (isReference)
        write(out, value, keyType);
    else
        appendContent(out, value);
}

template <class T>
void writeElement(std::string& out, const Array<T>& values, KeyType keyType) {
    const Element element(out, std::is_same_v<T, CIMObjectPath> ? "VALUE.REFARRAY" : "VALUE.ARRAY");
    for (const T& value : values)
        writeElement(out, value, keyType);
}

/** VALUETYPE of a key. */
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

void writeKey(std::string& out, const CIMProperty& key, KeyType keyType) {
    const CIMValue& value = ObjectAccess::value(key);
    const Element binding(out, "KEYBINDING", "NAME", key.getName());
    if (value && value.getType() == CIMDataType::REFERENCE) {
        write(out, value, keyType);
    } else if (keyType == KeyType::omitted) {
        const Element element(out, "KEYVALUE", "VALUETYPE", valueType(value));
        appendKey(out, value);
    } else {
        const String type = value ? CIMDataType(value.getType()).toString() : String("string");
        const Element element(out, "KEYVALUE", "VALUETYPE", valueType(value), "TYPE", type);
        appendKey(out, value);
    }
}

void writeObjectName(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    if (data.keys.empty())
        const Element element(out, "CLASSNAME", "NAME", data.className.toString());
    else
        writeName(out, path, keyType);
}

} // namespace

void write(std::string& out, const CIMValue& value, KeyType keyType) {
    if (value)
        ValueAccess::visit(value,
                           [&out, keyType](const auto& content) { writeElement(out, content, keyType); });
}

void writeName(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    const Element element(out, "INSTANCENAME", "CLASSNAME", data.className.toString());
    for (const CIMProperty& key : data.keys)
        writeKey(out, key, keyType);
}

void write(std::string& out, const CIMObjectPath& path, KeyType keyType) {
    const CIMObjectPath::Data& data = ObjectAccess::data(path);
    if (isLocalHost(data.host) && data.nameSpace.empty())
        return writeObjectName(out, path, keyType);
    if (isLocalHost(data.host)) {
        const Element element(out, data.keys.empty() ? "LOCALCLASSPATH" : "LOCALINSTANCEPATH");
        writeNameSpace(out, data.nameSpace);
        return writeObjectName(out, path, keyType);
    }
    const Element element(out, data.keys.empty() ? "CLASSPATH" : "INSTANCEPATH");
    {
        const Element around(out, "NAMESPACEPATH");
        {
            const Element host(out, "HOST");
            appendContent(out, data.port == "5988" ? data.host : data.host + ":" + data.port);
        }
        writeNameSpace(out, data.nameSpace);
    }
    writeObjectName(out, path, keyType);
}

void writeNameSpace(std::string& out, const String& nameSpace) {
    const Element element(out, "LOCALNAMESPACEPATH");
    const std::string text = nameSpace.c_str();
    const char* const separators = "/\\";
    std::size_t begin = text.find_first_not_of(separators);
    while (begin != std::string::npos) {
        const std::size_t end = text.find_first_of(separators, begin);
        const Element part(out, "NAMESPACE", "NAME", text.substr(begin, end - begin).c_str());
        begin = text.find_first_not_of(separators, end);
    }
}

} // namespace xml
} // namespace OpenWBEM

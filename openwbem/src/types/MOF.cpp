// CIM objects in the Managed Object Format (DSP0004).
#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "ObjectData.hpp"
#include "ValueData.hpp"
#include "ValueText.hpp"

#include <string>

namespace OpenWBEM {
namespace {

void append(std::string& text, const String& more) {
    appendText(text, more);
}

template <class T>
void appendMOF(std::string& text, const T& value) {
    if constexpr (std::is_same_v<T, String> || std::is_same_v<T, CIMDateTime>) {
        text += '"';
        append(text, CIMObjectPath::escape(value.toString()));
        text += '"';
    } else if constexpr (std::is_base_of_v<CIMBase, T>) {
        append(text, value.toMOF());
    } else {
        appendElementText(text, value);
    }
}

template <class T>
void appendMOF(std::string& text, const Array<T>& values) {
    const char* separator = "{";
    for (const T& value : values) {
        text += separator;
        appendMOF(text, value);
        separator = ",";
    }
    text += values.empty() ? "{}" : "}";
}

void appendQualifiers(std::string& text, const QualifierArray& qualifiers, const char* indent) {
    const char* separator = "[";
    text += qualifiers.empty() ? "" : indent;
    for (const Qualifier& qualifier : qualifiers) {
        text += separator;
        append(text, qualifier.name.toString());
        if (qualifier.value) {
            text += '(';
            append(text, qualifier.value.toMOF());
            text += ')';
        }
        separator = ", ";
    }
    text += qualifiers.empty() ? "" : "]\n";
}

// `<type> <name>[<size>]`; for a reference, `<class> REF <name>`.
void appendTyped(std::string& text, const CIMDataType& type, const CIMName& name) {
    if (type.isReferenceType()) {
        append(text, type.getRefClassName());
        text += ' ';
    }
    append(text, type.toString());
    text += ' ';
    append(text, name.toString());
    append(text, type.getArrayMOF());
}

void appendMethod(std::string& text, const Method& method) {
    appendQualifiers(text, method.qualifiers, "    ");
    text += "    ";
    appendTyped(text, method.returnType, method.name);
    const char* separator = "(";
    for (const Parameter& parameter : method.parameters) {
        text += separator;
        appendTyped(text, parameter.type, parameter.name);
        separator = ", ";
    }
    text += method.parameters.empty() ? "();\n" : ");\n";
}

} // namespace

String CIMValue::toMOF() const {
    std::string text;
    ValueAccess::visit(*this, [&text](const auto& content) { appendMOF(text, content); });
    return stringOf(text);
}

String CIMProperty::toMOF() const {
    const Declaration& declaration = ObjectAccess::declaration(*this);
    std::string text;
    appendQualifiers(text, declaration.qualifiers, "    ");
    text += "    ";
    appendTyped(text, declaration.type, declaration.name);
    if (m_value) {
        text += " = ";
        append(text, m_value.toMOF());
    }
    return stringOf(text + ";\n");
}

String CIMInstance::toMOF() const {
    const Data& data = m_data.read();
    std::string text;
    appendQualifiers(text, data.qualifiers, "");
    text += "instance of ";
    append(text, data.className.toString());
    text += "\n{\n";
    for (const CIMProperty& property : std::as_const(data.properties)) {
        const CIMValue& value = ObjectAccess::value(property);
        if (!value)
            continue;
        text += "    ";
        append(text, property.getName() + " = " + value.toMOF() + ";\n");
    }
    return stringOf(text + "};\n");
}

String CIMClass::toMOF() const {
    const Data& data = m_data.read();
    std::string text;
    appendQualifiers(text, data.qualifiers, "");
    text += "class ";
    append(text, data.name.toString());
    if (data.superClass)
        append(text, " : " + data.superClass.toString());
    text += "\n{\n";
    for (const CIMProperty& property : std::as_const(data.properties))
        append(text, property.toMOF());
    for (const Method& method : std::as_const(data.methods))
        appendMethod(text, method);
    return stringOf(text + "};\n");
}

} // namespace OpenWBEM

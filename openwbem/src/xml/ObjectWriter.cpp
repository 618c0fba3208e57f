// Instances, classes, properties, qualifiers and methods.
#include "xml/ObjectWriter.hpp"

#include "OW_CIMException.hpp"
#include "types/ObjectData.hpp"
#include "xml/ElementWriter.hpp"

#include <algorithm>

namespace OpenWBEM {
namespace xml {
namespace {

bool has(const Int32Array& numbers, Int32 number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

// The name of a type in a TYPE attribute. No type means a null value, which is written as a string.
String typeName(const CIMDataType& type) {
    return type ? type.toString() : String("string");
}

bool isEmbedded(const CIMValue& value) {
    return value && (value.getType() == CIMDataType::EMBEDDEDINSTANCE ||
                     value.getType() == CIMDataType::EMBEDDEDCLASS);
}

void writeQualifier(std::string& out, const Qualifier& qualifier) {
    const CIMDataType type = qualifier.value ? qualifier.value.getCIMDataType() : qualifier.type;
    StartTag(out, "QUALIFIER")
        .attribute("NAME", qualifier.name.toString())
        .attribute("TYPE", typeName(type))
        .optional("PROPAGATED", qualifier.propagated, "true")
        .optional("OVERRIDABLE", has(qualifier.flavors, Qualifier::NOT_OVERRIDABLE), "false")
        .optional("TOSUBCLASS", has(qualifier.flavors, Qualifier::RESTRICTED), "false")
        .optional("TRANSLATABLE", has(qualifier.flavors, Qualifier::TRANSLATABLE), "true")
        .optional("xml:lang", qualifier.language)
        .blank()
        .content([&] { write(out, qualifier.value); });
}

void writeQualifiers(std::string& out, const QualifierArray& qualifiers) {
    for (const Qualifier& qualifier : qualifiers)
        writeQualifier(out, qualifier);
}

void writeEmbeddedObject(std::string& out) {
    Qualifier qualifier;
    qualifier.name = "EmbeddedObject";
    qualifier.value = CIMValue(true);
    writeQualifier(out, qualifier);
}

// Element names, indexed by "is a reference" and "is an array".
typedef const char* const Names[2][2];
Names propertyNames = {{"PROPERTY", "PROPERTY.ARRAY"}, {"PROPERTY.REFERENCE", "PROPERTY.REFARRAY"}};
Names parameterNames = {{"PARAMETER", "PARAMETER.ARRAY"}, {"PARAMETER.REFERENCE", "PARAMETER.REFARRAY"}};

const char* nameOf(Names& names, const CIMDataType& type) {
    return names[type.isReferenceType()][type.isArrayType()];
}

void writeType(StartTag& tag, const CIMDataType& type) {
    if (type.isReferenceType())
        tag.optional("REFERENCECLASS", type.getRefClassName());
    else
        tag.attribute("TYPE", typeName(type));
    if (type.isArrayType() && type.getSize() > 0)
        tag.attribute("ARRAYSIZE", std::to_string(type.getSize()).c_str());
}

void writeParameter(std::string& out, const Parameter& parameter) {
    StartTag tag(out, nameOf(parameterNames, parameter.type));
    tag.attribute("NAME", parameter.name.toString());
    writeType(tag, parameter.type);
    tag.blank().content([&] { writeQualifiers(out, parameter.qualifiers); });
}

void writeMethod(std::string& out, const Method& method) {
    StartTag(out, "METHOD")
        .attribute("NAME", method.name.toString())
        .attribute("TYPE", typeName(method.returnType))
        .optional("CLASSORIGIN", method.originClass.toString())
        .optional("PROPAGATED", method.propagated, "true")
        .blank()
        .content([&] {
            writeQualifiers(out, method.qualifiers);
            for (const Parameter& parameter : method.parameters)
                writeParameter(out, parameter);
        });
}

} // namespace

void write(std::string& out, const CIMProperty& property, KeyType keyType) {
    const Declaration& declaration = ObjectAccess::declaration(property);
    const CIMValue& value = ObjectAccess::value(property);
    if (!declaration.name)
        OW_THROWCIMMSG(CIMException::FAILED, "property must have a name");
    // A property can have a value but no declared type.
    const CIMDataType type = declaration.type || !value ? declaration.type : value.getCIMDataType();
    StartTag tag(out, nameOf(propertyNames, type));
    tag.attribute("NAME", declaration.name.toString());
    writeType(tag, type);
    tag.optional("CLASSORIGIN", declaration.originClass.toString())
        .optional("PROPAGATED", declaration.propagated, "true")
        .blank()
        .content([&] {
            writeQualifiers(out, declaration.qualifiers);
            if (isEmbedded(value) && !isTrue(declaration.qualifiers, "EmbeddedObject"))
                writeEmbeddedObject(out);
            write(out, value, keyType);
        });
}

void write(std::string& out, const CIMInstance& instance, KeyType keyType) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    StartTag(out, "INSTANCE").attribute("CLASSNAME", data.className.toString()).content([&] {
        writeQualifiers(out, data.qualifiers);
        for (const CIMProperty& property : data.properties)
            write(out, property, keyType);
    });
}

void writeNamed(std::string& out, const CIMInstance& instance, KeyType keyType) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    appendElement(out, "VALUE.NAMEDINSTANCE", [&] {
        writeName(out, CIMObjectPath(data.className, data.keys), keyType);
        write(out, instance, keyType);
    });
}

void write(std::string& out, const CIMClass& object) {
    const CIMClass::Data& data = ObjectAccess::data(object);
    StartTag(out, "CLASS")
        .attribute("NAME", data.name.toString())
        .optional("SUPERCLASS", data.superClass.toString())
        .blank()
        .content([&] {
            writeQualifiers(out, data.qualifiers);
            for (const CIMProperty& property : data.properties)
                write(out, property);
            for (const Method& method : data.methods)
                writeMethod(out, method);
        });
}

} // namespace xml
} // namespace OpenWBEM

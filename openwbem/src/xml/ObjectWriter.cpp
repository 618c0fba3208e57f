// Instances and classes, their properties, qualifiers and methods.
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

// The name of a type in a TYPE attribute. What has no type, a null value can only be, is a string.
String typeName(const CIMDataType& type) {
    return type ? type.toString() : String("string");
}

bool isEmbedded(const CIMValue& value) {
    return value && (value.getType() == CIMDataType::EMBEDDEDINSTANCE ||
                     value.getType() == CIMDataType::EMBEDDEDCLASS);
}

void writeQualifier(std::string& out, const Qualifier& qualifier) {
    const CIMDataType type = qualifier.value ? qualifier.value.getCIMDataType() : qualifier.type;
    DeclaringElement element(out, "QUALIFIER");
    element.attribute("NAME", qualifier.name.toString())
        .attribute("TYPE", typeName(type))
        .optional("PROPAGATED", qualifier.propagated, "true")
        .optional("OVERRIDABLE", has(qualifier.flavors, Qualifier::NOT_OVERRIDABLE), "false")
        .optional("TOSUBCLASS", has(qualifier.flavors, Qualifier::RESTRICTED), "false")
        .optional("TRANSLATABLE", has(qualifier.flavors, Qualifier::TRANSLATABLE), "true")
        .optional("xml:lang", qualifier.language)
        .open();
    write(out, qualifier.value);
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

// What a value and its declaration make of an element's name; indexed by "is a reference" and "is an array".
typedef const char* const Names[2][2];
Names propertyNames = {{"PROPERTY", "PROPERTY.ARRAY"}, {"PROPERTY.REFERENCE", "PROPERTY.REFARRAY"}};
Names parameterNames = {{"PARAMETER", "PARAMETER.ARRAY"}, {"PARAMETER.REFERENCE", "PARAMETER.REFARRAY"}};

const char* nameOf(Names& names, const CIMDataType& type) {
    return names[type.isReferenceType()][type.isArrayType()];
}

void writeType(DeclaringElement& element, const CIMDataType& type) {
    if (type.isReferenceType())
        element.optional("REFERENCECLASS", type.getRefClassName());
    else
        element.attribute("TYPE", typeName(type));
    if (type.isArrayType() && type.getSize() > 0)
        element.attribute("ARRAYSIZE", std::to_string(type.getSize()).c_str());
}

void writeParameter(std::string& out, const Parameter& parameter) {
    DeclaringElement element(out, nameOf(parameterNames, parameter.type));
    element.attribute("NAME", parameter.name.toString());
    writeType(element, parameter.type);
    element.open();
    writeQualifiers(out, parameter.qualifiers);
}

void writeMethod(std::string& out, const Method& method) {
    DeclaringElement element(out, "METHOD");
    element.attribute("NAME", method.name.toString())
        .attribute("TYPE", typeName(method.returnType))
        .optional("CLASSORIGIN", method.originClass.toString())
        .optional("PROPAGATED", method.propagated, "true")
        .open();
    writeQualifiers(out, method.qualifiers);
    for (const Parameter& parameter : method.parameters)
        writeParameter(out, parameter);
}

} // namespace

void write(std::string& out, const CIMProperty& property, KeyType keyType) {
    const Declaration& declaration = ObjectAccess::declaration(property);
    const CIMValue& value = ObjectAccess::value(property);
    if (!declaration.name)
        OW_THROWCIMMSG(CIMException::FAILED, "property must have a name");
    // A property that was given a value before it had a type is still declared without one.
    const CIMDataType type = declaration.type || !value ? declaration.type : value.getCIMDataType();
    DeclaringElement element(out, nameOf(propertyNames, type));
    element.attribute("NAME", declaration.name.toString());
    writeType(element, type);
    element.optional("CLASSORIGIN", declaration.originClass.toString())
        .optional("PROPAGATED", declaration.propagated, "true")
        .open();
    writeQualifiers(out, declaration.qualifiers);
    if (isEmbedded(value) && !isTrue(declaration.qualifiers, "EmbeddedObject"))
        writeEmbeddedObject(out);
    write(out, value, keyType);
}

void write(std::string& out, const CIMInstance& instance, KeyType keyType) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    const Element element(out, "INSTANCE", "CLASSNAME", data.className.toString());
    writeQualifiers(out, data.qualifiers);
    for (const CIMProperty& property : data.properties)
        write(out, property, keyType);
}

void writeNamed(std::string& out, const CIMInstance& instance, KeyType keyType) {
    const CIMInstance::Data& data = ObjectAccess::data(instance);
    const Element element(out, "VALUE.NAMEDINSTANCE");
    writeName(out, CIMObjectPath(data.className, data.keys), keyType);
    write(out, instance, keyType);
}

void write(std::string& out, const CIMClass& object) {
    const CIMClass::Data& data = ObjectAccess::data(object);
    DeclaringElement element(out, "CLASS");
    element.attribute("NAME", data.name.toString()).optional("SUPERCLASS", data.superClass.toString()).open();
    writeQualifiers(out, data.qualifiers);
    for (const CIMProperty& property : data.properties)
        write(out, property);
    for (const Method& method : data.methods)
        writeMethod(out, method);
}

} // namespace xml
} // namespace OpenWBEM

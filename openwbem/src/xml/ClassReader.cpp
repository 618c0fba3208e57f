// Classes, methods and parameters.
#include "xml/Nesting.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <memory>

namespace OpenWBEM {
namespace xml {

CIMClass ObjectReader::classObject() {
    const Nesting nesting(*this);
    auto data = std::make_unique<CIMClass::Data>();
    data->name = toString(m_in.attribute("NAME"));
    data->superClass = toString(m_in.attribute("SUPERCLASS"));
    const std::size_t first = m_collected.size();
    while (m_in.next() == Tag::start) {
        if (startsProperty())
            append(m_collected, property(), first);
        else if (m_in.name() == "METHOD")
            append(data->methods, method());
        else if (m_in.name() == "QUALIFIER")
            append(data->qualifiers, qualifier());
        else
            m_in.skip();
    }
    data->properties = collected(first);
    data->isAssociation = isTrue(data->qualifiers, "Association");
    const CIMPropertyArray& properties = data->properties;
    data->isKeyed = std::any_of(properties.begin(), properties.end(), [](const CIMProperty& property) {
        return isTrue(ObjectAccess::declaration(property).qualifiers, "Key");
    });
    return ObjectAccess::object<CIMClass>(data.release());
}

Method ObjectReader::method() {
    Method result;
    result.name = toString(m_in.attribute("NAME"));
    result.returnType = declaredType();
    result.originClass = toString(m_in.attribute("CLASSORIGIN"));
    result.propagated = equalsIgnoreCase(m_in.attribute("PROPAGATED"), "true");
    while (m_in.next() == Tag::start) {
        const std::string_view name = m_in.name();
        if (name == "QUALIFIER")
            append(result.qualifiers, qualifier());
        else if (name.substr(0, name.find('.')) == "PARAMETER")
            append(result.parameters, parameter());
        else
            m_in.skip();
    }
    return result;
}

Parameter ObjectReader::parameter() {
    Parameter result;
    result.name = toString(m_in.attribute("NAME"));
    result.type = declaredType();
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "QUALIFIER")
            append(result.qualifiers, qualifier());
        else
            m_in.skip();
    }
    return result;
}

} // namespace xml
} // namespace OpenWBEM

#ifndef CIMOM_SCHEMA_CLASS_DECLARATION_HPP_INCLUDED
#define CIMOM_SCHEMA_CLASS_DECLARATION_HPP_INCLUDED
#include "OW_CIMDataType.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMValue.hpp"

#include <vector>

namespace cimom {

/** What a property is to its instance, and so who decides its value. */
enum class Role {
    /** The present state of the host; read-only. */
    state,
    /** Identifies the instance among those of its class; read-only. */
    key,
    /** Written by the site, null until then. Of type string. */
    site
};

/** A property as its class declares it. */
struct PropertyDeclaration {
    const char* name;
    OpenWBEM::CIMDataType::Type type;
    Role role = Role::state;
    bool isArray = false;
    /** Class that a reference leads to; empty for every other type. */
    const char* referenceClass = "";

    OpenWBEM::CIMDataType dataType() const;

    /**
     * A value converted to the declared type; null stays null. Throws CIMException TYPE_MISMATCH that names
     * the property if the value does not convert.
     */
    OpenWBEM::CIMValue converted(const OpenWBEM::CIMValue& value) const;
};

/** A class: its name, and its properties in the order in which instances carry them. */
struct ClassDeclaration {
    const char* name;
    std::vector<PropertyDeclaration> properties;

    /** The property of a name, in any case; null if the class does not declare it. */
    const PropertyDeclaration* find(const OpenWBEM::CIMName& property) const;
};

} // namespace cimom
#endif

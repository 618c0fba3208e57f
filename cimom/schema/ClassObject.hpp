#ifndef CIMOM_SCHEMA_CLASS_OBJECT_HPP_INCLUDED
#define CIMOM_SCHEMA_CLASS_OBJECT_HPP_INCLUDED
#include "OW_CIMClass.hpp"
#include "schema/ClassDeclaration.hpp"

namespace cimom {

/** What a client wants to see of a class besides its name and properties. */
struct ClassDetails {
    bool qualifiers = true;
    /** The class that declares each property: always this one, as no class has a superclass. */
    bool origin = false;
};

/**
 * A class as clients see it. Its qualifiers (DSP0004) are Association for a class with a reference key, Key
 * for a key, and Write for a property that the site writes. What the catalogue describes also has
 * Description, and as far as they apply Units, ValueMap and Values.
 */
OpenWBEM::CIMClass classObject(const ClassDeclaration& declaration, const ClassDetails& details);

} // namespace cimom
#endif

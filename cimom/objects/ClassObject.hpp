#ifndef CIMOM_OBJECTS_CLASS_OBJECT_HPP_INCLUDED
#define CIMOM_OBJECTS_CLASS_OBJECT_HPP_INCLUDED
#include "OW_CIMClass.hpp"
#include "objects/Provider.hpp"

namespace cimom {

/** What a client wants to see of a class beside its name and its properties. */
struct ClassDetails {
    /** The qualifiers: Key, and of what the site may write Write (DSP0004); Association of a class whose keys
     * are references. */
    bool qualifiers = true;
    /** Which class a property comes from: this one, since none has a superclass. */
    bool origin = false;
};

/** A class as clients see it. */
OpenWBEM::CIMClass classObject(const ClassDeclaration& declaration, const ClassDetails& details);

} // namespace cimom
#endif

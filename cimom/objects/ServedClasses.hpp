#ifndef CIMOM_OBJECTS_SERVED_CLASSES_HPP_INCLUDED
#define CIMOM_OBJECTS_SERVED_CLASSES_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "objects/Provider.hpp"

#include <map>
#include <string>
#include <vector>

namespace cimom {

/** The classes that there are instances of. */
class ServedClasses {
public:
    /** None. */
    ServedClasses() = default;
    /** @param classes must outlive this object */
    explicit ServedClasses(const std::vector<const ClassDeclaration*>& classes);

    /** The class of a name, whatever the case of its letters; null when it is not served. */
    const ClassDeclaration* find(const OpenWBEM::CIMName& name) const;

    /**
     * The path of an instance in the one spelling that all paths of it share: namespace, class and keys as
     * they are declared, values of the declared types, and so within references that are keys. Keys that
     * the class does not have are left out, and so is the host.
     *
     * Throws CIMException INVALID_CLASS, INVALID_PARAMETER when a key has no value, TYPE_MISMATCH.
     */
    OpenWBEM::CIMObjectPath canonical(const OpenWBEM::CIMObjectPath& path) const;

    /**
     * Reads the path of an instance, `[<namespace>:]<class>.<key>="<value>",...`, in its one spelling.
     * Unlike CIMObjectPath::parse(), a path without a namespace may have colons in its values.
     *
     * Throws CIMException as canonical(), and INVALID_PARAMETER or NOT_FOUND for a text that is no path.
     */
    OpenWBEM::CIMObjectPath read(const std::string& text) const;

private:
    OpenWBEM::CIMValue canonicalReference(const OpenWBEM::CIMValue& value) const;

    std::map<OpenWBEM::CIMName, const ClassDeclaration*> m_classes; // by name
};

} // namespace cimom
#endif

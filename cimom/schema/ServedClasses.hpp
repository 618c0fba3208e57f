#ifndef CIMOM_SCHEMA_SERVED_CLASSES_HPP_INCLUDED
#define CIMOM_SCHEMA_SERVED_CLASSES_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "schema/ClassDeclaration.hpp"

#include <map>
#include <string>
#include <vector>

namespace cimom {

/** The served classes by name, and the canonical form of the paths of their instances. */
class ServedClasses {
public:
    /** No class. */
    ServedClasses() = default;
    /** @param classes must outlive this object */
    explicit ServedClasses(const std::vector<const ClassDeclaration*>& classes);

    /** The class of a name, in any case; null if it is not served. */
    const ClassDeclaration* find(const OpenWBEM::CIMName& name) const;

    /**
     * The canonical form of a path: namespace, class and keys as they are declared, values of the declared
     * types, and the same within references that are keys. Names that are no properties of the class and the
     * host are dropped.
     *
     * Throws CIMException: INVALID_CLASS, INVALID_PARAMETER if a key has no value, TYPE_MISMATCH.
     */
    OpenWBEM::CIMObjectPath canonical(const OpenWBEM::CIMObjectPath& path) const;

    /**
     * Reads the path of an instance, `[<namespace>:]<class>.<key>="<value>",...`, into its canonical form.
     * Unlike CIMObjectPath::parse() it accepts a path without namespace whose values hold colons.
     *
     * Throws CIMException like canonical(), and INVALID_PARAMETER or NOT_FOUND if the text is not a path.
     */
    OpenWBEM::CIMObjectPath read(const std::string& text) const;

private:
    OpenWBEM::CIMValue canonicalReference(const OpenWBEM::CIMValue& value) const;

    std::map<OpenWBEM::CIMName, const ClassDeclaration*> m_classes; // by name
};

} // namespace cimom
#endif

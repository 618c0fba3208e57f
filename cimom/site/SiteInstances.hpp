#ifndef CIMOM_SITE_SITE_INSTANCES_HPP_INCLUDED
#define CIMOM_SITE_SITE_INSTANCES_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "objects/InstanceSource.hpp"
#include "objects/Provider.hpp"
#include "objects/ServedClasses.hpp"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cimom {

/**
 * The instances that a site declares in files, for what the host cannot tell. The files are the *.json of a
 * folder, in the order of the bytes of their names; those that begin with a dot, other files and folders
 * are left alone. Each holds an object of classes, whose values are arrays of instances, which are objects
 * of properties:
 *
 *     { "QAV_System": [ { "Name": "node-1", "CreationClassName": "QAV_System", "SysServices": 72 } ] }
 *
 * Names of classes and properties may be in any case of their letters; for values see valueOf(). A property
 * that is left out is null. Every key has a value, and no two instances of a class have the same keys.
 */
class SiteInstances {
public:
    /** None. */
    SiteInstances() = default;
    /**
     * Reads a folder.
     *
     * @param classes those that may have instances; must outlive this object
     *
     * Throws std::runtime_error that says `<path>:<line>: <why>` for a file that does not hold that, and
     * `<path>: <why>` when the folder or a file cannot be read.
     */
    SiteInstances(const std::string& folder, const std::vector<const ClassDeclaration*>& classes);

    /**
     * The instances of a class, in their order, each with every declared property. The source may outlive
     * this object.
     */
    InstanceSource instances(const ClassDeclaration& declaration) const;

    /**
     * The instance that a path leads to, however the path is spelled: case of names, order of keys,
     * namespace, numbers or references as text. Null when there is none.
     */
    OpenWBEM::CIMInstance find(const OpenWBEM::CIMObjectPath& path) const;

    /** Those of one class; shared with the sources that hand them out. */
    class OfClass;

private:
    ServedClasses m_classes;
    std::map<std::string, std::shared_ptr<const OfClass>> m_byClass; // by the declared name
};

} // namespace cimom
#endif

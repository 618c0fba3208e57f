#ifndef CIMOM_SITE_SITE_INSTANCES_HPP_INCLUDED
#define CIMOM_SITE_SITE_INSTANCES_HPP_INCLUDED
#include "OW_CIMObjectPath.hpp"
#include "schema/ClassDeclaration.hpp"
#include "schema/InstanceSource.hpp"
#include "schema/ServedClasses.hpp"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cimom {

/**
 * The instances that a site declares in the files *.json of a directory, for data that the host does not
 * have. The files are read in the byte order of their names. Hidden files, other files and subdirectories are
 * ignored. A file holds an object whose members are classes; a class is an array of instances; an instance is
 * an object of properties:
 *
 *     { "QAV_System": [ { "Name": "node-1", "CreationClassName": "QAV_System", "SysServices": 72 } ] }
 *
 * The case of class and property names does not matter; for values see valueOf(). An omitted property is
 * null. Every key needs a value, and no two instances of a class have the same keys.
 */
class SiteInstances {
public:
    /** No instances. */
    SiteInstances() = default;
    /**
     * Reads a directory.
     *
     * @param classes the classes that may have instances; must outlive this object
     *
     * Throws std::runtime_error: `<path>:<line>: <why>` for an invalid file, `<path>: <why>` if the directory
     * or a file cannot be read.
     */
    SiteInstances(const std::string& directory, const std::vector<const ClassDeclaration*>& classes);

    /**
     * The instances of a class in the order of the files, each with every declared property. The source may
     * outlive this object.
     */
    std::unique_ptr<InstanceSource> instances(const ClassDeclaration& declaration) const;

    /** The instance of a path, which need not be in canonical form. Null if there is none. */
    OpenWBEM::CIMInstance find(const OpenWBEM::CIMObjectPath& path) const;

    /** The instances of one class; shared with the sources that hand them out. */
    class OfClass;

private:
    ServedClasses m_classes;
    std::map<std::string, std::shared_ptr<const OfClass>> m_byClass; // by the declared name
};

} // namespace cimom
#endif

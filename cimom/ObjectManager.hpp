#ifndef CIMOM_OBJECT_MANAGER_HPP_INCLUDED
#define CIMOM_OBJECT_MANAGER_HPP_INCLUDED
#include "Access.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "Provider.hpp"
#include "state/SiteValues.hpp"

#include <memory>
#include <string>
#include <vector>

namespace cimom {

/** Names of the properties that a client wants. */
using PropertyList = std::vector<OpenWBEM::CIMName>;

/** Hands out paths as InstanceSource hands out instances. */
using PathSource = std::function<OpenWBEM::CIMObjectPath()>;

/**
 * The CIM operations on the classes of the providers, which all live in namespace root/cimv2 and have no
 * subclasses. Instances carry what their provider tells and what the site has written.
 *
 * An operation that cannot be done throws CIMException with the status code of DSP0200. Namespaces and class
 * names are taken in any case of their letters; leading slashes of a namespace do not matter.
 */
class ObjectManager {
public:
    explicit ObjectManager(std::vector<std::unique_ptr<Provider>> providers,
                           SiteValues siteValues = SiteValues());

    /**
     * All instances of a class. The source may be used as long as the object manager lives.
     *
     * @param wanted the properties that the instances shall carry, all when null; names of others are ignored
     */
    InstanceSource enumerateInstances(const std::string& nameSpace, const OpenWBEM::CIMName& className,
                                      const PropertyList* wanted) const;

    /** The paths of all instances of a class. */
    PathSource enumerateInstanceNames(const std::string& nameSpace, const OpenWBEM::CIMName& className) const;

    /**
     * The instance with the keys of a path, whose own namespace is ignored, and so are keys that the class
     * does not have. INVALID_PARAMETER when a key has no value, NOT_FOUND when no instance has these keys.
     */
    OpenWBEM::CIMInstance getInstance(const std::string& nameSpace, const OpenWBEM::CIMObjectPath& path,
                                      const PropertyList* wanted) const;

    /**
     * Writes the site's properties of the instance that the key properties of `modified` name; all of them
     * or, when anything is wrong, none. Values are converted to the types of their properties. Properties
     * that `modified` does not carry stay as they are; one that the class does not have is left out and
     * logged.
     *
     * ACCESS_DENIED for a client that may not write; INVALID_PARAMETER and NOT_FOUND as getInstance();
     * TYPE_MISMATCH for a value that does not convert; NOT_SUPPORTED for another value of a property that
     * tells the host's state; FAILED when the values cannot be kept.
     *
     * @param listed the only properties that shall be written, all when null
     */
    void modifyInstance(const std::string& nameSpace, const OpenWBEM::CIMInstance& modified,
                        const PropertyList* listed, Access access);

private:
    const Provider& providerOf(const std::string& nameSpace, const OpenWBEM::CIMName& className) const;
    InstanceSource instancesOf(const Provider& provider) const;
    void layWritten(OpenWBEM::CIMInstance& instance, const ClassDeclaration& declaration) const;
    OpenWBEM::CIMInstance instanceAt(const OpenWBEM::CIMObjectPath& path, const Provider& provider) const;

    std::vector<std::unique_ptr<Provider>> m_providers;
    SiteValues m_siteValues;
};

} // namespace cimom
#endif

#ifndef CIMOM_OBJECTS_OBJECT_MANAGER_HPP_INCLUDED
#define CIMOM_OBJECTS_OBJECT_MANAGER_HPP_INCLUDED
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "objects/Access.hpp"
#include "objects/ClassObject.hpp"
#include "objects/Provider.hpp"
#include "objects/ServedClasses.hpp"
#include "site/SiteInstances.hpp"
#include "state/SiteValues.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** Names of the properties that a client wants. */
using PropertyList = std::vector<OpenWBEM::CIMName>;

/** Whether the properties of instances say which class they come from: their own, since none has a
 * superclass. */
enum class ClassOrigin { excluded, included };

/** A property list as ObjectManager takes it. Valid as long as the list. */
inline const PropertyList* orNull(const std::optional<PropertyList>& list) {
    return list ? &*list : nullptr;
}

/** Hands out paths as InstanceSource hands out instances. */
using PathSource = std::function<OpenWBEM::CIMObjectPath()>;

/**
 * The CIM operations on the classes of the providers, which all live in namespace root/cimv2 and have no
 * subclasses. Instances are those that a provider tells and those that the site declares, which take the
 * place of a provider's with the same keys; over both lies what has been written.
 *
 * An operation that cannot be done throws CIMException with the status code of DSP0200. Namespaces and class
 * names are taken in any case of their letters; leading slashes of a namespace do not matter.
 */
class ObjectManager {
public:
    /** @param siteValues what has been written; absent to refuse all writes */
    explicit ObjectManager(std::vector<std::unique_ptr<Provider>> providers,
                           std::optional<SiteValues> siteValues = SiteValues());

    /** The classes, as long as the object manager lives. */
    std::vector<const ClassDeclaration*> declarations() const;
    /** Replaces the instances that the site declares, of which there are none at first. Enumerations that are
     * under way go on with the old ones. */
    void setSiteInstances(SiteInstances instances);

    /**
     * All instances of a class. The source may be used as long as the object manager lives.
     *
     * @param wanted the properties that the instances shall carry, all when null; names of others are ignored
     */
    InstanceSource enumerateInstances(const std::string& nameSpace, const OpenWBEM::CIMName& className,
                                      const PropertyList* wanted,
                                      ClassOrigin origin = ClassOrigin::excluded) const;

    /** The paths of all instances of a class. */
    PathSource enumerateInstanceNames(const std::string& nameSpace, const OpenWBEM::CIMName& className) const;

    /**
     * The instance with the keys of a path, whose own namespace is ignored. INVALID_PARAMETER when a key has
     * no value, NOT_FOUND when no instance has these keys or the class does not have one of them.
     */
    OpenWBEM::CIMInstance getInstance(const std::string& nameSpace, const OpenWBEM::CIMObjectPath& path,
                                      const PropertyList* wanted,
                                      ClassOrigin origin = ClassOrigin::excluded) const;

    /** The value of a property of that instance; NO_SUCH_PROPERTY when its class does not have it. */
    OpenWBEM::CIMValue getProperty(const std::string& nameSpace, const OpenWBEM::CIMObjectPath& path,
                                   const OpenWBEM::CIMName& property) const;

    /** A class, with the wanted properties. NOT_FOUND when there is none of the name. */
    OpenWBEM::CIMClass getClass(const std::string& nameSpace, const OpenWBEM::CIMName& className,
                                const ClassDetails& details, const PropertyList* wanted) const;

    /** All classes, or the subclasses of one when it is named: there are none. */
    std::vector<OpenWBEM::CIMClass> enumerateClasses(const std::string& nameSpace,
                                                     const OpenWBEM::CIMName& superClass,
                                                     const ClassDetails& details) const;

    /**
     * Writes the site's properties of the instance that the keys of `modified`, or its properties of the
     * same names, name; all of them or, when anything is wrong, none. Values are converted to the types of
     * their properties. Properties that `modified` does not carry stay as they are; one that the class does
     * not have is left out and logged.
     *
     * ACCESS_DENIED for a client that may not write; INVALID_PARAMETER when a key has no value or the class
     * does not have a listed property; NOT_FOUND when no instance has these keys; TYPE_MISMATCH for a value
     * that does not convert; NOT_SUPPORTED for another value of a property that tells the host's state, and
     * for every write when all are refused; FAILED when the values cannot be kept.
     *
     * @param listed the only properties that shall be written, all when null
     */
    void modifyInstance(const std::string& nameSpace, const OpenWBEM::CIMInstance& modified,
                        const PropertyList* listed, Access access);

private:
    void requireNameSpace(const std::string& nameSpace) const;
    const Provider&
    providerOf(const std::string& nameSpace, const OpenWBEM::CIMName& className,
               OpenWBEM::CIMException::ErrNoType whenUnknown = OpenWBEM::CIMException::INVALID_CLASS) const;
    InstanceSource liveInstancesOf(const Provider& provider) const;
    InstanceSource instancesOf(const Provider& provider) const;
    void layWritten(OpenWBEM::CIMInstance& instance, const ClassDeclaration& declaration) const;
    OpenWBEM::CIMInstance instanceAt(const OpenWBEM::CIMObjectPath& path, const Provider& provider) const;

    std::vector<std::unique_ptr<Provider>> m_providers;
    ServedClasses m_classes;
    std::optional<SiteValues> m_siteValues;
    std::shared_ptr<const SiteInstances> m_siteInstances; // shared with the enumerations under way
};

} // namespace cimom
#endif

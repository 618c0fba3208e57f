#ifndef CIMOM_OBJECTS_OBJECT_MANAGER_HPP_INCLUDED
#define CIMOM_OBJECTS_OBJECT_MANAGER_HPP_INCLUDED
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "objects/Access.hpp"
#include "providers/Provider.hpp"
#include "schema/ClassObject.hpp"
#include "schema/InstanceSource.hpp"
#include "schema/PropertyFilter.hpp"
#include "schema/ServedClasses.hpp"
#include "site/SiteInstances.hpp"
#include "state/SiteValues.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** Hands out the paths of instances. */
using PathSource = Source<OpenWBEM::CIMObjectPath>;

/**
 * The CIM operations on the classes of the providers, which are all in namespace root/cimv2 and have no
 * subclasses. Instances come from the providers and from the site; an instance of the site replaces one of a
 * provider with the same keys. Written values override the values of both.
 *
 * An operation that fails throws CIMException with a status code of DSP0200. The case of namespaces and class
 * names does not matter, nor do leading slashes of a namespace. Sources that operations return may be used as
 * long as the object manager lives.
 */
class ObjectManager {
public:
    /** @param siteValues the written values; absent to reject all writes */
    explicit ObjectManager(std::vector<Provider> providers,
                           std::optional<SiteValues> siteValues = SiteValues());

    /** The served classes. Valid as long as the object manager lives. */
    std::vector<const ClassDeclaration*> declarations() const;
    /** Replaces the instances of the site; at first there are none. Enumerations under way keep the old ones.
     */
    void setSiteInstances(SiteInstances instances);

    /**
     * All instances of a class.
     *
     * @param wanted the properties that the instances shall carry; null for all; undeclared names are ignored
     */
    std::unique_ptr<InstanceSource> enumerateInstances(const std::string& nameSpace,
                                                       const OpenWBEM::CIMName& className,
                                                       const PropertyList* wanted,
                                                       ClassOrigin origin = ClassOrigin::excluded) const;

    /** The paths of all instances of a class. */
    std::unique_ptr<PathSource> enumerateInstanceNames(const std::string& nameSpace,
                                                       const OpenWBEM::CIMName& className) const;

    /**
     * The instance with the keys of a path. The namespace of the path is ignored. INVALID_PARAMETER if a key
     * has no value, NOT_FOUND if no instance has these keys or the class does not declare one of them.
     */
    OpenWBEM::CIMInstance getInstance(const std::string& nameSpace, const OpenWBEM::CIMObjectPath& path,
                                      const PropertyList* wanted,
                                      ClassOrigin origin = ClassOrigin::excluded) const;

    /** The value of a property of that instance; NO_SUCH_PROPERTY if its class does not declare it. */
    OpenWBEM::CIMValue getProperty(const std::string& nameSpace, const OpenWBEM::CIMObjectPath& path,
                                   const OpenWBEM::CIMName& property) const;

    /** A class with the wanted properties. NOT_FOUND if it is not served. */
    OpenWBEM::CIMClass getClass(const std::string& nameSpace, const OpenWBEM::CIMName& className,
                                const ClassDetails& details, const PropertyList* wanted) const;

    /** All classes; with a superclass, its subclasses, of which there are none. */
    std::vector<OpenWBEM::CIMClass> enumerateClasses(const std::string& nameSpace,
                                                     const OpenWBEM::CIMName& superClass,
                                                     const ClassDetails& details) const;

    /**
     * Writes properties of role site: all of them or, on any error, none. The keys of `modified`, or its
     * properties of the same names, identify the instance. Values are converted to the declared types.
     * Properties that `modified` does not carry keep their values; undeclared ones are skipped and logged.
     *
     * ACCESS_DENIED for a client that may not write; INVALID_PARAMETER if a key has no value or the class
     * does not declare a listed property; NOT_FOUND if no instance has these keys; TYPE_MISMATCH for a value
     * that does not convert; NOT_SUPPORTED for a new value of a property of another role, and if all writes
     * are rejected; FAILED if the values cannot be saved.
     *
     * @param listed the properties to write; null for all
     */
    void modifyInstance(const std::string& nameSpace, const OpenWBEM::CIMInstance& modified,
                        const PropertyList* listed, Access access);

private:
    class Enumeration;
    class PathEnumeration;

    void requireNamespace(const std::string& nameSpace) const;
    const Provider&
    providerOf(const std::string& nameSpace, const OpenWBEM::CIMName& className,
               OpenWBEM::CIMException::ErrNoType whenUnknown = OpenWBEM::CIMException::INVALID_CLASS) const;
    void applyOverrides(OpenWBEM::CIMInstance& instance, const ClassDeclaration& declaration) const;
    OpenWBEM::CIMInstance instanceAt(const OpenWBEM::CIMObjectPath& path, const Provider& provider) const;

    std::vector<Provider> m_providers;
    ServedClasses m_classes;
    std::optional<SiteValues> m_siteValues;
    std::shared_ptr<const SiteInstances> m_siteInstances; // shared with the enumerations under way
};

} // namespace cimom
#endif

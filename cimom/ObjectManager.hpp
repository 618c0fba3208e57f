#ifndef CIMOM_OBJECT_MANAGER_HPP_INCLUDED
#define CIMOM_OBJECT_MANAGER_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "Provider.hpp"

#include <memory>
#include <string>
#include <vector>

namespace cimom {

/** Names of the properties that a client wants. */
using PropertyList = std::vector<OpenWBEM::CIMName>;

/**
 * The CIM operations on the classes of the providers, which all live in namespace root/cimv2 and have no
 * subclasses. An operation that cannot be done throws CIMException with the status code of DSP0200.
 */
class ObjectManager {
public:
    explicit ObjectManager(std::vector<std::unique_ptr<Provider>> providers);

    /**
     * All instances of a class.
     *
     * @param nameSpace in any case of its letters; leading slashes do not matter
     * @param className in any case of its letters
     * @param wanted the properties that the instances shall carry, all when null; names of others are ignored
     */
    std::vector<OpenWBEM::CIMInstance> enumerateInstances(const std::string& nameSpace,
                                                          const OpenWBEM::CIMName& className,
                                                          const PropertyList* wanted) const;

private:
    const Provider& providerOf(const std::string& nameSpace, const OpenWBEM::CIMName& className) const;

    std::vector<std::unique_ptr<Provider>> m_providers;
};

} // namespace cimom
#endif

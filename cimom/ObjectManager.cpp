#include "ObjectManager.hpp"

#include "OW_CIMException.hpp"

#include <algorithm>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

const char* const onlyNameSpace = "root/cimv2";

void keepWanted(CIMInstance& instance, const PropertyList& wanted) {
    const CIMPropertyArray all = instance.getProperties();
    CIMPropertyArray kept;
    for (const CIMProperty& property : all) {
        if (std::find(wanted.begin(), wanted.end(), CIMName(property.getName())) != wanted.end())
            kept.push_back(property);
    }
    instance.setProperties(kept);
}

} // namespace

ObjectManager::ObjectManager(std::vector<std::unique_ptr<Provider>> providers)
    : m_providers(std::move(providers)) {}

std::vector<CIMInstance> ObjectManager::enumerateInstances(const std::string& nameSpace,
                                                           const CIMName& className,
                                                           const PropertyList* wanted) const {
    std::vector<CIMInstance> instances = providerOf(nameSpace, className).instances();
    if (wanted) {
        for (CIMInstance& instance : instances)
            keepWanted(instance, *wanted);
    }
    return instances;
}

const Provider& ObjectManager::providerOf(const std::string& nameSpace, const CIMName& className) const {
    const std::string name = nameSpace.substr(std::min(nameSpace.find_first_not_of('/'), nameSpace.size()));
    if (name != onlyNameSpace)
        OW_THROWCIMMSG(CIMException::INVALID_NAMESPACE, name.c_str());
    for (const std::unique_ptr<Provider>& provider : m_providers) {
        if (className == CIMName(provider->declaration().name))
            return *provider;
    }
    const String description = String("/") + onlyNameSpace + ":" + className.toString();
    OW_THROWCIMMSG(CIMException::INVALID_CLASS, description.c_str());
}

} // namespace cimom

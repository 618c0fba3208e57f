#include "ObjectManager.hpp"

#include "OW_CIMException.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

const char* const onlyNameSpace = "root/cimv2";

/** Those of the listed names that the class declares. A client may list far more names than it declares. */
std::set<CIMName> declaredNames(const PropertyList& listed, const ClassDeclaration& declaration) {
    std::set<CIMName> declared;
    for (const PropertyDeclaration& property : declaration.properties)
        declared.insert(property.name);
    std::set<CIMName> names;
    for (const CIMName& name : listed) {
        if (declared.count(name) > 0)
            names.insert(name);
    }
    return names;
}

void keepWanted(CIMInstance& instance, const std::set<CIMName>& wanted) {
    const CIMPropertyArray all = instance.getProperties();
    CIMPropertyArray kept;
    for (const CIMProperty& property : all) {
        if (wanted.count(property.getName()) > 0)
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
    const Provider& provider = providerOf(nameSpace, className);
    std::vector<CIMInstance> instances = provider.instances();
    if (wanted) {
        const std::set<CIMName> names = declaredNames(*wanted, provider.declaration());
        for (CIMInstance& instance : instances)
            keepWanted(instance, names);
    }
    return instances;
}

const Provider& ObjectManager::providerOf(const std::string& nameSpace, const CIMName& className) const {
    const std::string name = nameSpace.substr(std::min(nameSpace.find_first_not_of('/'), nameSpace.size()));
    if (CIMName(name.c_str()) != CIMName(onlyNameSpace))
        OW_THROWCIMMSG(CIMException::INVALID_NAMESPACE, name.c_str());
    for (const std::unique_ptr<Provider>& provider : m_providers) {
        if (className == CIMName(provider->declaration().name))
            return *provider;
    }
    const String description = String("/") + onlyNameSpace + ":" + className.toString();
    OW_THROWCIMMSG(CIMException::INVALID_CLASS, description.c_str());
}

} // namespace cimom

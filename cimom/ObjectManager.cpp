#include "ObjectManager.hpp"

#include "Log.hpp"
#include "Modification.hpp"
#include "Naming.hpp"
#include "OW_CIMException.hpp"

#include <algorithm>
#include <exception>
#include <set>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

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

bool isOfTheSite(const PropertyDeclaration& declared) {
    return declared.role == Role::site;
}

CIMProperty property(const PropertyDeclaration& declared, const std::optional<std::string>& value) {
    if (!value)
        return CIMProperty(declared.name, declared.dataType());
    return CIMProperty(declared.name, CIMValue(String(value->data(), value->size())));
}

} // namespace

ObjectManager::ObjectManager(std::vector<std::unique_ptr<Provider>> providers, SiteValues siteValues)
    : m_providers(std::move(providers))
    , m_siteValues(std::move(siteValues)) {}

std::vector<CIMInstance> ObjectManager::enumerateInstances(const std::string& nameSpace,
                                                           const CIMName& className,
                                                           const PropertyList* wanted) const {
    const Provider& provider = providerOf(nameSpace, className);
    std::vector<CIMInstance> instances = instancesOf(provider);
    if (wanted) {
        const std::set<CIMName> names = declaredNames(*wanted, provider.declaration());
        for (CIMInstance& instance : instances)
            keepWanted(instance, names);
    }
    return instances;
}

std::vector<CIMObjectPath> ObjectManager::enumerateInstanceNames(const std::string& nameSpace,
                                                                 const CIMName& className) const {
    std::vector<CIMObjectPath> paths;
    for (const CIMInstance& instance : providerOf(nameSpace, className).instances())
        paths.push_back(pathOf(instance));
    return paths;
}

CIMInstance ObjectManager::getInstance(const std::string& nameSpace, const CIMObjectPath& path,
                                       const PropertyList* wanted) const {
    const Provider& provider = providerOf(nameSpace, path.getClassName());
    CIMInstance instance = instanceAt(pathNamedBy(path.getKeys(), provider.declaration()), provider);
    if (wanted)
        keepWanted(instance, declaredNames(*wanted, provider.declaration()));
    return instance;
}

void ObjectManager::modifyInstance(const std::string& nameSpace, const CIMInstance& modified,
                                   const PropertyList* listed, Access access) {
    if (access != Access::write)
        OW_THROWCIMMSG(CIMException::ACCESS_DENIED, "only root and the object manager's own user may write");
    const Provider& provider = providerOf(nameSpace, modified.getClassName());
    const CIMObjectPath path = pathNamedBy(modified.getProperties(), provider.declaration());
    const CIMInstance present = instanceAt(path, provider);
    const SiteValues::Values changes = valuesToWrite(modified, listed, present, provider.declaration());
    try {
        m_siteValues.write(path.modelPath().c_str(), changes);
    } catch (const std::exception& e) {
        const std::string why = std::string("keeping the values: ") + e.what();
        log(why); // a client like the library does not tell its user
        OW_THROWCIMMSG(CIMException::FAILED, why.c_str());
    }
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

/** What the provider tells, and over it what the site has written. */
std::vector<CIMInstance> ObjectManager::instancesOf(const Provider& provider) const {
    std::vector<CIMInstance> instances = provider.instances();
    const std::vector<PropertyDeclaration>& properties = provider.declaration().properties;
    if (std::none_of(properties.begin(), properties.end(), isOfTheSite))
        return instances;
    for (CIMInstance& instance : instances) {
        const SiteValues::Values* const written = m_siteValues.find(pathOf(instance).modelPath().c_str());
        if (!written)
            continue;
        for (const PropertyDeclaration& declared : properties) {
            const auto value = written->find(declared.name);
            if (isOfTheSite(declared) && value != written->end())
                instance.setProperty(property(declared, value->second));
        }
    }
    return instances;
}

CIMInstance ObjectManager::instanceAt(const CIMObjectPath& path, const Provider& provider) const {
    for (CIMInstance& instance : instancesOf(provider)) {
        if (pathOf(instance) == path)
            return instance;
    }
    OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
}

} // namespace cimom

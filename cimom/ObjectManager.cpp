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

InstanceSource ObjectManager::enumerateInstances(const std::string& nameSpace, const CIMName& className,
                                                 const PropertyList* wanted) const {
    const Provider& provider = providerOf(nameSpace, className);
    InstanceSource next = instancesOf(provider);
    if (!wanted)
        return next;
    return [next = std::move(next), names = declaredNames(*wanted, provider.declaration())] {
        CIMInstance instance = next();
        if (instance)
            keepWanted(instance, names);
        return instance;
    };
}

PathSource ObjectManager::enumerateInstanceNames(const std::string& nameSpace,
                                                 const CIMName& className) const {
    return [next = instancesOf(providerOf(nameSpace, className))] {
        const CIMInstance instance = next();
        return instance ? pathOf(instance) : CIMObjectPath(CIMNULL);
    };
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
InstanceSource ObjectManager::instancesOf(const Provider& provider) const {
    const std::vector<PropertyDeclaration>& properties = provider.declaration().properties;
    InstanceSource next = provider.instances();
    if (std::none_of(properties.begin(), properties.end(), isOfTheSite))
        return next;
    return [this, next = std::move(next), &provider] {
        CIMInstance instance = next();
        if (instance)
            layWritten(instance, provider.declaration());
        return instance;
    };
}

void ObjectManager::layWritten(CIMInstance& instance, const ClassDeclaration& declaration) const {
    const SiteValues::Values* const written = m_siteValues.find(pathOf(instance).modelPath().c_str());
    if (!written)
        return;
    for (const PropertyDeclaration& declared : declaration.properties) {
        const auto value = written->find(declared.name);
        if (isOfTheSite(declared) && value != written->end())
            instance.setProperty(property(declared, value->second));
    }
}

CIMInstance ObjectManager::instanceAt(const CIMObjectPath& path, const Provider& provider) const {
    const InstanceSource next = instancesOf(provider);
    while (const CIMInstance instance = next()) {
        if (pathOf(instance) == path)
            return instance;
    }
    OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
}

} // namespace cimom

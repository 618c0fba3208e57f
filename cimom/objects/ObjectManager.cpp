#include "objects/ObjectManager.hpp"

#include "OW_CIMException.hpp"
#include "objects/Modification.hpp"
#include "objects/Naming.hpp"
#include "system/Log.hpp"

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

CIMPropertyArray wantedOf(const CIMPropertyArray& all, const std::set<CIMName>& wanted) {
    CIMPropertyArray kept;
    for (const CIMProperty& property : all) {
        if (wanted.count(property.getName()) > 0)
            kept.push_back(property);
    }
    return kept;
}

void keepWanted(CIMInstance& instance, const std::set<CIMName>& wanted) {
    instance.setProperties(wantedOf(instance.getProperties(), wanted));
}

void setOrigin(CIMInstance& instance, const ClassDeclaration& declaration) {
    CIMPropertyArray properties = instance.getProperties();
    for (CIMProperty& property : properties)
        property.setOriginClass(declaration.name);
    instance.setProperties(properties);
}

/** A key that the class does not have names no instance of it. */
void requireKeysOf(const ClassDeclaration& declaration, const CIMObjectPath& path) {
    for (const CIMProperty& key : path.getKeys()) {
        const PropertyDeclaration* const declared = find(declaration, key.getName());
        if (!declared || declared->role != Role::key)
            OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
    }
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

ObjectManager::ObjectManager(std::vector<std::unique_ptr<Provider>> providers,
                             std::optional<SiteValues> siteValues)
    : m_providers(std::move(providers))
    , m_classes(declarations())
    , m_siteValues(std::move(siteValues))
    , m_siteInstances(std::make_shared<const SiteInstances>()) {}

std::vector<const ClassDeclaration*> ObjectManager::declarations() const {
    std::vector<const ClassDeclaration*> all;
    for (const std::unique_ptr<Provider>& provider : m_providers)
        all.push_back(&provider->declaration());
    return all;
}

void ObjectManager::setSiteInstances(SiteInstances instances) {
    m_siteInstances = std::make_shared<const SiteInstances>(std::move(instances));
}

InstanceSource ObjectManager::enumerateInstances(const std::string& nameSpace, const CIMName& className,
                                                 const PropertyList* wanted, ClassOrigin origin) const {
    const Provider& provider = providerOf(nameSpace, className);
    InstanceSource next = instancesOf(provider);
    if (wanted)
        next = eachWith(std::move(next), [names = declaredNames(*wanted, provider.declaration())](
                                             CIMInstance& instance) { keepWanted(instance, names); });
    if (origin == ClassOrigin::included)
        next = eachWith(std::move(next), [&declaration = provider.declaration()](CIMInstance& instance) {
            setOrigin(instance, declaration);
        });
    return next;
}

PathSource ObjectManager::enumerateInstanceNames(const std::string& nameSpace,
                                                 const CIMName& className) const {
    return [next = instancesOf(providerOf(nameSpace, className))] {
        const CIMInstance instance = next();
        return instance ? pathOf(instance) : CIMObjectPath(CIMNULL);
    };
}

CIMInstance ObjectManager::getInstance(const std::string& nameSpace, const CIMObjectPath& path,
                                       const PropertyList* wanted, ClassOrigin origin) const {
    const Provider& provider = providerOf(nameSpace, path.getClassName());
    requireKeysOf(provider.declaration(), path);
    CIMInstance instance = instanceAt(m_classes.canonical(path), provider);
    if (wanted)
        keepWanted(instance, declaredNames(*wanted, provider.declaration()));
    if (origin == ClassOrigin::included)
        setOrigin(instance, provider.declaration());
    return instance;
}

CIMValue ObjectManager::getProperty(const std::string& nameSpace, const CIMObjectPath& path,
                                    const CIMName& property) const {
    if (!find(providerOf(nameSpace, path.getClassName()).declaration(), property))
        OW_THROWCIMMSG(CIMException::NO_SUCH_PROPERTY, property.toString().c_str());
    return getInstance(nameSpace, path, nullptr).getPropertyValue(property);
}

CIMClass ObjectManager::getClass(const std::string& nameSpace, const CIMName& className,
                                 const ClassDetails& details, const PropertyList* wanted) const {
    // Of DSP0200 the one operation to which an unknown class is an object that is not there.
    const ClassDeclaration& declaration =
        providerOf(nameSpace, className, CIMException::NOT_FOUND).declaration();
    CIMClass result = classObject(declaration, details);
    if (wanted)
        result.setProperties(wantedOf(result.getAllProperties(), declaredNames(*wanted, declaration)));
    return result;
}

std::vector<CIMClass> ObjectManager::enumerateClasses(const std::string& nameSpace, const CIMName& superClass,
                                                      const ClassDetails& details) const {
    requireNameSpace(nameSpace);
    std::vector<CIMClass> classes;
    if (superClass != CIMName()) {
        providerOf(nameSpace, superClass);
        return classes;
    }
    for (const std::unique_ptr<Provider>& provider : m_providers)
        classes.push_back(classObject(provider->declaration(), details));
    return classes;
}

void ObjectManager::modifyInstance(const std::string& nameSpace, const CIMInstance& modified,
                                   const PropertyList* listed, Access access) {
    if (access != Access::write)
        OW_THROWCIMMSG(CIMException::ACCESS_DENIED,
                       "only root, the object manager's user and users not marked read-only may write");
    if (!m_siteValues)
        OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, "the object manager keeps no values (--no-state)");
    const Provider& provider = providerOf(nameSpace, modified.getClassName());
    CIMPropertyArray named = modified.getKeyValuePairs();
    named.appendArray(modified.getProperties());
    const CIMObjectPath path = m_classes.canonical(CIMObjectPath(modified.getClassName(), named));
    const CIMInstance present = instanceAt(path, provider);
    const SiteValues::Values changes = valuesToWrite(modified, listed, present, provider.declaration());
    try {
        m_siteValues->write(path.modelPath().c_str(), changes);
    } catch (const std::exception& e) {
        const std::string why = std::string("keeping the values: ") + e.what();
        log(why); // a client like the library does not tell its user
        OW_THROWCIMMSG(CIMException::FAILED, why.c_str());
    }
}

void ObjectManager::requireNameSpace(const std::string& nameSpace) const {
    const std::string name = nameSpace.substr(std::min(nameSpace.find_first_not_of('/'), nameSpace.size()));
    if (CIMName(name.c_str()) != CIMName(onlyNameSpace))
        OW_THROWCIMMSG(CIMException::INVALID_NAMESPACE, name.c_str());
}

const Provider& ObjectManager::providerOf(const std::string& nameSpace, const CIMName& className,
                                          CIMException::ErrNoType whenUnknown) const {
    requireNameSpace(nameSpace);
    for (const std::unique_ptr<Provider>& provider : m_providers) {
        if (className == CIMName(provider->declaration().name))
            return *provider;
    }
    const String description = String("/") + onlyNameSpace + ":" + className.toString();
    OW_THROWCIMMSG(whenUnknown, description.c_str());
}

/** What the provider tells, but for the instances that the site declares. */
InstanceSource ObjectManager::liveInstancesOf(const Provider& provider) const {
    return [next = provider.instances(), site = m_siteInstances] {
        CIMInstance instance = next();
        while (instance && site->find(pathOf(instance)))
            instance = next();
        return instance;
    };
}

/** Live ones and the site's, and over them what has been written. */
InstanceSource ObjectManager::instancesOf(const Provider& provider) const {
    const ClassDeclaration& declaration = provider.declaration();
    InstanceSource next = chained(liveInstancesOf(provider), m_siteInstances->instances(declaration));
    if (!m_siteValues ||
        std::none_of(declaration.properties.begin(), declaration.properties.end(), isOfTheSite))
        return next;
    return eachWith(std::move(next),
                    [this, &declaration](CIMInstance& instance) { layWritten(instance, declaration); });
}

void ObjectManager::layWritten(CIMInstance& instance, const ClassDeclaration& declaration) const {
    const SiteValues::Values* const written =
        m_siteValues ? m_siteValues->find(pathOf(instance).modelPath().c_str()) : nullptr;
    if (!written)
        return;
    for (const PropertyDeclaration& declared : declaration.properties) {
        const auto value = written->find(declared.name);
        if (isOfTheSite(declared) && value != written->end())
            instance.setProperty(property(declared, value->second));
    }
}

CIMInstance ObjectManager::instanceAt(const CIMObjectPath& path, const Provider& provider) const {
    if (CIMInstance declared = m_siteInstances->find(path)) {
        layWritten(declared, provider.declaration());
        return declared;
    }
    const InstanceSource next = provider.instances();
    while (CIMInstance live = next()) {
        if (pathOf(live) == path) {
            layWritten(live, provider.declaration());
            return live;
        }
    }
    OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
}

} // namespace cimom

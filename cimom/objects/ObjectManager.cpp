#include "objects/ObjectManager.hpp"

#include "OW_CIMException.hpp"
#include "objects/Modification.hpp"
#include "schema/Namespace.hpp"
#include "service/Log.hpp"

#include <algorithm>
#include <exception>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** No instance has a key that its class does not declare. */
void requireDeclaredKeys(const CIMObjectPath& path, const ClassDeclaration& declaration) {
    for (const CIMProperty& key : path.getKeys()) {
        const PropertyDeclaration* const declared = declaration.find(key.getName());
        if (!declared || declared->role != Role::key)
            OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
    }
}

CIMProperty property(const PropertyDeclaration& declared, const std::optional<std::string>& value) {
    if (!value)
        return CIMProperty(declared.name, declared.dataType());
    return CIMProperty(declared.name, CIMValue(String(value->data(), value->size())));
}

} // namespace

/** The instances of a class: those of its provider, then those of the site. */
class ObjectManager::Enumeration : public InstanceSource {
public:
    Enumeration(const ObjectManager& manager, const Provider& provider, PropertyFilter filter)
        : m_manager(manager)
        , m_declaration(*provider.declaration)
        , m_site(manager.m_siteInstances)
        , m_ofProvider(provider.instances())
        , m_ofSite(m_site->instances(m_declaration))
        , m_filter(std::move(filter)) {}

    CIMInstance next() override {
        CIMInstance instance = nextOfProvider();
        if (!instance)
            instance = m_ofSite->next();
        if (!instance)
            return instance;
        m_manager.applyOverrides(instance, m_declaration);
        m_filter.apply(instance);
        return instance;
    }

private:
    /** The next instance that the site does not replace. */
    CIMInstance nextOfProvider() {
        CIMInstance instance = m_ofProvider->next();
        while (instance && m_site->find(pathOf(instance)))
            instance = m_ofProvider->next();
        return instance;
    }

    const ObjectManager& m_manager;
    const ClassDeclaration& m_declaration;
    const std::shared_ptr<const SiteInstances> m_site;
    const std::unique_ptr<InstanceSource> m_ofProvider;
    const std::unique_ptr<InstanceSource> m_ofSite;
    const PropertyFilter m_filter;
};

class ObjectManager::PathEnumeration : public PathSource {
public:
    PathEnumeration(const ObjectManager& manager, const Provider& provider)
        : m_instances(manager, provider, PropertyFilter(*provider.declaration, nullptr)) {}

    CIMObjectPath next() override {
        const CIMInstance instance = m_instances.next();
        return instance ? pathOf(instance) : CIMObjectPath(CIMNULL);
    }

private:
    Enumeration m_instances;
};

ObjectManager::ObjectManager(std::vector<Provider> providers, std::optional<SiteValues> siteValues)
    : m_providers(std::move(providers))
    , m_classes(declarations())
    , m_siteValues(std::move(siteValues))
    , m_siteInstances(std::make_shared<const SiteInstances>()) {}

std::vector<const ClassDeclaration*> ObjectManager::declarations() const {
    std::vector<const ClassDeclaration*> all;
    for (const Provider& provider : m_providers)
        all.push_back(provider.declaration);
    return all;
}

void ObjectManager::setSiteInstances(SiteInstances instances) {
    m_siteInstances = std::make_shared<const SiteInstances>(std::move(instances));
}

std::unique_ptr<InstanceSource> ObjectManager::enumerateInstances(const std::string& nameSpace,
                                                                  const CIMName& className,
                                                                  const PropertyList* wanted,
                                                                  ClassOrigin origin) const {
    const Provider& provider = providerOf(nameSpace, className);
    return std::make_unique<Enumeration>(*this, provider,
                                         PropertyFilter(*provider.declaration, wanted, origin));
}

std::unique_ptr<PathSource> ObjectManager::enumerateInstanceNames(const std::string& nameSpace,
                                                                  const CIMName& className) const {
    return std::make_unique<PathEnumeration>(*this, providerOf(nameSpace, className));
}

CIMInstance ObjectManager::getInstance(const std::string& nameSpace, const CIMObjectPath& path,
                                       const PropertyList* wanted, ClassOrigin origin) const {
    const Provider& provider = providerOf(nameSpace, path.getClassName());
    requireDeclaredKeys(path, *provider.declaration);
    CIMInstance instance = instanceAt(m_classes.canonical(path), provider);
    PropertyFilter(*provider.declaration, wanted, origin).apply(instance);
    return instance;
}

CIMValue ObjectManager::getProperty(const std::string& nameSpace, const CIMObjectPath& path,
                                    const CIMName& property) const {
    if (!providerOf(nameSpace, path.getClassName()).declaration->find(property))
        OW_THROWCIMMSG(CIMException::NO_SUCH_PROPERTY, property.toString().c_str());
    return getInstance(nameSpace, path, nullptr).getPropertyValue(property);
}

CIMClass ObjectManager::getClass(const std::string& nameSpace, const CIMName& className,
                                 const ClassDetails& details, const PropertyList* wanted) const {
    // Only GetClass reports an unknown class as NOT_FOUND (DSP0200).
    const ClassDeclaration& declaration =
        *providerOf(nameSpace, className, CIMException::NOT_FOUND).declaration;
    CIMClass result = classObject(declaration, details);
    if (wanted)
        result.setProperties(PropertyFilter(declaration, wanted).wantedOf(result.getAllProperties()));
    return result;
}

std::vector<CIMClass> ObjectManager::enumerateClasses(const std::string& nameSpace, const CIMName& superClass,
                                                      const ClassDetails& details) const {
    requireNamespace(nameSpace);
    std::vector<CIMClass> classes;
    if (superClass != CIMName()) {
        providerOf(nameSpace, superClass);
        return classes;
    }
    for (const Provider& provider : m_providers)
        classes.push_back(classObject(*provider.declaration, details));
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
    const SiteValues::Values changes = valuesToWrite(modified, listed, present, *provider.declaration);
    try {
        m_siteValues->write(path.modelPath().c_str(), changes);
    } catch (const std::exception& e) {
        const std::string why = std::string("cannot save values: ") + e.what();
        service::log(why); // some clients do not show the description
        OW_THROWCIMMSG(CIMException::FAILED, why.c_str());
    }
}

void ObjectManager::requireNamespace(const std::string& nameSpace) const {
    const std::string name = nameSpace.substr(std::min(nameSpace.find_first_not_of('/'), nameSpace.size()));
    if (CIMName(name.c_str()) != CIMName(servedNamespace))
        OW_THROWCIMMSG(CIMException::INVALID_NAMESPACE, name.c_str());
}

const Provider& ObjectManager::providerOf(const std::string& nameSpace, const CIMName& className,
                                          CIMException::ErrNoType whenUnknown) const {
    requireNamespace(nameSpace);
    for (const Provider& provider : m_providers) {
        if (className == CIMName(provider.declaration->name))
            return provider;
    }
    const String description = String("/") + servedNamespace + ":" + className.toString();
    OW_THROWCIMMSG(whenUnknown, description.c_str());
}

/** Replaces the values of an instance that have been written. */
void ObjectManager::applyOverrides(CIMInstance& instance, const ClassDeclaration& declaration) const {
    const auto isWritable = [](const PropertyDeclaration& declared) { return declared.role == Role::site; };
    if (!m_siteValues ||
        std::none_of(declaration.properties.begin(), declaration.properties.end(), isWritable))
        return;
    const SiteValues::Values* const written = m_siteValues->find(pathOf(instance).modelPath().c_str());
    if (!written)
        return;
    for (const PropertyDeclaration& declared : declaration.properties) {
        const auto value = written->find(declared.name);
        if (isWritable(declared) && value != written->end())
            instance.setProperty(property(declared, value->second));
    }
}

CIMInstance ObjectManager::instanceAt(const CIMObjectPath& path, const Provider& provider) const {
    if (CIMInstance ofSite = m_siteInstances->find(path)) {
        applyOverrides(ofSite, *provider.declaration);
        return ofSite;
    }
    const std::unique_ptr<InstanceSource> instances = provider.instances();
    while (CIMInstance instance = instances->next()) {
        if (pathOf(instance) == path) {
            applyOverrides(instance, *provider.declaration);
            return instance;
        }
    }
    OW_THROWCIMMSG(CIMException::NOT_FOUND, path.toString().c_str());
}

} // namespace cimom

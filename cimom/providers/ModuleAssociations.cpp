#include "objects/Naming.hpp"
#include "providers/Association.hpp"
#include "providers/Modules.hpp"
#include "providers/Providers.hpp"

namespace cimom {
namespace {

std::vector<References> modulesAndChassis(const Host& host) {
    std::vector<References> pairs;
    for (const Module& module : modules(host))
        pairs.emplace_back(pathOf(namedModule(module).build()), pathOf(namedChassis().build()));
    return pairs;
}

std::vector<References> locationsAndModules(const Host& host) {
    std::vector<References> pairs;
    for (const Module& module : modules(host))
        pairs.emplace_back(pathOf(namedModuleLocation(module).build()), pathOf(namedModule(module).build()));
    return pairs;
}

} // namespace

/** An instance for each module: it is in the chassis. */
std::unique_ptr<Provider> makePackageDependency(const Host& host) {
    return std::make_unique<Association>(
        "QAV_XRUPackageDependency", AssociationEnd{"Dependent", "QAV_XRULogicalModule"},
        AssociationEnd{"Antecedent", "QAV_K70Chassis"}, [&host] { return modulesAndChassis(host); });
}

/** An instance for each module: it is in its place. */
std::unique_ptr<Provider> makeLogicalModuleLocation(const Host& host) {
    return std::make_unique<Association>("QAV_XRULogicalModuleLocation",
                                         AssociationEnd{"SameElement", "QAV_CoreTelephony_ModuleLocation"},
                                         AssociationEnd{"SystemElement", "QAV_XRULogicalModule"},
                                         [&host] { return locationsAndModules(host); });
}

} // namespace cimom

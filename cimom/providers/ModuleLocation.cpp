#include "providers/Modules.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

const ClassDeclaration& moduleLocationClass() {
    static const ClassDeclaration declaration{
        "QAV_CoreTelephony_ModuleLocation",
        {{"Key", CIMDataType::STRING, Role::key}, {"LocnXruType", CIMDataType::STRING}}};
    return declaration;
}

/** An instance for each place that a module is in: its name, and the kind of the module in words. */
class ModuleLocation : public Provider {
public:
    explicit ModuleLocation(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return moduleLocationClass(); }

    InstanceSource instances() const override {
        return eachOf(modules(m_host), [](const Module& each) {
            return namedModuleLocation(each).set("LocnXruType", CIMValue(each.kind)).build();
        });
    }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedModuleLocation(const Module& module) {
    InstanceBuilder instance(moduleLocationClass());
    instance.set("Key", CIMValue(module.location.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeModuleLocation(const Host& host) {
    return std::make_unique<ModuleLocation>(host);
}

} // namespace cimom

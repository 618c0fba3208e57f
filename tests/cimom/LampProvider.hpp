#ifndef TESTS_CIMOM_LAMP_PROVIDER_HPP
#define TESTS_CIMOM_LAMP_PROVIDER_HPP
#include "objects/InstanceBuilder.hpp"
#include "objects/ObjectManager.hpp"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/** A class that no host has: one instance for each colour. */
class LampProvider : public cimom::Provider {
public:
    explicit LampProvider(std::vector<std::string> colours)
        : m_colours(std::move(colours)) {}

    const cimom::ClassDeclaration& declaration() const override { return m_declaration; }
    cimom::InstanceSource instances() const override {
        return cimom::eachOf(m_colours, [this](const std::string& colour) {
            return cimom::InstanceBuilder(m_declaration)
                .set("Colour", std::optional<std::string>(colour))
                .set("Watts", OpenWBEM::CIMValue(OpenWBEM::UInt16{60}))
                .build();
        });
    }

private:
    using Type = OpenWBEM::CIMDataType;

    cimom::ClassDeclaration m_declaration{"QAV_Lamp",
                                          {{"Colour", Type::STRING, cimom::Role::key},
                                           {"Watts", Type::UINT16},
                                           {"LitSince", Type::DATETIME},
                                           {"Room", Type::STRING, cimom::Role::site},
                                           {"Owner", Type::STRING, cimom::Role::site}}};
    std::vector<std::string> m_colours;
};

/** A class of one instance with two keys, of which one is a number. */
class SocketProvider : public cimom::Provider {
public:
    const cimom::ClassDeclaration& declaration() const override { return m_declaration; }
    cimom::InstanceSource instances() const override {
        return cimom::only(cimom::InstanceBuilder(m_declaration)
                               .set("Wall", OpenWBEM::CIMValue("north"))
                               .set("Number", OpenWBEM::CIMValue(OpenWBEM::UInt32{7}))
                               .build());
    }

private:
    cimom::ClassDeclaration m_declaration{"QAV_Socket",
                                          {{"Wall", OpenWBEM::CIMDataType::STRING, cimom::Role::key},
                                           {"Number", OpenWBEM::CIMDataType::UINT32, cimom::Role::key},
                                           {"Label", OpenWBEM::CIMDataType::STRING, cimom::Role::site}}};
};

/** A class whose instances cannot be had. */
class BrokenProvider : public cimom::Provider {
public:
    const cimom::ClassDeclaration& declaration() const override { return m_declaration; }
    cimom::InstanceSource instances() const override { throw std::runtime_error("the lamp is broken"); }

private:
    cimom::ClassDeclaration m_declaration{"QAV_Broken", {}};
};

/** An object manager with the classes above. */
inline cimom::ObjectManager lampManager(std::vector<std::string> colours,
                                        cimom::SiteValues siteValues = cimom::SiteValues()) {
    std::vector<std::unique_ptr<cimom::Provider>> providers;
    providers.push_back(std::make_unique<BrokenProvider>());
    providers.push_back(std::make_unique<LampProvider>(std::move(colours)));
    providers.push_back(std::make_unique<SocketProvider>());
    return cimom::ObjectManager(std::move(providers), std::move(siteValues));
}

#endif

#ifndef TESTS_CIMOM_LAMP_PROVIDER_HPP
#define TESTS_CIMOM_LAMP_PROVIDER_HPP
#include "objects/ObjectManager.hpp"
#include "schema/InstanceBuilder.hpp"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/** A class that no host has. */
inline const cimom::ClassDeclaration lampClass{"QAV_Lamp",
                                               {{"Colour", OpenWBEM::CIMDataType::STRING, cimom::Role::key},
                                                {"Watts", OpenWBEM::CIMDataType::UINT16},
                                                {"LitSince", OpenWBEM::CIMDataType::DATETIME},
                                                {"Room", OpenWBEM::CIMDataType::STRING, cimom::Role::site},
                                                {"Owner", OpenWBEM::CIMDataType::STRING, cimom::Role::site}}};

inline OpenWBEM::CIMInstance lampInstance(const std::string& colour) {
    return cimom::InstanceBuilder(lampClass)
        .set("Colour", std::optional<std::string>(colour))
        .set("Watts", OpenWBEM::CIMValue(OpenWBEM::UInt16{60}))
        .build();
}

/** One lamp for each colour. */
inline cimom::Provider lampProvider(const std::vector<std::string>& colours) {
    return {&lampClass, [colours] { return cimom::eachOf(colours, lampInstance); }};
}

/** A class of one instance with two keys, one of them a number. */
inline const cimom::ClassDeclaration socketClass{
    "QAV_Socket",
    {{"Wall", OpenWBEM::CIMDataType::STRING, cimom::Role::key},
     {"Number", OpenWBEM::CIMDataType::UINT32, cimom::Role::key},
     {"Label", OpenWBEM::CIMDataType::STRING, cimom::Role::site}}};

inline cimom::Provider socketProvider() {
    return {&socketClass, [] {
                return cimom::only(cimom::InstanceBuilder(socketClass)
                                       .set("Wall", OpenWBEM::CIMValue("north"))
                                       .set("Number", OpenWBEM::CIMValue(OpenWBEM::UInt32{7}))
                                       .build());
            }};
}

/** A class whose provider fails. */
inline const cimom::ClassDeclaration brokenClass{"QAV_Broken", {}};

inline cimom::Provider brokenProvider() {
    return {&brokenClass, []() -> std::unique_ptr<cimom::InstanceSource> {
                throw std::runtime_error("the lamp is broken");
            }};
}

/** An object manager with the classes above. */
inline cimom::ObjectManager lampManager(const std::vector<std::string>& colours,
                                        cimom::SiteValues siteValues = cimom::SiteValues()) {
    return cimom::ObjectManager({brokenProvider(), lampProvider(colours), socketProvider()},
                                std::move(siteValues));
}

#endif

# Defines OpenWBEM::client, the client library that the bridge is built against, as OWB_OPENWBEM says.
# Sets OWB_CLIENT_IS_BUNDLED.
if(NOT OWB_OPENWBEM MATCHES "^(AUTO|SYSTEM|BUNDLED)$")
    message(FATAL_ERROR "OWB_OPENWBEM is '${OWB_OPENWBEM}'; it must be AUTO, SYSTEM or BUNDLED")
endif()

set(OWB_CLIENT_IS_BUNDLED TRUE)
if(NOT OWB_OPENWBEM STREQUAL "BUNDLED")
    find_package(OpenWBEM QUIET)
    if(OpenWBEM_FOUND)
        set(OWB_CLIENT_IS_BUNDLED FALSE)
    elseif(OpenWBEM_FAILURE AND OWB_OPENWBEM STREQUAL "SYSTEM")
        message(FATAL_ERROR "OWB_OPENWBEM=SYSTEM, but the OpenWBEM that was found does not do for "
                            "${CMAKE_SYSTEM_PROCESSOR}.\n${OpenWBEM_FAILURE}\n"
                            "Name another prefix with -DOpenWBEM_ROOT=DIR, or build with -DOWB_OPENWBEM=BUNDLED.")
    elseif(OpenWBEM_FAILURE)
        message(STATUS "The OpenWBEM that was found does not do for ${CMAKE_SYSTEM_PROCESSOR}.\n${OpenWBEM_FAILURE}")
    elseif(OWB_OPENWBEM STREQUAL "SYSTEM")
        message(FATAL_ERROR "OWB_OPENWBEM=SYSTEM, but no OpenWBEM 3.x for ${CMAKE_SYSTEM_PROCESSOR} was found.\n"
                            "Looked for: ${OpenWBEM_LOOKED_FOR}\n"
                            "Name its prefix with -DOpenWBEM_ROOT=DIR, or build with -DOWB_OPENWBEM=BUNDLED.")
    endif()
endif()

if(OWB_CLIENT_IS_BUNDLED)
    message(STATUS "Client library: bundled")
    add_library(OpenWBEM::client ALIAS owclient)
    # In folders of its own, so that it never meets an installed original.
    install(TARGETS owclient LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/owb
            COMPONENT library NAMELINK_COMPONENT development)
    install(DIRECTORY openwbem/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/owb/openwbem COMPONENT development)
else()
    message(STATUS "Client library: ${OpenWBEM_LIBRARY}")
    add_library(OpenWBEM::client ALIAS OpenWBEM_installed)
endif()

# Defines OpenWBEM::client, the client library that OWB_OPENWBEM chooses for the bridge. Sets OWB_CLIENT_IS_BUNDLED.
include(OwbFind)
owb_check_choice(OWB_OPENWBEM)

set(OWB_CLIENT_IS_BUNDLED TRUE)
if(NOT OWB_OPENWBEM STREQUAL "BUNDLED")
    find_package(OpenWBEM QUIET)
    if(OpenWBEM_FOUND)
        set(OWB_CLIENT_IS_BUNDLED FALSE)
    elseif(OpenWBEM_FAILURE AND OWB_OPENWBEM STREQUAL "SYSTEM")
        message(FATAL_ERROR "OWB_OPENWBEM=SYSTEM, but the OpenWBEM that was found is unusable for "
                            "${CMAKE_SYSTEM_PROCESSOR}.\n${OpenWBEM_FAILURE}\n"
                            "Name another prefix with -DOpenWBEM_ROOT=DIR, or build with -DOWB_OPENWBEM=BUNDLED.")
    elseif(OpenWBEM_FAILURE)
        message(STATUS "The OpenWBEM that was found is unusable for ${CMAKE_SYSTEM_PROCESSOR}.\n${OpenWBEM_FAILURE}")
    elseif(OWB_OPENWBEM STREQUAL "SYSTEM")
        message(FATAL_ERROR "OWB_OPENWBEM=SYSTEM, but no OpenWBEM 3.x for ${CMAKE_SYSTEM_PROCESSOR} was found.\n"
                            "Looked for: ${OpenWBEM_LOOKED_FOR}\n"
                            "Name its prefix with -DOpenWBEM_ROOT=DIR, or build with -DOWB_OPENWBEM=BUNDLED.")
    endif()
endif()

if(OWB_CLIENT_IS_BUNDLED)
    message(STATUS "Client library: bundled")
    add_library(OpenWBEM::client ALIAS owclient)
    add_library(owb::client ALIAS owclient)
    # In directories of its own, apart from an installed original.
    owb_install_library(owclient owb)
    if(OWB_HAS_TLS)
        install(TARGETS owtls LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/owb COMPONENT library)
    endif()
    owb_install_development(DIRECTORY openwbem/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/owb/openwbem)
else()
    message(STATUS "Client library: ${OpenWBEM_LIBRARY}")
    add_library(OpenWBEM::client ALIAS OpenWBEM_installed)
endif()

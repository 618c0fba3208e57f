# Installs what agents need only if the build is for agents (OwbPlatform.cmake).

# owb_install_development(ARGUMENTS...): install(), for the component development.
function(owb_install_development)
    if(OWB_FOR_AGENTS)
        install(${ARGN} COMPONENT development)
    endif()
endfunction()

# owb_install_library(TARGET [SUBDIRECTORY]): installs a shared library in the directory of libraries or below it. Private
# libraries of the programs are in owb/, and have no name to link to.
function(owb_install_library target)
    if(OWB_FOR_AGENTS)
        install(TARGETS ${target} EXPORT owb LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${ARGN}
                COMPONENT library NAMELINK_COMPONENT development)
    else()
        install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/owb COMPONENT library NAMELINK_SKIP)
    endif()
endfunction()

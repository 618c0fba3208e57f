# Defines Sblim::utilities, the library for running commands that OWB_SBLIM chooses. Sets OWB_SBLIM_IS_BUNDLED.
include(OwbFind)
owb_check_choice(OWB_SBLIM)

set(OWB_SBLIM_IS_BUNDLED TRUE)
if(NOT OWB_SBLIM STREQUAL "BUNDLED")
    set(SblimUtilities_HEADERS ${PROJECT_SOURCE_DIR}/sblim/include)
    find_package(SblimUtilities QUIET)
    if(SblimUtilities_FOUND)
        set(OWB_SBLIM_IS_BUNDLED FALSE)
    elseif(OWB_SBLIM STREQUAL "SYSTEM")
        message(FATAL_ERROR "OWB_SBLIM=SYSTEM, but no libSblimUtilities for ${CMAKE_SYSTEM_PROCESSOR} was found.\n"
                            "Looked for: ${SblimUtilities_LOOKED_FOR}\n"
                            "Name its prefix with -DSblimUtilities_ROOT=DIR, or build with -DOWB_SBLIM=BUNDLED.")
    endif()
endif()

if(OWB_SBLIM_IS_BUNDLED)
    message(STATUS "Utilities library: bundled")
    add_library(Sblim::utilities ALIAS SblimUtilities)
    # In the directory of the bundled client library, apart from an installed original.
    owb_install_library(SblimUtilities owb)
    owb_install_development(FILES sblim/include/sblim_utilities.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/owb)
else()
    message(STATUS "Utilities library: ${SblimUtilities_LIBRARY}")
    add_library(Sblim::utilities ALIAS SblimUtilities_installed)
endif()

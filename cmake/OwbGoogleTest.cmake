# Finds GoogleTest: an installed one for the target architecture, else Debian's source directory. Defines GTest::gtest and
# GTest::gtest_main. The version file of an installed one rejects other word sizes.
find_package(GTest CONFIG QUIET)
if(GTest_FOUND)
    message(STATUS "GoogleTest: ${GTest_DIR}")
    return()
endif()

set(source /usr/src/googletest)
if(NOT EXISTS ${source}/CMakeLists.txt)
    message(FATAL_ERROR "No GoogleTest for ${CMAKE_SYSTEM_PROCESSOR} was found; on Debian install googletest.")
endif()
message(STATUS "GoogleTest: ${source}")
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
add_subdirectory(${source} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library IN ITEMS gtest gtest_main)
    target_compile_options(${library} PRIVATE -O0 -g1) # compiles in a third of the time
endforeach()
unset(source)

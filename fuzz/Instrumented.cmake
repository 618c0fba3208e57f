# What is fuzzed, built once more from its sources: with coverage for libFuzzer, and under the sanitizers. Sets the lists
# of libraries that targets link.
add_library(fuzz_options INTERFACE)
target_compile_options(fuzz_options INTERFACE -O1 -fno-omit-frame-pointer -fsanitize=address,undefined,fuzzer-no-link
                       -fno-sanitize-recover=all)
target_link_options(fuzz_options INTERFACE -fsanitize=address,undefined)

# fuzz_sources(VARIABLE FOLDER TARGETS...) collects the sources of targets, which stand in a folder.
function(fuzz_sources variable folder)
    set(sources)
    foreach(part IN LISTS ARGN)
        get_target_property(part_sources ${part} SOURCES)
        list(TRANSFORM part_sources PREPEND ${folder}/)
        list(APPEND sources ${part_sources})
    endforeach()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

fuzz_sources(sources ${PROJECT_SOURCE_DIR}/openwbem openwbem_core openwbem_client)
add_library(fuzz_subject OBJECT ${sources})
target_include_directories(fuzz_subject PUBLIC $<TARGET_PROPERTY:openwbem_core,INTERFACE_INCLUDE_DIRECTORIES>)
target_include_directories(fuzz_subject SYSTEM PUBLIC ${Boost_INCLUDE_DIRS})
target_link_libraries(fuzz_subject PUBLIC fuzz_options owb_transport)

find_package(nlohmann_json 3.9 REQUIRED)
# The object manager without this host's data, which no client sends.
fuzz_sources(sources ${PROJECT_SOURCE_DIR}/cimom cimom_core cimom_users)
list(FILTER sources EXCLUDE REGEX "/cimom/(host|providers)/")
fuzz_sources(http_sources ${PROJECT_SOURCE_DIR}/http http)
fuzz_sources(util_sources ${PROJECT_SOURCE_DIR}/util lock_file)
add_library(fuzz_cimom OBJECT ${sources} ${http_sources} ${util_sources})
target_include_directories(fuzz_cimom PUBLIC ${PROJECT_SOURCE_DIR}/cimom ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(fuzz_cimom PUBLIC $<TARGET_PROPERTY:http,INTERFACE_COMPILE_DEFINITIONS>
                           $<TARGET_PROPERTY:cimom_core,INTERFACE_COMPILE_DEFINITIONS>)
target_link_libraries(fuzz_cimom PUBLIC fuzz_subject util Crypt::crypt peer_support
                      PRIVATE nlohmann_json::nlohmann_json)

# The bridge without the running software, which needs the inventory.
fuzz_sources(sources ${PROJECT_SOURCE_DIR}/owb owb)
list(FILTER sources EXCLUDE REGEX "/OWB_getSWRun")
add_library(fuzz_bridge OBJECT ${sources})
target_include_directories(fuzz_bridge PUBLIC ${PROJECT_SOURCE_DIR}/owb/include)
target_link_libraries(fuzz_bridge PUBLIC fuzz_subject)

# The inventory without its class, which runs the software inventory.
fuzz_sources(sources ${PROJECT_SOURCE_DIR}/inventory inventory_core)
list(FILTER sources EXCLUDE REGEX "/QAV_UnixProcessAPI")
add_library(fuzz_inventory OBJECT ${sources})
target_include_directories(fuzz_inventory PUBLIC ${PROJECT_SOURCE_DIR}/inventory/include ${PROJECT_SOURCE_DIR}/inventory/src)
target_link_libraries(fuzz_inventory PUBLIC fuzz_subject)

# What owbctl prints, without what it reads.
fuzz_sources(sources ${PROJECT_SOURCE_DIR}/owbctl owbctl_core)
list(FILTER sources INCLUDE REGEX
     "/owbctl/(formats/|output/(Output|Text)|agent/(Catalogue|Connection|Counter|Group|Number|Queue|Status)|doctor/Check\\.)")
add_library(fuzz_owbctl OBJECT ${sources})
target_include_directories(fuzz_owbctl PUBLIC ${PROJECT_SOURCE_DIR}/owbctl)
target_link_libraries(fuzz_owbctl PUBLIC fuzz_bridge nlohmann_json::nlohmann_json)

set(library_parts fuzz_subject)
set(manager_parts fuzz_cimom fuzz_subject)
set(bridge_parts fuzz_bridge fuzz_subject)
set(inventory_parts fuzz_inventory fuzz_subject)
set(owbctl_parts fuzz_owbctl fuzz_bridge fuzz_subject)

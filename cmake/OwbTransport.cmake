# Defines owb_transport, what the client links to for compression (zlib, needed) and TLS (OpenSSL, used where a
# build of it for the target is found). Sets OWB_HAS_TLS, for the whole build.
include(CMakePushCheckState)
include(CheckCXXSourceCompiles)

add_library(owb_transport INTERFACE)

# owb_links(RESULT TARGET SOURCE): whether a program links to an imported target. Libraries are found by name, those for
# another architecture too. Success is remembered, failure is not.
function(owb_links result target source)
    if(TARGET ${target})
        cmake_push_check_state(RESET)
        set(CMAKE_REQUIRED_LIBRARIES ${target})
        check_cxx_source_compiles("${source}" ${result})
        cmake_pop_check_state()
    endif()
    if(NOT TARGET ${target} OR NOT ${result})
        unset(${result} CACHE)
    endif()
endfunction()

find_package(ZLIB GLOBAL)
owb_links(OWB_ZLIB_LINKS ZLIB::ZLIB "
    #include <zlib.h>
    int main() { z_stream stream = {}; return inflateInit(&stream); }")
if(NOT OWB_ZLIB_LINKS)
    message(FATAL_ERROR "No zlib for ${CMAKE_SYSTEM_PROCESSOR} was found; on Debian install lib32z1-dev.")
endif()
target_link_libraries(owb_transport INTERFACE ZLIB::ZLIB)

find_package(OpenSSL 1.1.1 QUIET GLOBAL)
owb_links(OWB_HAS_TLS OpenSSL::SSL "
    #include <openssl/ssl.h>
    int main() { return SSL_CTX_new(TLS_client_method()) == nullptr; }")
if(OWB_HAS_TLS)
    target_link_libraries(owb_transport INTERFACE OpenSSL::SSL)
    message(STATUS "TLS: OpenSSL ${OPENSSL_VERSION}")
else()
    message(STATUS "TLS: none, no OpenSSL for ${CMAKE_SYSTEM_PROCESSOR}")
endif()

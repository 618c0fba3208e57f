# Defines owb_transport, which the client links to: zlib, required, and OpenSSL, used if one for the target is found. Sets
# OWB_HAS_TLS, for the whole build.
include(OwbFind)

add_library(owb_transport INTERFACE)

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

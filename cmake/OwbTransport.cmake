# Finds zlib, which the client requires. Defines owb_tls: OpenSSL, used if one for the target is found.
# Sets OWB_HAS_TLS, for the whole build.
include(OwbFind)

add_library(owb_tls INTERFACE)

# What a configuration without the fetched libraries found on the host.
if(OWB_SYSROOT)
    foreach(variable IN ITEMS ZLIB_INCLUDE_DIR ZLIB_LIBRARY_RELEASE OPENSSL_INCLUDE_DIR OPENSSL_SSL_LIBRARY OPENSSL_CRYPTO_LIBRARY)
        if("${${variable}}" MATCHES "^/usr/(include|lib)")
            unset(${variable} CACHE)
        endif()
    endforeach()
endif()

find_package(ZLIB GLOBAL)
owb_links(OWB_ZLIB_LINKS ZLIB::ZLIB "
    #include <zlib.h>
    int main() { z_stream stream = {}; return inflateInit(&stream); }")
if(NOT OWB_ZLIB_LINKS)
    message(FATAL_ERROR "No zlib for ${CMAKE_SYSTEM_PROCESSOR} was found; on Debian install zlib1g-dev, for -m32 lib32z1-dev.")
endif()

find_package(OpenSSL 1.1.1 QUIET GLOBAL)
set(openssl_includes)
if(OWB_SYSROOT) # the architecture's configuration.h, in a directory that compilers search only below /usr
    set(openssl_includes ${OWB_SYSROOT}/usr/include/${OWB_TRIPLET})
endif()
owb_links(OWB_HAS_TLS OpenSSL::SSL "
    #include <openssl/ssl.h>
    int main() { return SSL_CTX_new(TLS_client_method()) == nullptr; }"
    INCLUDES ${openssl_includes})
if(OWB_HAS_TLS)
    target_link_libraries(owb_tls INTERFACE OpenSSL::SSL)
    target_include_directories(owb_tls SYSTEM INTERFACE ${openssl_includes})
    message(STATUS "TLS: OpenSSL ${OPENSSL_VERSION}, ${OPENSSL_SSL_LIBRARY}")
else()
    set(advice "on Debian install libssl-dev")
    if(CMAKE_CROSSCOMPILING)
        set(advice "scripts/sysroot ${OWB_TRIPLET} fetches one")
    endif()
    message(STATUS "TLS: none, no OpenSSL for ${CMAKE_SYSTEM_PROCESSOR}; ${advice}")
    unset(advice)
endif()
owb_forget_failure(OWB_HAS_TLS OPENSSL_INCLUDE_DIR OPENSSL_SSL_LIBRARY OPENSSL_CRYPTO_LIBRARY)

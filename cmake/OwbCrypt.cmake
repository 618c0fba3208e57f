# Defines Crypt::crypt, password hashing (crypt(3)): an installed libcrypt for the target architecture, else one built from
# Debian's sources, with the methods yescrypt and sha512crypt alone. OWB_CRYPT_LINKS, cached, is true for an installed one.
include(OwbFind)
find_library(OWB_CRYPT_LIBRARY crypt)
mark_as_advanced(OWB_CRYPT_LIBRARY)
owb_links(OWB_CRYPT_LINKS "${OWB_CRYPT_LIBRARY}" "
    #include <crypt.h>
    int main() {
        crypt_data data;
        char setting[CRYPT_GENSALT_OUTPUT_SIZE];
        crypt_gensalt_rn(nullptr, 0, nullptr, 0, setting, sizeof setting);
        return crypt_rn(setting, setting, &data, sizeof data) == nullptr || crypt_checksalt(setting) != 0;
    }")
if(OWB_CRYPT_LINKS)
    message(STATUS "Password hashing: ${OWB_CRYPT_LIBRARY}")
    add_library(owb_crypt INTERFACE)
    target_link_libraries(owb_crypt INTERFACE ${OWB_CRYPT_LIBRARY})
    add_library(Crypt::crypt ALIAS owb_crypt)
    return()
endif()
owb_forget_failure(OWB_CRYPT_LINKS OWB_CRYPT_LIBRARY)
message(STATUS "Password hashing: built from source")

block()
set(source /usr/src/libxcrypt/lib)
if(NOT EXISTS ${source}/crypt.c)
    message(FATAL_ERROR "No libcrypt for ${CMAKE_SYSTEM_PROCESSOR} was found, nor ${source}; "
                        "on Debian install libxcrypt-source.")
endif()
set(generated ${PROJECT_BINARY_DIR}/libxcrypt)

# What its own build would detect, for glibc 2.36 and GCC 12 on a little-endian processor.
file(CONFIGURE OUTPUT ${generated}/config.h CONTENT "#define _GNU_SOURCE 1
#define ENDIANNESS_IS_LITTLE 1
#define HAVE_ENDIAN_H 1
#define HAVE_EXPLICIT_BZERO 1
#define HAVE_FCNTL_H 1
#define HAVE_GETENTROPY 1
#define HAVE_MAX_ALIGN_T 1
#define HAVE_STATIC_ASSERT_IN_ASSERT_H 1
#define HAVE_SYS_CDEFS_H 1
#define HAVE_SYS_CDEFS_THROW 1
#define HAVE_SYS_PARAM_H 1
#define HAVE_SYS_RANDOM_H 1
#define HAVE_SYS_STAT_H 1
#define HAVE_SYS_TYPES_H 1
#define HAVE_UNISTD_H 1
#include <stdalign.h>
")

# What its own build would generate from hashes.conf: prefix, bytes of salt and strength of each method.
file(CONFIGURE OUTPUT ${generated}/crypt-hashes.h CONTENT "#define INCLUDE_sha512crypt 1
#define INCLUDE_yescrypt 1
#define crypt_sha512crypt_rn _crypt_crypt_sha512crypt_rn
#define crypt_yescrypt_rn _crypt_crypt_yescrypt_rn
#define gensalt_sha512crypt_rn _crypt_gensalt_sha512crypt_rn
#define gensalt_yescrypt_rn _crypt_gensalt_yescrypt_rn
void crypt_sha512crypt_rn(const char*, size_t, const char*, size_t, uint8_t*, size_t, void*, size_t);
void crypt_yescrypt_rn(const char*, size_t, const char*, size_t, uint8_t*, size_t, void*, size_t);
void gensalt_sha512crypt_rn(unsigned long, const uint8_t*, size_t, uint8_t*, size_t);
void gensalt_yescrypt_rn(unsigned long, const uint8_t*, size_t, uint8_t*, size_t);
#define HASH_ALGORITHM_DEFAULT \"$y$\"
#define HASH_ALGORITHM_TABLE_ENTRIES \\
    {\"$y$\", 3, crypt_yescrypt_rn, gensalt_yescrypt_rn, 16, 1}, \\
    {\"$6$\", 3, crypt_sha512crypt_rn, gensalt_sha512crypt_rn, 15, 1}, {0, 0, 0, 0, 0, 0}
" @ONLY)

# The functions. A static library has no symbol versions.
set(versions "")
foreach(function IN ITEMS crypt_checksalt crypt_gensalt_rn crypt_rn)
    string(APPEND versions "#define INCLUDE_${function} 1\n#define SYMVER_${function} symver_nop()\n")
endforeach()
file(CONFIGURE OUTPUT ${generated}/crypt-symbol-vers.h CONTENT "${versions}" @ONLY)

set(BEGIN_DECLS "#include <sys/cdefs.h>\n__BEGIN_DECLS")
set(END_DECLS "__END_DECLS")
set(DEFAULT_PREFIX_ENABLED 1)
file(STRINGS ${source}/../configure.ac XCRYPT_VERSION_STR REGEX "^ *\\[[0-9.]+\\],$" LIMIT_COUNT 1)
string(REGEX REPLACE "[^0-9.]" "" XCRYPT_VERSION_STR "${XCRYPT_VERSION_STR}")
string(REGEX MATCH "^([0-9]+)\\.([0-9]+)" version "${XCRYPT_VERSION_STR}")
set(XCRYPT_VERSION_MAJOR ${CMAKE_MATCH_1})
set(XCRYPT_VERSION_MINOR ${CMAKE_MATCH_2})
configure_file(${source}/crypt.h.in ${generated}/include/crypt.h @ONLY)

add_library(owb_crypt STATIC
    ${source}/alg-sha256.c
    ${source}/alg-sha512.c
    ${source}/alg-yescrypt-common.c
    ${source}/alg-yescrypt-opt.c
    ${source}/crypt-sha512.c
    ${source}/crypt-yescrypt.c
    ${source}/crypt.c
    ${source}/util-base64.c
    ${source}/util-gensalt-sha.c
    ${source}/util-get-random-bytes.c
    ${source}/util-make-failure-token.c
    ${source}/util-xstrcpy.c)
target_include_directories(owb_crypt SYSTEM INTERFACE ${generated}/include)
target_include_directories(owb_crypt PRIVATE ${generated} ${generated}/include ${source})
target_compile_definitions(owb_crypt PRIVATE HAVE_CONFIG_H IN_LIBCRYPT)
target_compile_options(owb_crypt PRIVATE -w)
target_link_libraries(owb_crypt PRIVATE owb_flags)
add_library(Crypt::crypt ALIAS owb_crypt)
endblock()

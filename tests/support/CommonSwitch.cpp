#include "support/CommonSwitch.hpp"

#include <cstdio>
#include <cstring>
#include <dlfcn.h>

namespace support {

std::string commonSwitch;

} // namespace support

// Interposes the function of the C library for every library of the program.
__attribute__((visibility("default"))) std::FILE* fopen(const char* path, const char* mode) {
    const auto real = reinterpret_cast<std::FILE* (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "fopen64"));
    const bool isCommonSwitch = std::strcmp(path, "/tmp/vdxDebug") == 0;
    return real(isCommonSwitch ? support::commonSwitch.c_str() : path, mode);
}

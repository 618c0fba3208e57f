#include "Interposed.hpp"

#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>

namespace interposed {

std::function<void(const Diagnostic&)> debug;
std::function<int(long, OpenWBEM::CIMInstance&, long, _qHead*)> instanceData;
std::function<void(const char*)> directoryOpened;
std::function<void(const char*)> printed;

int ownInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q) {
    using Function = int (*)(long, OpenWBEM::CIMInstance&, long, _qHead*);
    static const auto own = reinterpret_cast<Function>(
        dlsym(RTLD_NEXT, "_Z19OWB_getInstanceDatalRN8OpenWBEM11CIMInstanceElP6_qHead"));
    return own(group, instance, row, q);
}

void ownDebug(const Diagnostic& diagnostic) {
    using Function = void (*)(const char*, const char*, unsigned long, const char*, ...);
    static const auto own = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "OWB_Debug"));
    own(diagnostic.file.c_str(), diagnostic.function.c_str(), diagnostic.line, "%s",
        diagnostic.message.c_str());
}

} // namespace interposed

#define INTERPOSED __attribute__((visibility("default")))

extern "C" INTERPOSED void OWB_Debug(char* file, char* function, unsigned long line, char* format, ...) {
    if (!interposed::debug)
        return;
    char message[2048];
    va_list values;
    va_start(values, format);
    std::vsnprintf(message, sizeof message, format, values);
    va_end(values);
    interposed::debug({file, function, line, message});
}

INTERPOSED int OWB_getInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q) {
    return interposed::instanceData ? interposed::instanceData(group, instance, row, q)
                                    : interposed::ownInstanceData(group, instance, row, q);
}

extern "C" INTERPOSED DIR* opendir(const char* path) {
    static const auto own = reinterpret_cast<DIR* (*)(const char*)>(dlsym(RTLD_NEXT, "opendir"));
    if (interposed::directoryOpened)
        interposed::directoryOpened(path);
    return own(path);
}

extern "C" INTERPOSED int printf(const char* format, ...) {
    if (interposed::printed)
        interposed::printed(format);
    va_list values;
    va_start(values, format);
    const int length = std::vfprintf(stdout, format, values);
    va_end(values);
    return length;
}

#include "client/Trace.hpp"

// The bridge needs this library, not the reverse: null without it.
extern "C" __attribute__((weak)) void OWB_Debug(char* file, char* function, unsigned long line, char* format,
                                                ...);

namespace OpenWBEM {

void trace(const char* file, const char* function, unsigned long line, const std::string& message) {
    if (OWB_Debug)
        OWB_Debug(const_cast<char*>(file), const_cast<char*>(function), line, const_cast<char*>("%s\n"),
                  message.c_str());
}

} // namespace OpenWBEM

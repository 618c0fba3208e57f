#ifndef TESTS_OWB_INTERPOSED_HPP
#define TESTS_OWB_INTERPOSED_HPP
#include "owb.h"

#include <functional>
#include <string>

/**
 * Functions of the library and of the C library that the test program interposes, as an agent may. Each calls
 * its hook; without one it does nothing (OWB_Debug), or what the original does.
 */
namespace interposed {

struct Diagnostic {
    std::string file;
    std::string function;
    unsigned long line;
    std::string message;
};

extern std::function<void(const Diagnostic&)> debug;
extern std::function<int(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q)> instanceData;
extern std::function<void(const char* path)> directoryOpened;
/** Formats that were handed to printf(). */
extern std::function<void(const char* format)> printed;

/** The library's own functions. */
int ownInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q);
void ownDebug(const Diagnostic& diagnostic);

} // namespace interposed
#endif

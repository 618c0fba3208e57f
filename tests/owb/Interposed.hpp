#ifndef TESTS_OWB_INTERPOSED_HPP
#define TESTS_OWB_INTERPOSED_HPP
#include "owb.h"

#include <functional>
#include <string>

/**
 * Functions of the library and of the C library that the test program interposes, as an agent may. Each calls
 * its hook. Without a hook, OWB_Debug does nothing and the others call the original.
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
/** Formats of calls of printf(). */
extern std::function<void(const char* format)> printed;

/** The functions of the library. */
int ownInstanceData(long group, OpenWBEM::CIMInstance& instance, long row, _qHead* q);
void ownDebug(const Diagnostic& diagnostic);

} // namespace interposed
#endif

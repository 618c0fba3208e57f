/* Which version the library is, and when it was built. */
#include "owb.h"

#include <cstdio>

/* The buffers are filled and never read, on purpose: a core dump or a debugger shows in them which build it
 * was. */
extern "C" const char* OWB_version(char* date, char* time) {
    static char dateStr[128];
    static char timeStr[128];
    if (date)
        std::sprintf(dateStr, "%s", __DATE__);
    if (time)
        std::sprintf(timeStr, "%s", __TIME__);
    return "v1.12";
}

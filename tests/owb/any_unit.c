/* Requests an interval in an invalid unit, which C permits and C++ does not. */
#include "owb.h"

long intervalInAnyUnit(char* text, int unit);

long intervalInAnyUnit(char* text, int unit) {
    return OWB_calcTimeInterval(text, (OWB_TIME_UNIT)unit);
}

/* Asks for an interval in a unit that need not be one, which C lets an agent do and C++ does not. */
#include "owb.h"

long intervalInAnyUnit(char* text, int unit);

long intervalInAnyUnit(char* text, int unit) {
    return OWB_calcTimeInterval(text, (OWB_TIME_UNIT)unit);
}

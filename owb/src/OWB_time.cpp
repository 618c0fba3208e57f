/* CIM times as counts of seconds or finer units. */
#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include "owb.h"

#include "OWB_trace.hpp"

#include <cmath>

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_time.cpp";

/* A count as agents expect it: 32 bits, two's complement, wrapping. */
long wrapped(UInt32 count) {
    return static_cast<Int32>(count);
}

/* The microseconds of an interval in a coarser unit, halves rounded away from zero. The result fits: a text
 * with -1 microseconds gives 2^32 - 1, and no text gives more. */
UInt32 rounded(const CIMDateTime& interval, double microsecondsPerUnit) {
    return static_cast<UInt32>(std::round(interval.getMicroSeconds() / microsecondsPerUnit));
}

UInt32 wholeSeconds(const CIMDateTime& interval) {
    return interval.getDays() * 86400U + interval.getHours() * 3600U + interval.getMinutes() * 60U +
           interval.getSeconds();
}

UInt32 lengthIn(OWB_TIME_UNIT unit, const CIMDateTime& interval) {
    const UInt32 seconds = wholeSeconds(interval);
    switch (unit) {
    case OWB_TIME_MICROSECONDS:
        return seconds * 1000000U + rounded(interval, 1.0);
    case OWB_TIME_MILLISECONDS:
        return seconds * 1000U + rounded(interval, 1000.0);
    case OWB_TIME_HUNDREDTHS:
        return seconds * 100U + rounded(interval, 10000.0);
    case OWB_TIME_SECONDS: /* fractions are dropped */
        return seconds;
    default: /* unreachable: OWB_calcTimeInterval() rejects other units */
        OWB_TRACE_TEXT("OWB_calcTimeInterval", 178,
                       "ERROR: bad OWB_TIME_UNIT passed in - assuming seconds\n");
        return seconds;
    }
}

bool isUnit(long unit) {
    return unit >= OWB_TIME_SECONDS && unit <= OWB_TIME_MICROSECONDS;
}

} // namespace

extern "C" long OWB_calcTimeEpoch(char* text) {
    if (!text) {
        /* The text names the other function; scripts search logs for it. */
        OWB_TRACE_TEXT("OWB_calcTimeEpoch", 92,
                       "ERROR - invalid char* string passed to calcTimeInterval()\n");
        return 0;
    }
    try {
        /* A time_t may have 64 bits. DateTime accepts no date beyond 32. */
        return static_cast<long>(DateTime(String(text)).get());
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_calcTimeEpoch", 98, "ERROR", e);
        return 0;
    }
}

extern "C" long OWB_calcTimeInterval(char* text, OWB_TIME_UNIT unit) {
    if (!text || !isUnit(unit)) {
        OWB_TRACE_TEXT("OWB_calcTimeInterval", 188,
                       "ERROR - bad char* string or bad time unit passed to OWB_calcTimeInterval()\n");
        return 0;
    }
    try {
        return wrapped(lengthIn(unit, CIMDateTime(String(text))));
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_calcTimeInterval", 194, "\n>>ERROR", e);
        return 0;
    }
}

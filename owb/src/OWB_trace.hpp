#ifndef OWB_TRACE_HPP
#define OWB_TRACE_HPP
/* How the bridge's own sources trace: through OWB_Debug(), at the cost of one test when tracing is off. */
#include "owb.h"

/*
 * Set once OWB_Debug() has found that tracing is off. Stays false when an agent interposes OWB_Debug(): it
 * then receives every diagnostic.
 */
extern __attribute__((visibility("hidden"))) bool owbTraceIsOff;

/*
 * OWB_TRACE(function, line, format, values...) traces from the source file that the constant traceFile names;
 * OWB_TRACE_TEXT(function, line, text) traces a text without values. Values are evaluated only when the trace
 * is made. OWB_Debug() changes none of its texts, despite their type.
 */
#define OWB_TRACE(function, line, format, ...)                                                               \
    (owbTraceIsOff ? static_cast<void>(0)                                                                    \
                   : OWB_Debug(const_cast<char*>(traceFile), const_cast<char*>(function), line,              \
                               const_cast<char*>(format), __VA_ARGS__))
#define OWB_TRACE_TEXT(function, line, text)                                                                 \
    (owbTraceIsOff ? static_cast<void>(0)                                                                    \
                   : OWB_Debug(const_cast<char*>(traceFile), const_cast<char*>(function), line,              \
                               const_cast<char*>(text)))

/*
 * Traces an OpenWBEM::Exception: its type, where it was thrown, and its message. The line starts with a
 * literal: "ERROR", or "\n>>ERROR" where agents are used to that.
 */
#define OWB_TRACE_EXCEPTION(function, line, start, e)                                                        \
    OWB_TRACE(function, line, start " %s %s:%i  %s\n", (e).type(), (e).getFile(), (e).getLine(),             \
              (e).getMessage())

#endif

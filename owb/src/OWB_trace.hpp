#ifndef OWB_TRACE_HPP
#define OWB_TRACE_HPP
/* How the bridge's own sources trace: through OWB_Debug(). While tracing is off, a trace costs one test. */
#include "owb.h"

/*
 * True once the library's OWB_Debug() has found tracing off. Stays false if an agent interposes OWB_Debug():
 * the interposer receives every diagnostic.
 */
extern __attribute__((visibility("hidden"))) bool owbTraceIsOff;

/*
 * OWB_TRACE(function, line, format, values...) names the source file by the constant traceFile;
 * OWB_TRACE_TEXT(function, line, text) traces a text without values. Values are evaluated only if OWB_Debug()
 * is called. OWB_Debug() changes none of its texts, although their type allows it.
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
 * Traces an OpenWBEM::Exception: its type, where it was thrown, and its message. `start` is a literal,
 * "ERROR" or "\n>>ERROR".
 */
#define OWB_TRACE_EXCEPTION(function, line, start, e)                                                        \
    OWB_TRACE(function, line, start " %s %s:%i  %s\n", (e).type(), (e).getFile(), (e).getLine(),             \
              (e).getMessage())

#endif

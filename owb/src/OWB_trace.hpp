#ifndef OWB_TRACE_HPP
#define OWB_TRACE_HPP
/* How the bridge's own sources trace: the way into OWB_Debug() that costs one call when tracing is off. */

/* Whether tracing is on. The first call of the process decides for its whole life. */
bool owbTracing();

/* OWB_Debug() itself, declared for texts that are constant. */
extern "C" void owbTrace(const char* file, const char* function, unsigned long line, const char* format,
                         ...) __asm__("OWB_Debug") __attribute__((format(printf, 4, 5)));

/*
 * OWB_TRACE(function, line, format, ...) traces from the source file that the constant traceFile names. Its
 * arguments are evaluated only when tracing is on.
 */
#define OWB_TRACE(...) (owbTracing() ? owbTrace(traceFile, __VA_ARGS__) : static_cast<void>(0))

/*
 * Traces an OpenWBEM::Exception: its type, where it was thrown, and its message. What starts the line is a
 * literal: "ERROR", or "\n>>ERROR" where agents are used to that.
 */
#define OWB_TRACE_EXCEPTION(function, line, start, e)                                                        \
    OWB_TRACE(function, line, start " %s %s:%i  %s\n", (e).type(), (e).getFile(), (e).getLine(),             \
              (e).getMessage())

#endif

#ifndef CIMOM_SYSTEM_LOG_HPP_INCLUDED
#define CIMOM_SYSTEM_LOG_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Writes one line to standard error, behind the name of the program. The message may hold what a client sent,
 * see onOneLine(). When standard error does not take it, it is lost, and the next line that is taken comes
 * behind one that says so.
 */
void log(std::string message);

/** The same for a line `what: why` of 255 bytes at most, when there may be no memory for more. */
void logWithoutMemory(const char* what, const char* why) noexcept;

} // namespace cimom
#endif

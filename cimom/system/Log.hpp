#ifndef CIMOM_SYSTEM_LOG_HPP_INCLUDED
#define CIMOM_SYSTEM_LOG_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Writes one line to standard error: local time, name of the program, message. Standard error that is the
 * journal (systemd.exec(5), JOURNAL_STREAM) gets no time: the journal notes it. The message may hold what a
 * client sent, see onOneAsciiLine(). When standard error does not take it, it is lost, and the next line that
 * is taken comes behind one that says so.
 */
void log(const std::string& message);

/** The same for a line `what: why` of 255 bytes at most, when there may be no memory for more. What is not
 * printable ASCII becomes a blank. */
void logWithoutMemory(const char* what, const char* why) noexcept;

} // namespace cimom
#endif

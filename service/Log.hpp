#ifndef SERVICE_LOG_HPP_INCLUDED
#define SERVICE_LOG_HPP_INCLUDED
#include <string>

namespace service {

/** Sets the name with which log lines begin. Keeps the pointer. Call it once, before the first line. */
void nameLog(const char* program);

/**
 * Writes one line to standard error: local time, program name, message. If standard error is the journal
 * (systemd.exec(5), JOURNAL_STREAM), the line has no time: the journal adds it.
 *
 * The message may hold what a client sent: it is written as util::onOneAsciiLine() gives it. A line that
 * cannot be written at once is lost; the next written line follows one that counts the lost ones.
 */
void log(const std::string& message);

/** Logs `what: why`, cut after 255 bytes, without allocating memory. Writes a blank for any byte that is not
 * printable ASCII. */
void logWithoutMemory(const char* what, const char* why) noexcept;

} // namespace service
#endif

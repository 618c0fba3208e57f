#ifndef CIMOM_SYSTEM_LOG_HPP_INCLUDED
#define CIMOM_SYSTEM_LOG_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Writes one line to standard error, behind the name of the program. The message may hold what a client sent,
 * see onOneLine().
 */
void log(std::string message);

} // namespace cimom
#endif

#ifndef CIMOM_SYSTEM_PROGRAM_HPP_INCLUDED
#define CIMOM_SYSTEM_PROGRAM_HPP_INCLUDED
#include <cstddef>
#include <string>
#include <vector>

namespace cimom {

/** Maximum number of bytes that a program may print. */
inline constexpr std::size_t maximumOutput = 16 * 1024 * 1024;

/** What a program has printed to its standard output, and how it has ended. */
struct ProgramOutput {
    std::string text;
    /** It has exited with status 0. */
    bool hasSucceeded;
};

/**
 * Runs a program, without a shell, and waits until it has closed its output and ended. Its standard input is
 * empty, its standard error is discarded, its environment is that of this process. Call it in a child process
 * only, see service::askChild(): it replaces closed standard streams, and has no time limit.
 *
 * Throws std::runtime_error if the program cannot be started or prints more than maximumOutput.
 *
 * @param command path of the program, then its arguments
 */
ProgramOutput outputOf(const std::vector<std::string>& command);

} // namespace cimom
#endif

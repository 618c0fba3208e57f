#ifndef CIMOM_SYSTEM_PROGRAM_HPP_INCLUDED
#define CIMOM_SYSTEM_PROGRAM_HPP_INCLUDED
#include <cstddef>
#include <string>
#include <vector>

namespace cimom {

/** Bytes that a program may print. */
inline constexpr std::size_t longestOutput = 16 * 1024 * 1024;

/** What a program has printed to its standard output, and how it has ended. */
struct ProgramOutput {
    std::string text;
    /** It has exited with status 0. */
    bool hasSucceeded;
};

/**
 * Runs a program, without a shell, and waits for the ends of its output and of itself. Its input is empty,
 * its error output lost, its environment that of this process. To be called in an AnsweringChild, whose
 * standard streams are closed and whose process group ends it.
 *
 * Throws std::runtime_error when the program cannot be started or prints more than longestOutput.
 *
 * @param command path of the program, then its arguments
 */
ProgramOutput outputOf(const std::vector<std::string>& command);

} // namespace cimom
#endif

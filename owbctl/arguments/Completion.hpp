#ifndef OWBCTL_ARGUMENTS_COMPLETION_HPP
#define OWBCTL_ARGUMENTS_COMPLETION_HPP

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace owbctl {

/**
 * The candidates for the last of `words`, a command line without the program's name: all possible words that
 * begin with it, sorted. `app` has the commands and options of the program.
 */
std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words);

} // namespace owbctl
#endif

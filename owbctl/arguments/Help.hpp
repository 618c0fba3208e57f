#ifndef OWBCTL_ARGUMENTS_HELP_HPP
#define OWBCTL_ARGUMENTS_HELP_HPP

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/** The help of the program and of its commands. */
namespace owbctl {

/** Formats help. The help of a command lists its own options and those of the program, each once. */
class HelpFormat : public CLI::Formatter {
public:
    /** What follows the own options: commands, then the options of the program. */
    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override;
};

/** Help of a command, such as {"time", "epoch"}; of the program if there are no words. Throws UsageError for
 * an unknown command. */
std::string helpOf(const CLI::App& app, const std::vector<std::string>& command);

/** Names of the commands of an app that users may give. */
std::vector<std::string> commandNames(const CLI::App& app);

} // namespace owbctl
#endif

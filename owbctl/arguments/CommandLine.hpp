#ifndef OWBCTL_ARGUMENTS_COMMANDLINE_HPP
#define OWBCTL_ARGUMENTS_COMMANDLINE_HPP

#include "commands/Metrics.hpp"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace owbctl {

/** The arguments of all commands. parse() checks groups, rows and the ranges of numbers. */
struct Arguments {
    Arguments();

    /** By default OWB_URL of the environment, else the default of the library. parse() replaces unix:PATH and
     * --socket by the URL that they mean. */
    std::string url;
    /** Path of the option --socket; empty if not given. */
    std::string socket;
    std::string output = "table";
    /** Seconds; 0 for no limit. */
    double timeout = 30;
    /** Whether the command line has --timeout: it then limits the whole command. */
    bool hasTimeout = false;
    /** File name; empty for no trace. */
    std::string trace;

    /** For `groups`, `get` and `watch`, see groupsNamed(). */
    std::vector<std::string> groups;
    std::vector<std::string> properties;
    /** For `get` and `watch`: more properties. */
    std::vector<std::string> columns;
    /** For `get` and `watch`: numbers of rows. */
    std::vector<std::string> rows;
    /** For `get` and `watch`: NAME=VALUE, see Selection. */
    std::vector<std::string> conditions;
    /** For tables, see Style. */
    bool isRaw = false;
    bool isHuman = false;
    /** Names one group. For `set` and `instance`; may be empty for `instance`. */
    std::string group;
    /** For `set` and `instance`. Empty if not given. */
    std::string row;
    double interval = 2;
    std::string count;
    /** Whether `watch` shows only what changed. */
    bool onlyChanges = false;
    std::string path;
    std::vector<std::string> assignments;
    /** For `processes`, see processOrderNames. */
    std::string sort = "name";
    /** Whether `processes` includes those that are in one group only. */
    bool all = false;
    std::string time;
    std::string unit = "s";
    MetricsRequest metrics{{}, "text", ""};
    /** For `help`: the command, such as {"time", "epoch"}. */
    std::vector<std::string> helpOn;
};

/** The output formats. */
extern const std::vector<std::string> outputNames;

/** The units of `time interval`. */
extern const std::vector<std::string> unitNames;

/** The orders of `processes`. */
extern const std::vector<std::string> processOrderNames;

/** Adds the commands and options of the program to `app`. It fills `arguments`, which must outlive it. */
void describe(CLI::App& app, Arguments& arguments);

/** Parses the command line into the arguments that describe() was called with. Throws CLI::ParseError for
 * help, version and usage errors, and UsageError for the latter, too. */
void parse(CLI::App& app, Arguments& arguments, int argc, char** argv);

/** Whether a command line requests JSON, even if it is invalid otherwise. */
bool asksForJson(int argc, char** argv);

} // namespace owbctl
#endif

#ifndef OWBCTL_ARGUMENTS_COMMANDLINE_HPP
#define OWBCTL_ARGUMENTS_COMMANDLINE_HPP

#include <owb.h>

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace owbctl {

/** The words of the command line, for all commands. Groups and rows name what there is; numbers are in their
 * range. */
struct Words {
    Words();

    /** Of the environment, else the library's. */
    std::string url;
    std::string output = "table";
    /** Seconds; 0 for no bound. */
    double timeout = 0;
    /** Empty for none. */
    std::string trace;

    /** Of `groups` and `get`, see groupsNamed(). */
    std::vector<std::string> groups;
    std::vector<std::string> properties;
    /** Of `watch` and `set`, and of `instance`, where it may be empty; names one group. */
    std::string group;
    /** Empty when not given. */
    std::string row;
    double interval = 2;
    std::string count;
    std::string path;
    std::vector<std::string> assignments;
    std::string time;
    std::string unit = "s";
};

/** The forms of the program's data. */
extern const std::vector<std::string> outputNames;

/** The units of an interval. */
extern const std::vector<std::string> unitNames;

/** Makes `app` take the commands and options of the program. It fills `words`, which must outlive it. */
void describe(CLI::App& app, Words& words);

/** Parses the command line. Throws CLI::ParseError for help, version and wrong usage. */
void parse(CLI::App& app, int argc, char** argv);

/** Whether a command line asks for JSON, be it a good one or not. */
bool asksForJson(int argc, char** argv);

} // namespace owbctl
#endif

#ifndef OWBCTL_COMMANDLINE_HPP
#define OWBCTL_COMMANDLINE_HPP

#include <owb.h>

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace owbctl {

/** Stands for all groups, by their numbers. */
constexpr const char* everyGroup = "all";

/** The words of the command line, for all commands. Groups and rows are decimal numbers in their range. */
struct Words {
    std::string url = OWB_URLGet();
    bool json = false;

    /** Of `get`; may be everyGroup. */
    std::vector<std::string> groups;
    /** Of `instance`, empty when not given, and of `set`. */
    std::string group;
    std::string row = "0";
    std::string path;
    std::vector<std::string> assignments;
    std::string time;
    std::string unit = "s";
};

/** Makes `app` take the commands and options of the program. It fills `words`, which must outlive it. */
void describe(CLI::App& app, Words& words);

/** Parses the command line. Throws CLI::ParseError for help, version and wrong usage. */
void parse(CLI::App& app, int argc, char** argv);

} // namespace owbctl
#endif

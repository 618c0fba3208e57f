#include "CommandLine.hpp"

#include "Number.hpp"

namespace owbctl {
namespace {

constexpr const char* exitStatuses = R"(Exit status:
   0  done
   1  owbctl itself failed, e.g. standard output could not be written;
      set: there is no such row, or a value was not taken; time: the text is no time
   2  wrong usage
  12  the object manager gave no instance
  13  the library refused an argument
  14  no connection to the object manager
  15  no answer from the object manager, or it reported an error
Of several groups all are read; the first one that fails decides.

The options --url and --json may stand before or behind the command.)";

std::string checkGroup(const std::string& text) {
    if (decimal(text).value_or(OWB_MAX_GROUP + 1) <= OWB_MAX_GROUP)
        return std::string();
    return "'" + text + "' is no group number (0 to " + std::to_string(OWB_MAX_GROUP) + ")";
}

std::string checkGroups(const std::string& text) {
    return text == everyGroup ? std::string() : checkGroup(text);
}

std::string checkRow(const std::string& text) {
    return decimal(text) ? std::string() : "'" + text + "' is no row number";
}

std::string checkUrl(const std::string& text) {
    return text.empty() ? "the URL is empty" : std::string();
}

void describeGet(CLI::App& app, Words& words) {
    CLI::App* const get = app.add_subcommand("get", "Read groups from the object manager");
    get->add_option("GROUP", words.groups, "Number of a group, 0 to 30, or all; may be repeated")
        ->required()
        ->type_name("")
        ->check(checkGroups);
}

void describeInstance(CLI::App& app, Words& words) {
    CLI::App* const instance = app.add_subcommand("instance", "Read the one instance that a path names");
    instance->add_option("PATH", words.path, "Object path, [namespace:]Class.Key=\"value\",...")
        ->required()
        ->type_name("");
    instance->add_option("--group", words.group, "Group to read it as; default: each one of the path's class")
        ->type_name("N")
        ->check(checkGroup);
    instance->add_option("--row", words.row, "Row number to show it with; default 0")
        ->type_name("N")
        ->check(checkRow);
}

void describeSet(CLI::App& app, Words& words) {
    CLI::App* const set = app.add_subcommand("set", "Write values into one row, and show what changed");
    set->add_option("GROUP", words.group, "Number of the group, 0 to 30")
        ->required()
        ->type_name("")
        ->check(checkGroup);
    set->add_option("ROW", words.row, "Number of the row within the group, from 0")
        ->required()
        ->type_name("")
        ->check(checkRow);
    set->add_option("ASSIGNMENT", words.assignments,
                    "NAME=VALUE: property or nominator, and its value; may be repeated")
        ->required()
        ->type_name("");
}

void describeTime(CLI::App& app, Words& words) {
    CLI::App* const time = app.add_subcommand("time", "Convert a CIM time to a number");
    time->require_subcommand(0, 1);
    CLI::App* const epoch = time->add_subcommand("epoch", "Seconds from 1970 to a date");
    epoch->add_option("TEXT", words.time, "Date, yyyymmddhhmmss.mmmmmmsutc")->required()->type_name("");
    CLI::App* const interval = time->add_subcommand("interval", "Length of an interval");
    interval->add_option("TEXT", words.time, "Interval, ddddddddhhmmss.mmmmmm:000")
        ->required()
        ->type_name("");
    interval->add_option("--unit", words.unit, "Unit of the number: s (default), cs, ms or us")
        ->type_name("UNIT")
        ->check(CLI::IsMember({"s", "cs", "ms", "us"}));
}

// CLI11 takes a word in brackets for several words, which nobody means here.
void refuseBrackets(int argc, char** argv) {
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        if (!word.empty() && word.front() == '[' && word.back() == ']')
            throw CLI::ValidationError("'" + word + "' is in brackets");
    }
}

} // namespace

void describe(CLI::App& app, Words& words) {
    app.fallthrough();
    app.require_subcommand(0, 1); // none at all is noticed behind an unknown one, see parse()
    app.footer(exitStatuses);
    app.set_version_flag("--version", std::string("owbctl ") + OWB_version(nullptr, nullptr));
    app.add_option("--url", words.url, "Object manager to ask; default " + words.url)
        ->type_name("URL")
        ->check(checkUrl);
    app.add_flag("--json", words.json, "Print JSON instead of tables");

    app.add_subcommand("groups", "List the groups: class, nominators and the properties behind them");
    describeGet(app, words);
    describeInstance(app, words);
    describeSet(app, words);
    app.add_subcommand("processes", "List the processes of this host: groups 16 and 22, joined");
    describeTime(app, words);
}

void parse(CLI::App& app, int argc, char** argv) {
    refuseBrackets(argc, argv);
    app.parse(argc, argv);
    if (app.get_subcommands().empty())
        throw CLI::RequiredError("a command");
    const CLI::App* const time = app.get_subcommand("time");
    if (app.got_subcommand("time") && time->get_subcommands().empty())
        throw CLI::RequiredError("time: epoch or interval");
}

} // namespace owbctl

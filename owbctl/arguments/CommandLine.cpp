#include "arguments/CommandLine.hpp"

#include "agent/Number.hpp"
#include "arguments/GroupNames.hpp"

#include <charconv>
#include <cstdlib>
#include <sstream>
#include <system_error>

namespace owbctl {
namespace {

constexpr const char* exitStatuses = R"(Exit status:
   0  done
   1  owbctl itself failed, e.g. standard output could not be written;
      get: no group has the row; set: there is no such row, or a value was not
      taken; time: the text is no time; doctor: a check failed
   2  wrong usage
  12  the object manager gave no instance
  13  the library refused an argument
  14  no connection to the object manager
  15  no answer from the object manager, or it reported an error
 124  the time of --timeout was over
Of several groups all are read; the first one that fails decides.

The options above may stand before or behind the command.)";

constexpr double shortestInterval = 0.1;
constexpr double shortestTimeout = 0.001;
constexpr double longestTime = 1e6;

/** @param furtherWords what else may stand in place of a number */
std::string noGroup(const std::string& text, const std::string& furtherWords = "") {
    return "'" + text + "' is neither a group (0 to " + std::to_string(OWB_MAX_GROUP) + furtherWords +
           ") nor the class of one";
}

std::string checkGroups(const std::string& text) {
    return groupsNamed(text).empty() ? noGroup(text, std::string(", or ") + allGroups) : std::string();
}

std::string checkGroup(const std::string& text) {
    const std::vector<long> groups = groupsNamed(text);
    if (groups.empty())
        return noGroup(text);
    if (groups.size() == 1)
        return std::string();
    std::string numbers;
    for (const long group : groups)
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(group);
    return "'" + text + "' is several groups, give one of " + numbers;
}

std::string checkRow(const std::string& text) {
    return decimal(text) ? std::string() : "'" + text + "' is no row number";
}

std::string checkCount(const std::string& text) {
    return decimal(text).value_or(0) > 0 ? std::string() : "'" + text + "' is no number from 1 on";
}

/** A check for a time of at least `least` seconds. */
std::function<std::string(const std::string&)> isTimeFrom(double least) {
    return [least](const std::string& text) {
        double seconds = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, seconds);
        // What is not a number (NaN) is in no range.
        if (error == std::errc() && rest == end && seconds >= least && seconds <= longestTime)
            return std::string();
        std::ostringstream why;
        why << '\'' << text << "' is no time of at least " << least << " seconds";
        return why.str();
    };
}

std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "it is empty" : std::string();
}

void describeGroups(CLI::App& app, Words& words) {
    CLI::App* const groups =
        app.add_subcommand("groups", "List the groups: class, nominators and the properties behind them");
    groups->add_option("GROUP", words.groups, "Show these in full: number or class; may be repeated")
        ->type_name("")
        ->check(checkGroups);
}

void describeGet(CLI::App& app, Words& words) {
    CLI::App* const get = app.add_subcommand("get", "Read groups from the object manager");
    get->add_option("GROUP", words.groups, "Number of a group, 0 to 30, or a class, or all; may be repeated")
        ->required()
        ->type_name("")
        ->check(checkGroups);
    get->add_option("--property", words.properties, "Show these properties only: names or nominators")
        ->type_name("NAME...");
    get->add_option("--row", words.row, "Show this row only")->type_name("N")->check(checkRow);
}

void describeWatch(CLI::App& app, Words& words) {
    CLI::App* const watch = app.add_subcommand(
        "watch", "Read a group again and again; show what changes, and how fast counters grow");
    watch->add_option("GROUP", words.group, "Number of a group, 0 to 30, or its class")
        ->required()
        ->type_name("")
        ->check(checkGroup);
    watch->add_option("--interval", words.interval, "Seconds from one reading to the next; default 2")
        ->type_name("SECONDS")
        ->check(isTimeFrom(shortestInterval));
    watch->add_option("--count", words.count, "End after so many readings")
        ->type_name("N")
        ->check(checkCount);
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
    set->add_option("GROUP", words.group, "Number of the group, 0 to 30, or its class")
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
        ->check(CLI::IsMember(unitNames).description(""));
}

void describeOptions(CLI::App& app, Words& words) {
    app.set_version_flag("--version", std::string("owbctl ") + OWB_version(nullptr, nullptr));
    app.add_option("--url", words.url,
                   "Object manager to ask; default: OWB_URL of the environment, else\n" +
                       std::string(OWB_URLGet()))
        ->type_name("URL")
        ->check(checkNotEmpty);
    app.add_option("-o,--output", words.output, "Form of the data: table (default), line, json or csv")
        ->type_name("FORM")
        ->check(CLI::IsMember(outputNames).description(""));
    app.add_option("--timeout", words.timeout, "End after this time, whatever is not done yet")
        ->type_name("SECONDS")
        ->check(isTimeFrom(shortestTimeout));
    app.add_option("--trace", words.trace,
                   "Write the library's trace of this command to FILE; - is standard error")
        ->type_name("FILE")
        ->check(checkNotEmpty);
}

// CLI11 takes a word in brackets for several words, which nobody means here.
void refuseBrackets(int argc, char** argv) {
    for (const std::string& word : std::vector<std::string>(argv + 1, argv + argc)) {
        if (!word.empty() && word.front() == '[' && word.back() == ']')
            throw CLI::ValidationError("'" + word +
                                       "' begins with [ and ends with ], which the command line cannot take");
    }
}

} // namespace

const std::vector<std::string> outputNames = {"table", "line", "json", "csv"};

const std::vector<std::string> unitNames = {"s", "cs", "ms", "us"};

Words::Words() {
    const char* const set = std::getenv("OWB_URL");
    url = set != nullptr && *set != '\0' ? set : OWB_URLGet();
}

void describe(CLI::App& app, Words& words) {
    app.fallthrough();
    app.require_subcommand(0, 1); // none at all is noticed behind an unknown one, see parse()
    app.footer(exitStatuses);
    describeOptions(app, words);
    describeGroups(app, words);
    describeGet(app, words);
    describeWatch(app, words);
    describeInstance(app, words);
    describeSet(app, words);
    app.add_subcommand("processes", "List the processes of this host: groups 16 and 22, joined");
    describeTime(app, words);
    app.add_subcommand("doctor",
                       "Find out why nothing can be read: URL, socket, object manager, trace, /proc");
    app.add_subcommand("version", "Show the versions of the program and its libraries");
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

bool asksForJson(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "-ojson" || word == "-o=json" || word == "--output=json")
            return true;
        if ((word == "-o" || word == "--output") && i + 1 < argc && std::string(argv[i + 1]) == "json")
            return true;
    }
    return false;
}

} // namespace owbctl

#include "arguments/CommandLine.hpp"

#include "agent/Endpoint.hpp"
#include "arguments/Help.hpp"
#include "arguments/Names.hpp"
#include "arguments/Suggestion.hpp"
#include "util/Number.hpp"

#include <owb.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <sstream>
#include <system_error>

namespace owbctl {

using namespace agent;

namespace {

constexpr const char* exitStatuses = R"(Exit status:
   0  done
   1  owbctl itself failed; get: no group has the row; set: no such row, or a
      value was rejected; time: the text is no time, or its number does not
      fit; doctor: a check failed
   2  usage error
  12  the object manager returned no instance
  13  the library rejected an argument
  14  no connection to the object manager
  15  no answer from the object manager, or it reported an error
 124  timed out, see --timeout
If several groups are read, the first failure determines the exit status.

Options of all commands may precede or follow the command.)";

constexpr double shortestInterval = 0.1;
constexpr double longestTime = 1e6;

/** @param alternatives to a number, for the message */
std::string noGroup(const std::string& text, const std::string& alternatives = "") {
    return "'" + text + "' is neither a group (0 to " + std::to_string(agent::highestGroup) + alternatives +
           ") nor the name or the class of one" + groupSuggestion(text);
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
    return "'" + text + "' names several groups, give one of " + numbers;
}

/** A number that the library takes has 32 bits on all platforms. */
std::optional<std::int32_t> libraryNumber(const std::string& text) {
    return util::decimal<std::int32_t>(text);
}

std::string checkRow(const std::string& text) {
    return libraryNumber(text) ? std::string() : "'" + text + "' is no row number";
}

std::string checkCount(const std::string& text) {
    return libraryNumber(text).value_or(0) > 0 ? std::string() : "'" + text + "' is no positive number";
}

/** Returns a check for a time of at least `least` seconds. */
std::function<std::string(const std::string&)> isTimeFrom(double least) {
    return [least](const std::string& text) {
        double seconds = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, seconds);
        // Rejects NaN: no comparison with it holds.
        if (error == std::errc() && rest == end && seconds >= least && seconds <= longestTime)
            return std::string();
        std::ostringstream why;
        why << '\'' << text << "' is no time in seconds, from " << least << " to " << longestTime;
        return why.str();
    };
}

/** Returns a check for one of several words. */
std::function<std::string(const std::string&)> isOneOf(const std::vector<std::string>& words) {
    return [words](const std::string& text) {
        if (std::find(words.begin(), words.end(), text) != words.end())
            return std::string();
        return "'" + text + "' is none of " + CLI::detail::join(words, ", ") + suggestion(text, words);
    };
}

std::string checkTimeout(const std::string& text) {
    return text == "0" ? std::string() : isTimeFrom(0.001)(text);
}

std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "may not be empty" : std::string();
}

void describeGroups(CLI::App& app, Arguments& arguments) {
    CLI::App* const groups = app.add_subcommand("groups", "List the groups, or show their properties");
    groups
        ->add_option("GROUP", arguments.groups,
                     "Show these groups in full: numbers, names or classes, as in udp, 2,4 or 2-4; may be "
                     "repeated")
        ->type_name("")
        ->check(checkGroups);
}

/** Options of commands that show groups in tables. Their -h is not for help. */
void describeStyle(CLI::App* command, Arguments& arguments) {
    command->set_help_flag("--help", "Print this help message and exit");
    command->add_flag("-h,--human", arguments.isHuman,
                      "Tables: show sizes and speeds in larger units, as 1 GiB");
    command->add_flag("--raw", arguments.isRaw, "Tables: show values as they arrive");
}

/** Options that select rows and properties of groups. */
void describeSelection(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--property", arguments.properties,
                     "Show only these properties, in this order: names or nominators")
        ->type_name("NAME...");
    command->add_option("--columns", arguments.columns, "The same as one list")
        ->type_name("A,B")
        ->delimiter(',')
        ->allow_extra_args(false);
    command->add_option("--row", arguments.rows, "Show only these rows; may be repeated")
        ->type_name("N")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(checkRow);
    command
        ->add_option("--where", arguments.conditions,
                     "Show only rows in which a property has this value, or a code\n"
                     "of this name; all of several conditions have to hold")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

void describeGet(CLI::App& app, Arguments& arguments) {
    CLI::App* const get = app.add_subcommand("get", "Read groups from the object manager");
    get->add_option("GROUP", arguments.groups,
                    "Numbers, names or classes, as in udp, 2,4 or 2-4, or all; may be repeated")
        ->required()
        ->type_name("")
        ->check(checkGroups);
    describeSelection(get, arguments);
    describeStyle(get, arguments);
}

void describeWatch(CLI::App& app, Arguments& arguments) {
    CLI::App* const watch =
        app.add_subcommand("watch", "Read groups at intervals; show changes and the rates of counters");
    watch
        ->add_option("GROUP", arguments.groups,
                     "Numbers, names or classes, as in udp, 2,4 or 2-4, or all; may be repeated")
        ->required()
        ->type_name("")
        ->check(checkGroups);
    describeSelection(watch, arguments);
    watch->add_option("--interval", arguments.interval, "Seconds between readings; default 2")
        ->type_name("SECONDS")
        ->check(isTimeFrom(shortestInterval));
    watch->add_option("--count", arguments.count, "End after this number of readings")
        ->type_name("N")
        ->check(checkCount);
    watch->add_flag("--changed", arguments.onlyChanges, "Show only the rows and values that changed");
    describeStyle(watch, arguments);
}

void describeInstance(CLI::App& app, Arguments& arguments) {
    CLI::App* const instance = app.add_subcommand("instance", "Read the instance that an object path names");
    instance->add_option("PATH", arguments.path, "Object path, [namespace:]Class.Key=\"value\",...")
        ->required()
        ->type_name("");
    instance
        ->add_option("--group", arguments.group,
                     "Group whose properties to show; default: all groups of the class")
        ->type_name("N")
        ->check(checkGroup);
    instance->add_option("--row", arguments.row, "Row number to show the instance with; default 0")
        ->type_name("N")
        ->check(checkRow);
    describeStyle(instance, arguments);
}

void describeSet(CLI::App& app, Arguments& arguments) {
    CLI::App* const set = app.add_subcommand("set", "Write values into one row and show what changed");
    set->add_option("GROUP", arguments.group, "Number of the group, 0 to 30, or its name or class")
        ->required()
        ->type_name("")
        ->check(checkGroup);
    set->add_option("ROW", arguments.row, "Number of the row within the group, from 0")
        ->required()
        ->type_name("")
        ->check(checkRow);
    set->add_option("ASSIGNMENT", arguments.assignments,
                    "NAME=VALUE: property or nominator, and value; may be repeated")
        ->required()
        ->type_name("");
}

void describeProcesses(CLI::App& app, Arguments& arguments) {
    CLI::App* const processes =
        app.add_subcommand("processes", "List the processes of this host: groups 16 and 22, joined");
    processes
        ->add_option("--sort", arguments.sort,
                     "Order: name (default), pid, state, cpu or memory; cpu and memory start with the most")
        ->type_name("KEY")
        ->transform(CLI::IsMember(processOrderNames, CLI::ignore_case).description(""));
    processes->add_flag("--all", arguments.all,
                        "Include processes that started or ended while the list was read");
}

void describeTime(CLI::App& app, Arguments& arguments) {
    CLI::App* const time = app.add_subcommand("time", "Convert a CIM time to a number");
    time->require_subcommand(0, 1);
    CLI::App* const epoch = time->add_subcommand("epoch", "Seconds from 1970 to a date");
    epoch->add_option("TEXT", arguments.time, "Date, yyyymmddhhmmss.mmmmmmsutc")->required()->type_name("");
    CLI::App* const interval = time->add_subcommand("interval", "Length of an interval");
    interval->add_option("TEXT", arguments.time, "Interval, ddddddddhhmmss.mmmmmm:000")
        ->required()
        ->type_name("");
    interval->add_option("--unit", arguments.unit, "Unit of the number: s (default), cs, ms or us")
        ->type_name("UNIT")
        ->check(isOneOf(unitNames));
}

void describeMetrics(CLI::App& app, MetricsRequest& request) {
    CLI::App* const metrics = app.add_subcommand("metrics", "Write groups as metrics for Prometheus");
    metrics
        ->add_option("GROUP", request.groups,
                     "Numbers, names or classes, as in udp, 2,4 or 2-4, or all (default); may be repeated")
        ->type_name("")
        ->check(checkMeasured);
    metrics->add_option("--format", request.format, "Text format: text (default) or openmetrics")
        ->type_name("FORMAT")
        ->check(isOneOf(metricsFormatNames));
    metrics
        ->add_option("--textfile", request.textfile,
                     "Write the file owb.prom in this directory of the textfile collector")
        ->type_name("DIRECTORY")
        ->check(checkNotEmpty);
}

void describeOptions(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("-V,--version", std::string("owbctl ") + OWB_version(nullptr, nullptr),
                         "Print the version of the library and exit");
    app.add_option("--url", arguments.url,
                   "URL of the object manager, or unix:PATH; default: environment variable\n"
                   "OWB_URL, else " +
                       std::string(OWB_URLGet()))
        ->type_name("URL")
        ->check(checkNotEmpty);
    app.add_option("--socket", arguments.socket, "Unix-domain socket of the object manager; instead of a URL")
        ->type_name("PATH")
        ->check(checkNotEmpty);
    app.add_option("-o,--output", arguments.output, "Output format: table (default), wide, line, json or csv")
        ->type_name("FORMAT")
        ->check(isOneOf(outputNames));
    app.add_option("--timeout", arguments.timeout,
                   "End after this time, even if not done; with watch, if one reading takes\n"
                   "longer; 0 for no limit; default: 30 for each reading")
        ->type_name("SECONDS")
        ->check(checkTimeout);
    app.add_option("--trace", arguments.trace,
                   "Write the library's trace of this command to FILE; - means standard error")
        ->type_name("FILE")
        ->check(checkNotEmpty);
}

/** The names of the options that may follow a command. */
std::vector<std::string> optionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* each = &app; each != nullptr; each = each->get_parent()) {
        for (const CLI::Option* option : each->get_options()) {
            for (const std::string& name : option->get_lnames())
                names.push_back("--" + name);
        }
    }
    return names;
}

/** The innermost command of a command line. */
const CLI::App& innermost(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return commands.empty() ? app : innermost(*commands.front());
}

/** Throws a UsageError if an unknown option is left over. */
void rejectUnknownOption(const CLI::App& app) {
    for (const std::string& word : app.remaining(true)) {
        if (word.size() > 1 && word.front() == '-')
            throw UsageError("unknown option '" + word + "'" +
                             suggestion(word.substr(0, word.find('=')), optionNames(innermost(app))));
    }
}

[[noreturn]] void rejectUnexpected(const CLI::App& app) {
    rejectUnknownOption(app);
    const std::string word = app.remaining(true).front();
    const std::vector<std::string> commands = commandNames(innermost(app));
    if (commands.empty())
        throw UsageError("unexpected argument '" + word + "'");
    throw UsageError("unknown command '" + word + "'" + suggestion(word, commands));
}

/** Whether a command asks the object manager, so that its URL must be usable. */
bool needsManager(const CLI::App& app) {
    return app.got_subcommand("get") || app.got_subcommand("watch") || app.got_subcommand("instance") ||
           app.got_subcommand("set") || app.got_subcommand("metrics");
}

/** Throws a UsageError for a URL that names no object manager. */
void setUrl(Arguments& arguments, const CLI::App& app) {
    if (app.count("--url") > 0 && app.count("--socket") > 0)
        throw UsageError("--url and --socket exclude each other");
    arguments.url = arguments.socket.empty() ? urlOf(arguments.url) : urlOfSocket(arguments.socket);
    const std::string port = portError(arguments.url);
    if (needsManager(app) && !port.empty())
        throw UsageError(withoutPassword(arguments.url) + ": " + port);
}

// CLI11 splits an argument in brackets into several arguments.
void rejectBrackets(int argc, char** argv) {
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (!argument.empty() && argument.front() == '[' && argument.back() == ']')
            throw CLI::ValidationError("'" + argument +
                                       "' begins with [ and ends with ], which is not supported");
    }
}

} // namespace

const std::vector<std::string> outputNames = {"table", "wide", "line", "json", "csv"};

const std::vector<std::string> unitNames = {"s", "cs", "ms", "us"};

const std::vector<std::string> processOrderNames = {"name", "pid", "state", "cpu", "memory"};

Arguments::Arguments() {
    const char* const set = std::getenv("OWB_URL");
    url = set != nullptr && *set != '\0' ? set : OWB_URLGet();
}

void describe(CLI::App& app, Arguments& arguments) {
    app.fallthrough();
    app.require_subcommand(0, 1); // parse() reports a missing command, after unknown ones
    app.footer(exitStatuses);
    app.formatter(std::make_shared<HelpFormat>());
    describeOptions(app, arguments);
    describeGroups(app, arguments);
    describeGet(app, arguments);
    describeWatch(app, arguments);
    describeInstance(app, arguments);
    describeSet(app, arguments);
    describeProcesses(app, arguments);
    describeTime(app, arguments);
    describeMetrics(app, arguments.metrics);
    app.add_subcommand("doctor", "Check what a read needs: URL, socket, object manager, trace, /proc");
    app.add_subcommand("version", "Show the versions of the program and its libraries");
    app.add_subcommand("help", "Show the help of a command")
        ->add_option("COMMAND", arguments.helpOn, "Command; default: the program")
        ->type_name("");
}

void parse(CLI::App& app, Arguments& arguments, int argc, char** argv) {
    rejectBrackets(argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success&) { // help or version
        throw;
    } catch (const CLI::ExtrasError&) {
        rejectUnexpected(app);
    } catch (const CLI::ParseError&) { // perhaps because of the value of an unknown option
        rejectUnknownOption(app);
        throw;
    }
    arguments.hasTimeout = app.count("--timeout") > 0;
    setUrl(arguments, app);
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

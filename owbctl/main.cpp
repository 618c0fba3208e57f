// owbctl: reads and writes groups through libowb and prints them.
#include "agent/Endpoint.hpp"
#include "agent/Trace.hpp"
#include "arguments/CommandLine.hpp"
#include "arguments/Completion.hpp"
#include "arguments/Help.hpp"
#include "arguments/Names.hpp"
#include "commands/Doctor.hpp"
#include "commands/Metrics.hpp"
#include "commands/Processes.hpp"
#include "commands/Read.hpp"
#include "commands/Report.hpp"
#include "commands/Set.hpp"
#include "commands/Watch.hpp"
#include "formats/CsvFormat.hpp"
#include "formats/JsonFormat.hpp"
#include "formats/LineFormat.hpp"
#include "formats/TableFormat.hpp"
#include "output/Deadline.hpp"
#include "output/Output.hpp"
#include "output/Text.hpp"
#include "util/Number.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace owbctl {

using namespace agent;

namespace {

const char* const programName = "owbctl";

std::unique_ptr<Format> makeFormat(const Arguments& arguments, Output& output) {
    if (arguments.output == "json")
        return std::make_unique<JsonFormat>(output, withoutPassword(arguments.url));
    if (arguments.output == "csv")
        return std::make_unique<CsvFormat>(output);
    if (arguments.output == "line")
        return std::make_unique<LineFormat>(output);
    return std::make_unique<TableFormat>(
        output, Style{arguments.output == "wide", arguments.isRaw, arguments.isHuman});
}

std::optional<long> numberOrNone(const std::string& checked) {
    return checked.empty() ? std::nullopt : util::decimal<long>(checked);
}

long groupOf(const Arguments& arguments) {
    return groupsNamed(arguments.group).front();
}

std::vector<Version> versions() {
    return {{programName, OWBCTL_VERSION},
            {"libowb", OWB_version(nullptr, nullptr)},
            {"client library", OWBCTL_CLIENT_IS_BUNDLED ? "bundled" : "of the system"}};
}

InstanceQuery instanceQuery(const Arguments& arguments) {
    std::vector<long> groups =
        arguments.group.empty() ? groupsOfPath(arguments.path) : std::vector<long>{groupOf(arguments)};
    return {arguments.path, std::move(groups), numberOrNone(arguments.row).value_or(0)};
}

Selection selection(const Arguments& arguments) {
    std::vector<std::string> properties = arguments.properties;
    properties.insert(properties.end(), arguments.columns.begin(), arguments.columns.end());
    std::vector<long> rows;
    for (const std::string& row : arguments.rows)
        rows.push_back(util::decimal<long>(row).value());
    return {std::move(properties), std::move(rows), arguments.conditions};
}

WriteRequest writeRequest(const Arguments& arguments) {
    const long group = groupOf(arguments);
    return {group, util::decimal<long>(arguments.row).value(),
            parseAssignments(group, arguments.assignments)};
}

/** Writes a conversion, and its error on standard error. Returns the exit status. */
int showConversion(const Conversion& conversion, Format& format) {
    format.writeConversion(conversion);
    if (conversion.number)
        return 0;
    std::cerr << programName << ": '" << printable(conversion.text) << "': " << conversion.error << '\n';
    return exitFailed;
}

int execute(const CLI::App& app, const Arguments& arguments, Output& output, const Trace* trace,
            Format& format) {
    if (app.got_subcommand("get"))
        return getGroups({groupsNamed(arguments.groups), selection(arguments)}, format);
    if (app.got_subcommand("watch"))
        return watchGroups({groupsNamed(arguments.groups), selection(arguments), arguments.interval,
                            numberOrNone(arguments.count), arguments.onlyChanges},
                           format, output);
    if (app.got_subcommand("instance"))
        return showInstance(instanceQuery(arguments), format);
    if (app.got_subcommand("set"))
        return setRow(writeRequest(arguments), format, trace);
    if (app.got_subcommand("metrics"))
        return writeMetrics(arguments.metrics, output);
    if (app.got_subcommand("time")) {
        const bool isDate = app.get_subcommand("time")->got_subcommand("epoch");
        return showConversion(
            isDate ? convertDate(arguments.time) : convertInterval(arguments.time, arguments.unit), format);
    }
    if (app.got_subcommand("doctor"))
        return runChecks(arguments.url, arguments.timeout, format);
    if (app.got_subcommand("processes"))
        listProcesses({processOrderNamed(arguments.sort), arguments.all}, format);
    else if (app.got_subcommand("version"))
        format.writeVersions(versions());
    else
        format.writeCatalogue(arguments.groups.empty() ? everyGroup() : groupsNamed(arguments.groups));
    return 0;
}

/** Limits the time of the command. doctor limits its checks itself. */
void startTimer(const CLI::App& app, const Arguments& arguments, const Output& output) {
    const bool isForEachWait = !arguments.hasTimeout || app.got_subcommand("watch");
    const double seconds = app.got_subcommand("doctor") ? 0 : arguments.timeout;
    const auto document = [&arguments](const std::string& message) {
        return arguments.output == "json" ? jsonError(message, exitTimeout) : std::string();
    };
    limitTime({seconds, isForEachWait}, {peerName(arguments.url), document}, output);
}

/** The trace that a command needs; null for none. */
std::unique_ptr<Trace> makeTrace(const CLI::App& app, const Arguments& arguments) {
    if (!arguments.trace.empty())
        return std::make_unique<Trace>(arguments.trace);
    // set needs the reason of a failed write. doctor must not read a switch file that is a named pipe.
    if (app.got_subcommand("set") || app.got_subcommand("doctor"))
        return std::make_unique<Trace>();
    return nullptr;
}

/** Sets the URL. This makes the first trace call of the process, so tracing starts here. Returns the trace,
 * or null. */
std::unique_ptr<Trace> setUrl(const CLI::App& app, const Arguments& arguments) {
    const Waiting waiting("the log of the trace");
    const auto set = [&arguments] { OWB_URLSet(arguments.url.c_str()); };
    std::unique_ptr<Trace> trace = makeTrace(app, arguments);
    try {
        if (trace != nullptr)
            trace->begin(set);
        else
            set();
        return trace;
    } catch (const std::system_error&) { // no directory for the switch file
        if (!arguments.trace.empty() || !app.got_subcommand("set"))
            throw;
        set();
        return nullptr; // the write is as good without its reason
    }
}

int carryOut(const CLI::App& app, const Arguments& arguments, Output& output) {
    startTimer(app, arguments, output);
    const std::unique_ptr<Trace> trace = setUrl(app, arguments);
    return execute(app, arguments, output, trace.get(), *makeFormat(arguments, output));
}

int complete(const CLI::App& app, int argc, char** argv, Output& output) {
    for (const std::string& word : completions(app, std::vector<std::string>(argv + 2, argv + argc)))
        output.write(word + '\n');
    return 0;
}

/** Reports an error on standard error, and as JSON if that was requested. */
int fail(const std::string& why, int status, bool inJson, Output& output) {
    std::cerr << programName << ": " << printable(why) << '\n';
    if (status == exitUsage)
        std::cerr << "try 'owbctl --help'\n";
    if (inJson && !output.isBegun())
        output.write(jsonError(why, status));
    return status;
}

int run(int argc, char** argv, Output& output) {
    Arguments arguments;
    CLI::App app("Reads and writes the data of a CIM object manager through libowb.", programName);
    describe(app, arguments);
    // For the completion of the shell; not a command for users.
    if (argc > 1 && std::string(argv[1]) == "complete")
        return complete(app, argc, argv, output);
    const bool inJson = asksForJson(argc, argv);
    try {
        parse(app, arguments, argc, argv);
        if (app.got_subcommand("help")) {
            output.write(helpOf(app, arguments.helpOn));
            return 0;
        }
        return carryOut(app, arguments, output);
    } catch (const CLI::Success& wanted) { // help or version
        std::ostringstream text;
        app.exit(wanted, text, text);
        output.write(text.str());
        return 0;
    } catch (const CLI::ParseError& reason) {
        return fail(reason.what(), exitUsage, inJson, output);
    } catch (const UsageError& reason) {
        return fail(reason.what(), exitUsage, inJson, output);
    } catch (const std::bad_alloc&) {
        return fail("out of memory", exitFailed, inJson, output);
    } catch (const std::exception& reason) {
        return fail(reason.what(), exitFailed, inJson, output);
    }
}

} // namespace
} // namespace owbctl

namespace {

/** Whether the runtime ends the program because there is no memory for an exception, or for what its handler
 * does. */
bool isOutOfMemory() {
    if (std::current_exception() == nullptr)
        return true;
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
}

[[noreturn]] void endWithoutMemory() {
    static const char message[] = "owbctl: out of memory\n";
    if (!isOutOfMemory() || ::write(STDERR_FILENO, message, sizeof message - 1) < 0)
        std::abort();
    ::_exit(owbctl::exitFailed);
}

// Before the static objects of the program are made: they allocate.
__attribute__((constructor(101))) void setTerminate() {
    std::set_terminate(endWithoutMemory);
}

} // namespace

int main(int argc, char** argv) {
    try {
        owbctl::Output output;
        return owbctl::run(argc, argv, output);
    } catch (const std::bad_alloc&) {
        std::cerr << "owbctl: out of memory\n";
        return owbctl::exitFailed;
    } catch (const std::exception& error) { // standard output is closed or failed
        std::cerr << "owbctl: " << error.what() << '\n';
        return owbctl::exitFailed;
    }
}

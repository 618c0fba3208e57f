// owbctl: reads and writes groups through libowb and prints them.
#include "agent/Items.hpp"
#include "agent/Endpoint.hpp"
#include "agent/Number.hpp"
#include "agent/Status.hpp"
#include "agent/Trace.hpp"
#include "arguments/Assignment.hpp"
#include "arguments/CommandLine.hpp"
#include "arguments/Completion.hpp"
#include "arguments/GroupNames.hpp"
#include "arguments/Usage.hpp"
#include "commands/DoctorCommand.hpp"
#include "commands/GetCommand.hpp"
#include "commands/InstanceCommand.hpp"
#include "commands/SetCommand.hpp"
#include "commands/TimeCommand.hpp"
#include "commands/WatchCommand.hpp"
#include "formats/CsvFormat.hpp"
#include "formats/JsonFormat.hpp"
#include "formats/LineFormat.hpp"
#include "formats/TableFormat.hpp"
#include "output/Deadline.hpp"
#include "output/Output.hpp"
#include "output/Text.hpp"

#include <exception>
#include <iostream>
#include <memory>
#include <sstream>

namespace owbctl {
namespace {

const char* const programName = "owbctl";
/** Seconds after which a silent object manager has told enough. */
constexpr double doctorTimeout = 60;

std::unique_ptr<Format> makeFormat(const Words& words, Output& output) {
    if (words.output == "json")
        return std::make_unique<JsonFormat>(output, withoutPassword(words.url));
    if (words.output == "csv")
        return std::make_unique<CsvFormat>(output);
    if (words.output == "line")
        return std::make_unique<LineFormat>(output);
    return std::make_unique<TableFormat>(output);
}

std::optional<long> numberOrNone(const std::string& checked) {
    return checked.empty() ? std::nullopt : decimal(checked);
}

long groupOf(const Words& words) {
    return groupsNamed(words.group).front();
}

std::vector<Version> versions() {
    return {{programName, OWBCTL_VERSION},
            {"libowb", OWB_version(nullptr, nullptr)},
            {"client library", OWBCTL_CLIENT_IS_BUNDLED ? "bundled" : "of the system"}};
}

InstanceQuery instanceQuery(const Words& words) {
    std::vector<long> groups =
        words.group.empty() ? groupsOfPath(words.path) : std::vector<long>{groupOf(words)};
    return {words.path, std::move(groups), numberOrNone(words.row).value_or(0)};
}

WriteRequest writeRequest(const Words& words) {
    const long group = groupOf(words);
    return {group, decimal(words.row).value(), parseAssignments(group, words.assignments)};
}

int execute(const CLI::App& app, const Words& words, const Output& output, const Trace* trace,
            Format& format) {
    const std::string url = withoutPassword(words.url);
    if (app.got_subcommand("get"))
        return getGroups({groupsNamed(words.groups), words.properties, numberOrNone(words.row)}, format, url);
    if (app.got_subcommand("watch"))
        return watchGroup({groupOf(words), words.interval, numberOrNone(words.count)}, format, output, url);
    if (app.got_subcommand("instance"))
        return showInstance(instanceQuery(words), format, url);
    if (app.got_subcommand("set"))
        return setRow(writeRequest(words), format, url);
    if (app.got_subcommand("time")) {
        const bool isDate = app.get_subcommand("time")->got_subcommand("epoch");
        return showConversion(isDate ? convertDate(words.time) : convertInterval(words.time, words.unit),
                              format);
    }
    if (app.got_subcommand("doctor"))
        return showChecks(words.url, *trace, format);
    if (app.got_subcommand("processes"))
        format.writeProcesses(readProcesses());
    else if (app.got_subcommand("version"))
        format.writeVersions(versions());
    else
        format.writeCatalogue(words.groups.empty() ? everyGroup() : groupsNamed(words.groups));
    return 0;
}

void bound(double timeout, const Words& words, const Output& output) {
    std::ostringstream message;
    message << "no end within " << timeout << " s";
    endAfter(timeout, "owbctl: " + message.str() + '\n',
             words.output == "json" ? jsonError(message.str(), exitTimeout) : std::string(), output);
}

/** Sets the URL, which is the first that the library traces; the trace that it goes into, or null. */
std::unique_ptr<Trace> setUrl(const CLI::App& app, const Words& words) {
    const auto set = [&words] { OWB_URLSet(words.url.c_str()); };
    std::unique_ptr<Trace> trace;
    if (!words.trace.empty())
        trace = std::make_unique<Trace>(words.trace);
    else if (app.got_subcommand("doctor")) // which needs the library's reasons
        trace = std::make_unique<Trace>();
    if (trace != nullptr)
        trace->begin(set);
    else
        set();
    return trace;
}

int carryOut(const CLI::App& app, const Words& words, Output& output) {
    const double timeout = words.timeout == 0 && app.got_subcommand("doctor") ? doctorTimeout : words.timeout;
    if (timeout > 0)
        bound(timeout, words, output);
    const std::unique_ptr<Trace> trace = setUrl(app, words);
    return execute(app, words, output, trace.get(), *makeFormat(words, output));
}

int complete(const CLI::App& app, int argc, char** argv, Output& output) {
    for (const std::string& word : completions(app, std::vector<std::string>(argv + 2, argv + argc)))
        output.write(word + '\n');
    return 0;
}

/** Says why there is no data, on standard error, and in JSON where that was asked for. */
int fail(const std::string& why, int status, bool inJson, Output& output) {
    std::cerr << programName << ": " << printable(why) << '\n';
    if (status == exitUsage)
        std::cerr << "try 'owbctl --help'\n";
    if (inJson && !output.isBegun())
        output.write(jsonError(why, status));
    return status;
}

int run(int argc, char** argv, Output& output) {
    Words words;
    CLI::App app("Reads and writes the data of a CIM object manager through libowb.", programName);
    describe(app, words);
    // For the shell's completion, and so no command of the user's.
    if (argc > 1 && std::string(argv[1]) == "complete")
        return complete(app, argc, argv, output);
    const bool inJson = asksForJson(argc, argv);
    try {
        parse(app, argc, argv);
        return carryOut(app, words, output);
    } catch (const CLI::Success& wanted) { // help or version
        std::ostringstream text;
        app.exit(wanted, text, text);
        output.write(text.str());
        return 0;
    } catch (const CLI::ParseError& reason) {
        return fail(reason.what(), exitUsage, inJson, output);
    } catch (const UsageError& reason) {
        return fail(reason.what(), exitUsage, inJson, output);
    } catch (const std::exception& reason) {
        return fail(reason.what(), exitFailed, inJson, output);
    }
}

} // namespace
} // namespace owbctl

int main(int argc, char** argv) {
    try {
        owbctl::Output output;
        return owbctl::run(argc, argv, output);
    } catch (const std::exception& error) { // there is no standard output, or not any more
        std::cerr << "owbctl: " << error.what() << '\n';
        return owbctl::exitFailed;
    }
}

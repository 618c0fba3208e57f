// owbctl: reads and writes groups through libowb and prints them.

#include "CommandLine.hpp"
#include "InstanceCommand.hpp"
#include "JsonFormat.hpp"
#include "Number.hpp"
#include "Output.hpp"
#include "SetCommand.hpp"
#include "ShowGroups.hpp"
#include "Status.hpp"
#include "TableFormat.hpp"
#include "Text.hpp"
#include "TimeCommand.hpp"
#include "Usage.hpp"

#include <owb.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace owbctl {
namespace {

int refuse(const std::string& why) {
    std::cerr << "owbctl: " << printable(why) << "\ntry 'owbctl --help'\n";
    return exitUsage;
}

/** Ends the program as CLI11 asks for: help and version to standard output, a usage error to standard error.
 */
int leave(const CLI::App& app, const CLI::ParseError& reason, Output& output) {
    if (reason.get_exit_code() != 0)
        return refuse(reason.what());
    std::ostringstream text;
    app.exit(reason, text, text);
    output.write(text.str());
    return 0;
}

std::unique_ptr<Format> makeFormat(const Words& words, Output& output) {
    if (words.json)
        return std::make_unique<JsonFormat>(output, withoutPassword(words.url));
    return std::make_unique<TableFormat>(output);
}

long number(const std::string& checked) {
    return decimal(checked).value();
}

void addEveryGroup(std::vector<long>& groups) {
    for (long group = 0; group <= OWB_MAX_GROUP; ++group)
        groups.push_back(group);
}

std::vector<long> groupsToGet(const Words& words) {
    std::vector<long> groups;
    for (const std::string& text : words.groups) {
        if (text == everyGroup)
            addEveryGroup(groups);
        else
            groups.push_back(number(text));
    }
    return groups;
}

InstanceQuery instanceQuery(const Words& words) {
    std::vector<long> groups =
        words.group.empty() ? groupsOfPath(words.path) : std::vector<long>{number(words.group)};
    return {words.path, std::move(groups), number(words.row)};
}

WriteRequest writeRequest(const Words& words) {
    const long group = number(words.group);
    return {group, number(words.row), parseAssignments(group, words.assignments)};
}

int execute(const CLI::App& app, const Words& words, Format& format) {
    OWB_URLSet(words.url.c_str());
    const std::string url = withoutPassword(words.url);
    if (app.got_subcommand("get"))
        return showGroups(groupsToGet(words), readGroup, format, url);
    if (app.got_subcommand("instance"))
        return showInstance(instanceQuery(words), format, url);
    if (app.got_subcommand("set"))
        return setRow(writeRequest(words), format, url);
    if (app.got_subcommand("time")) {
        const bool isDate = app.get_subcommand("time")->got_subcommand("epoch");
        return showConversion(isDate ? convertDate(words.time) : convertInterval(words.time, words.unit),
                              format);
    }
    if (app.got_subcommand("processes"))
        format.writeProcesses(readProcesses());
    else
        format.writeCatalogue();
    return 0;
}

int run(int argc, char** argv) {
    Output output;
    Words words;
    CLI::App app("Reads and writes the data of a CIM object manager through libowb.", "owbctl");
    describe(app, words);
    try {
        parse(app, argc, argv);
        return execute(app, words, *makeFormat(words, output));
    } catch (const CLI::ParseError& reason) {
        return leave(app, reason, output);
    } catch (const UsageError& reason) {
        return refuse(reason.what());
    }
}

} // namespace
} // namespace owbctl

int main(int argc, char** argv) {
    try {
        return owbctl::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "owbctl: " << error.what() << '\n';
        return owbctl::exitFailed;
    }
}

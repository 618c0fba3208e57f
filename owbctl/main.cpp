// owbctl: reads groups through libowb and prints them.

#include "GetCommand.hpp"
#include "JsonFormat.hpp"
#include "Output.hpp"
#include "Status.hpp"
#include "TableFormat.hpp"
#include "Text.hpp"

#include <owb.h>

#include <CLI/CLI.hpp>

#include <charconv>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace owbctl {
namespace {

struct Options {
    std::string url = OWB_URLGet();
    bool json = false;
    std::vector<std::string> groups;
};

constexpr const char* exitStatuses = R"(Exit status:
   0  done
   1  owbctl itself failed, e.g. standard output could not be written
   2  wrong usage
  12  the object manager gave no instance
  13  the library refused an argument
  14  no connection to the object manager
  15  no answer from the object manager, or it reported an error
Of several groups all are read; the first one that fails decides.

The options --url and --json may stand before or behind the command.)";

/** The group number that `text` is; -1 when it is none. Decimal digits only: neither signs nor other bases.
 */
long groupNumber(const std::string& text) {
    unsigned long number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const bool valid = error == std::errc() && rest == end && number <= OWB_MAX_GROUP;
    return valid ? static_cast<long>(number) : -1;
}

std::string checkGroup(const std::string& text) {
    if (groupNumber(text) >= 0)
        return std::string();
    return "'" + text + "' is no group number (0 to " + std::to_string(OWB_MAX_GROUP) + ")";
}

std::string checkUrl(const std::string& text) {
    return text.empty() ? "the URL is empty" : std::string();
}

void describe(CLI::App& app, Options& options) {
    app.fallthrough();
    app.require_subcommand(0, 1); // none at all is noticed behind an unknown one, see parse()
    app.footer(exitStatuses);
    app.set_version_flag("--version", std::string("owbctl ") + OWB_version(nullptr, nullptr));
    app.add_option("--url", options.url, "Object manager to read from; default " + options.url)
        ->type_name("URL")
        ->check(checkUrl);
    app.add_flag("--json", options.json, "Print JSON instead of tables");

    app.add_subcommand("groups", "List the groups: class, nominators and the properties behind them");
    CLI::App* const get = app.add_subcommand("get", "Read groups from the object manager");
    get->add_option("GROUP", options.groups, "Number of a group, 0 to 30; may be repeated")
        ->required()
        ->type_name("")
        ->check(checkGroup);
}

void parse(CLI::App& app, int argc, char** argv) {
    app.parse(argc, argv);
    if (app.get_subcommands().empty())
        throw CLI::RequiredError("a command");
}

/** Ends the program as CLI11 asks for: help and version to standard output, a usage error to standard error.
 */
int leave(const CLI::App& app, const CLI::ParseError& reason, Output& output) {
    if (reason.get_exit_code() != 0) {
        std::cerr << "owbctl: " << printable(reason.what()) << "\ntry 'owbctl --help'\n";
        return exitUsage;
    }
    std::ostringstream text;
    app.exit(reason, text, text);
    output.write(text.str());
    return 0;
}

std::unique_ptr<Format> makeFormat(const Options& options, Output& output) {
    if (options.json)
        return std::make_unique<JsonFormat>(output, withoutPassword(options.url));
    return std::make_unique<TableFormat>(output);
}

int run(int argc, char** argv) {
    Output output;
    Options options;
    CLI::App app("Reads the data of a CIM object manager through libowb.", "owbctl");
    describe(app, options);
    try {
        parse(app, argc, argv);
    } catch (const CLI::ParseError& reason) {
        return leave(app, reason, output);
    }

    const std::unique_ptr<Format> format = makeFormat(options, output);
    if (app.got_subcommand("groups")) {
        format->writeCatalogue();
        return 0;
    }
    OWB_URLSet(options.url.c_str());
    std::vector<long> groups;
    for (const std::string& text : options.groups)
        groups.push_back(groupNumber(text));
    return getGroups(groups, *format, withoutPassword(options.url));
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

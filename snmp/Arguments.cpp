#include "snmp/Arguments.hpp"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

namespace snmp {
namespace {

/** Bytes of the longest name of a context (RFC 3415). */
constexpr std::size_t longestContext = 32;

/** Arguments that Arguments has in another form. */
struct Texts {
    std::string master = "/var/agentx/master";
    unsigned counters = 3;
    unsigned tables = 15;
    unsigned packages = 60;
    unsigned longest = 600;
};

std::string checkMaster(const std::string& text) {
    return masterAddress(text)
               ? std::string()
               : "'" + text + "' is not the path of a socket or tcp:ADDRESS:PORT (tcp:127.0.0.1:705)";
}

std::string checkContext(const std::string& name) {
    return name.size() <= longestContext
               ? std::string()
               : "a context has at most " + std::to_string(longestContext) + " bytes";
}

std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "may not be empty" : std::string();
}

void addAge(CLI::App& app, const char* name, unsigned& seconds, const char* description) {
    app.add_option(name, seconds, description)
        ->type_name("SECONDS")
        ->check(CLI::Range(1, 24 * 60 * 60))
        ->capture_default_str();
}

void addOptions(CLI::App& app, Arguments& arguments, Texts& texts) {
    app.add_option("--master", texts.master, "Socket of the SNMP agent: its path or tcp:ADDRESS:PORT")
        ->type_name("ADDRESS")
        ->check(checkMaster)
        ->capture_default_str();
    app.add_option("--context", arguments.session.context,
                   "SNMP context of the objects; \"\" for the default one")
        ->type_name("NAME")
        ->check(checkContext)
        ->capture_default_str();
    app.add_option(
           "--url", arguments.objects.url,
           "URL of the object manager; default: environment variable OWB_URL, else that of the library")
        ->type_name("URL")
        ->check(checkNotEmpty);
    app.add_flag("--read-only", arguments.objects.isReadOnly, "Refuse all sets");
    addAge(app, "--counters-age", texts.counters,
           "Age from which counters and single objects are read again");
    addAge(app, "--tables-age", texts.tables,
           "Age from which processes, connections, storage and physical parts are read again");
    addAge(app, "--packages-age", texts.packages, "Age from which installed packages are read again");
    addAge(app, "--longest-age", texts.longest,
           "Age from which values are absent if they cannot be read again");
    app.set_version_flag("--version", "owb-agentx " OWB_AGENTX_VERSION);
}

void convert(const Texts& texts, Arguments& arguments) {
    arguments.session.master = *masterAddress(texts.master);
    arguments.objects.registersTables = arguments.session.context.empty();
    arguments.objects.ages = {std::chrono::seconds(texts.counters), std::chrono::seconds(texts.tables),
                              std::chrono::seconds(texts.packages), std::chrono::seconds(texts.longest)};
    const char* const url = std::getenv("OWB_URL");
    if (arguments.objects.url.empty() && url != nullptr)
        arguments.objects.url = url;
}

} // namespace

Arguments readArguments(int argc, char** argv) {
    Arguments arguments;
    Texts texts;
    CLI::App app("Serves the data of a CIM object manager to SNMP managers, as a subagent of snmpd.",
                 "owb-agentx");
    addOptions(app, arguments, texts);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        std::exit(app.exit(e));
    } catch (const CLI::ParseError& e) {
        std::cerr << "owb-agentx: command line: " << e.what() << std::endl;
        std::exit(2);
    }
    convert(texts, arguments);
    return arguments;
}

} // namespace snmp

#include "exporter/CommandLine.hpp"

#include "metrics/Naming.hpp"

#include <CLI/CLI.hpp>
#include <owb.h>

#include <cstdlib>
#include <iostream>
#include <set>

namespace exporter {
namespace {

/** No privileges, outside the range of ports that the kernel hands out, in the range that exporters use, and
 * with the last digits of 5988, the port of CIM-XML. */
constexpr std::uint16_t defaultPort = 9588;
const char* const defaultAddress = "127.0.0.1:9588";

/** Arguments that Options has in another form. */
struct Texts {
    std::vector<std::string> listen;
    std::vector<std::string> groups{"all"};
    double maxAge = 1;
    double timeLimit = 10;
    unsigned stopTime = 5;
};

std::string checkAddress(const std::string& text) {
    return http::networkAddress(text)
               ? std::string()
               : "'" + text + "' is not [ADDRESS:]PORT (127.0.0.1:9588, [::1]:9588 or 9588)";
}

std::string checkGroup(const std::string& text) {
    return metrics::measuredGroupsNamed(text).empty() ? "'" + text + "' names no group that has metrics"
                                                      : std::string();
}

std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "may not be empty" : std::string();
}

std::string defaultUrl() {
    const char* const set = std::getenv("OWB_URL");
    return set != nullptr && *set != '\0' ? set : OWB_URLGet();
}

void describe(CLI::App& app, Options& options, Texts& texts) {
    app.add_option(
           "--listen", texts.listen,
           "Serve clients without TLS (default ADDRESS: the loopback address); may be repeated. Default:\n" +
               std::string(defaultAddress) + ", unless --tls-listen is given")
        ->type_name("[ADDRESS:]PORT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkAddress);
    http::addTlsOptions(app, options.tls, defaultPort);
    app.add_option("--url", options.url,
                   "URL of the object manager; default: environment variable OWB_URL, else\n" +
                       std::string(OWB_URLGet()))
        ->type_name("URL")
        ->check(checkNotEmpty);
    app.add_option(
           "--groups", texts.groups,
           "Groups to read: numbers, names or classes, as in udp, 2,4 or 2-4, or all; may be repeated")
        ->type_name("GROUPS")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkGroup)
        ->capture_default_str();
    app.add_option("--max-age", texts.maxAge, "Serve the values of the last scrape again for this time")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, 3600.0))
        ->capture_default_str();
    app.add_option("--timeout", texts.timeLimit, "Time limit of a scrape; a client may send a shorter one")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.1, 3600.0))
        ->capture_default_str();
    app.add_option("--stop-time", texts.stopTime, "Time for current requests to end after SIGTERM")
        ->type_name("SECONDS")
        ->check(CLI::Range(0, 3600))
        ->capture_default_str();
    app.add_flag("--verbose", options.isVerbose, "Log every request");
    app.set_version_flag("--version", std::string("owb-exporter ") + OWB_EXPORTER_VERSION);
}

std::chrono::milliseconds milliseconds(double seconds) {
    return std::chrono::milliseconds(static_cast<std::chrono::milliseconds::rep>(seconds * 1000));
}

void convert(Texts texts, Options& options) {
    if (texts.listen.empty() && options.tls.listen.empty())
        texts.listen = {defaultAddress};
    for (const std::string& address : texts.listen)
        options.listen.push_back(*http::networkAddress(address));
    std::set<long> groups;
    for (const std::string& text : texts.groups) {
        const std::vector<long> named = metrics::measuredGroupsNamed(text);
        groups.insert(named.begin(), named.end());
    }
    options.groups.assign(groups.begin(), groups.end());
    options.maxAge = milliseconds(texts.maxAge);
    options.timeLimit = milliseconds(texts.timeLimit);
    options.stopTime = std::chrono::seconds(texts.stopTime);
}

} // namespace

Options readCommandLine(int argc, char** argv) {
    Options options;
    options.url = defaultUrl();
    Texts texts;
    CLI::App app("Serves the data of a CIM object manager as metrics for Prometheus.", "owb-exporter");
    describe(app, options, texts);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        std::exit(app.exit(e));
    } catch (const CLI::ParseError& e) {
        std::cerr << "owb-exporter: command line: " << e.what() << std::endl;
        std::exit(2);
    }
    convert(texts, options);
    return options;
}

} // namespace exporter

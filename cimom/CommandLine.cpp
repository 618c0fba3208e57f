#include "CommandLine.hpp"

#include "util/Number.hpp"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>

namespace cimom {
namespace {

/** A file mode in octal digits; nothing for any other text. */
std::optional<mode_t> fileMode(const std::string& text) {
    const std::optional<mode_t> mode = util::number<mode_t>(text, 8);
    return mode && *mode <= 0777 ? mode : std::nullopt;
}

std::string checkMode(const std::string& text) {
    return fileMode(text) ? std::string() : "'" + text + "' is not a file mode (octal, 0 to 0777)";
}

/** Rejects an empty name: it would mean that the option is missing. */
std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "empty name" : std::string();
}

std::string checkAddress(const std::string& text) {
    return http::networkAddress(text)
               ? std::string()
               : "'" + text + "' is not [ADDRESS:]PORT (127.0.0.1:5988, [::1]:5988 or 5988)";
}

/** Arguments that Options has in another form. */
struct Texts {
    std::string socketMode = "0666";
    std::vector<std::string> listen;
    std::string userFrom;
    unsigned idleTime = 300;
    unsigned requestTime = 60;
    unsigned stopTime = 5;
};

void addSockets(CLI::App& app, Options& options, Texts& texts) {
    app.add_option("--socket", options.socket, "Path of the Unix-domain socket")
        ->type_name("PATH")
        ->capture_default_str();
    app.add_option("--socket-mode", texts.socketMode, "File mode of the socket: who may connect and read")
        ->type_name("MODE")
        ->check(checkMode)
        ->capture_default_str();
    app.add_option("--listen", texts.listen,
                   "Serve TCP clients, too (default ADDRESS: the loopback address); may be repeated")
        ->type_name("[ADDRESS:]PORT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkAddress);
}

void addFiles(CLI::App& app, Options& options, Texts& texts) {
    auto* const users =
        app.add_option("--users", options.users, "Names and passwords of the TCP clients that may log in")
            ->type_name("FILE")
            ->check(checkNotEmpty);
    app.add_flag("--require-login", options.requiresLogin, "Let TCP clients read only after a login")
        ->needs(users);
    http::addTlsOptions(app, options.tls, 5989);
    app.add_option("--tls-user-from", texts.userFrom,
                   "Log in a TLS client as the user that its certificate names: cn, its common name")
        ->type_name("cn")
        ->check(CLI::IsMember({"cn"}))
        ->needs(users)
        ->needs("--tls-client-ca");
    auto* const state =
        app.add_option("--state", options.state, "File that keeps the values that clients write")
            ->type_name("FILE")
            ->capture_default_str();
    app.add_flag("--no-state", options.keepsNoState, "Refuse all writes, and keep no state file")
        ->excludes(state);
    app.add_option("--instances", options.instances, "Directory of JSON files with further instances")
        ->type_name("DIRECTORY")
        ->check(checkNotEmpty);
    app.add_option("--root", options.root, "Directory with the host's /proc, /sys, /etc and so on")
        ->type_name("DIRECTORY")
        ->check(CLI::ExistingDirectory)
        ->capture_default_str();
}

void addLimits(CLI::App& app, Options& options, Texts& texts) {
    const CLI::Range seconds(1, 24 * 60 * 60);
    app.add_option("--max-connections", options.limits.connections, "Connections at a time")
        ->type_name("NUMBER")
        ->check(CLI::Range(1, 65535))
        ->capture_default_str();
    app.add_option("--max-head", options.limits.head, "Bytes of the head of a request")
        ->type_name("BYTES")
        ->check(CLI::Range(256, 1024 * 1024))
        ->capture_default_str();
    app.add_option("--max-body", options.limits.body, "Bytes of the body of a request")
        ->type_name("BYTES")
        ->check(CLI::Range(256, 256 * 1024 * 1024))
        ->capture_default_str();
    app.add_option("--idle-time", texts.idleTime, "Time between two requests of a client")
        ->type_name("SECONDS")
        ->check(seconds)
        ->capture_default_str();
    app.add_option("--request-time", texts.requestTime,
                   "Time for a client to send a request or to read a piece of the reply")
        ->type_name("SECONDS")
        ->check(seconds)
        ->capture_default_str();
    app.add_option("--stop-time", texts.stopTime, "Time for current requests to end after SIGTERM")
        ->type_name("SECONDS")
        ->check(CLI::Range(0, 3600))
        ->capture_default_str();
}

/** All clients may send a body at the same time; a 32-bit process must have memory for that. */
void checkTogether(const http::Limits& limits) {
    const std::uint64_t maximum = 1024ULL * 1024 * 1024;
    if (limits.connections * limits.body > maximum)
        throw CLI::ValidationError("--max-connections times --max-body is more than 1 GiB");
}

void convert(const Texts& texts, Options& options) {
    options.socketMode = *fileMode(texts.socketMode);
    for (const std::string& address : texts.listen)
        options.listen.push_back(*http::networkAddress(address));
    options.takesUserFromCertificate = !texts.userFrom.empty();
    options.limits.idle = std::chrono::seconds(texts.idleTime);
    options.limits.request = std::chrono::seconds(texts.requestTime);
    options.stopTime = std::chrono::seconds(texts.stopTime);
}

} // namespace

Options readCommandLine(int argc, char** argv) {
    Options options;
    Texts texts;
    CLI::App app("Serves the live data of this host to CIM clients.", "owbcimomd");
    addSockets(app, options, texts);
    addFiles(app, options, texts);
    addLimits(app, options, texts);
    app.final_callback([&options] { checkTogether(options.limits); });
    app.add_flag("--verbose", options.isVerbose, "Log every request");
    app.set_version_flag("--version", "owbcimomd " OWBCIMOMD_VERSION);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& e) {
        std::exit(app.exit(e));
    } catch (const CLI::ParseError& e) {
        std::cerr << "owbcimomd: command line: " << e.what() << std::endl;
        std::exit(2);
    }
    convert(texts, options);
    return options;
}

} // namespace cimom

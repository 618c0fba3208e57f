#include "CommandLine.hpp"

#include "system/Text.hpp"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>

namespace cimom {
namespace {

/** A file mode in octal digits; nothing when the text is none. */
std::optional<mode_t> fileMode(const std::string& text) {
    const std::optional<mode_t> mode = number<mode_t>(text, 8);
    return mode && *mode <= 0777 ? mode : std::nullopt;
}

std::string checkMode(const std::string& text) {
    return fileMode(text) ? std::string() : "'" + text + "' is no file mode (octal, 0 to 0777)";
}

/** An empty one would pass for none. */
std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "it is empty" : std::string();
}

std::string checkAddress(const std::string& text) {
    return networkAddress(text) ? std::string()
                                : "'" + text + "' is no ADDRESS:PORT (127.0.0.1:5988, [::1]:5988 or 5988)";
}

/** Texts of the command line that Options holds in another form. */
struct Texts {
    std::string socketMode = "0666";
    std::vector<std::string> listen;
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
                   "Serve TCP clients, too (without ADDRESS on the loopback address); may be repeated")
        ->type_name("[ADDRESS:]PORT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkAddress);
}

void addFiles(CLI::App& app, Options& options) {
    auto* const users =
        app.add_option("--users", options.users, "Names and passwords of the TCP clients that may log in")
            ->type_name("FILE")
            ->check(checkNotEmpty);
    app.add_flag("--require-login", options.requiresLogin,
                 "Let TCP clients read only when they have logged in")
        ->needs(users);
    auto* const state =
        app.add_option("--state", options.state, "File that keeps the values that clients write")
            ->type_name("FILE")
            ->capture_default_str();
    app.add_flag("--no-state", options.keepsNoState, "Refuse all writes, and keep no state file")
        ->excludes(state);
    app.add_option("--instances", options.instances, "Folder of JSON files with further instances")
        ->type_name("FOLDER")
        ->check(checkNotEmpty);
    app.add_option("--root", options.root, "Folder that holds the host's /proc, /sys, /etc and so on")
        ->type_name("FOLDER")
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
    app.add_option("--idle-time", texts.idleTime, "How long a client may wait between requests")
        ->type_name("SECONDS")
        ->check(seconds)
        ->capture_default_str();
    app.add_option("--request-time", texts.requestTime,
                   "How long a client may take to send a request or to take a piece of the reply")
        ->type_name("SECONDS")
        ->check(seconds)
        ->capture_default_str();
    app.add_option("--stop-time", texts.stopTime,
                   "How long answers under way may take when it is told to end")
        ->type_name("SECONDS")
        ->check(CLI::Range(0, 3600))
        ->capture_default_str();
}

/** What all clients may send at the same time must leave room in the memory of a 32-bit process. */
void checkTogether(const Limits& limits) {
    const std::uint64_t most = 1024ULL * 1024 * 1024;
    if (limits.connections * limits.body > most)
        throw CLI::ValidationError("--max-connections times --max-body is more than 1 GiB");
}

void convert(const Texts& texts, Options& options) {
    options.socketMode = *fileMode(texts.socketMode);
    for (const std::string& address : texts.listen)
        options.listen.push_back(*networkAddress(address));
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
    addFiles(app, options);
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

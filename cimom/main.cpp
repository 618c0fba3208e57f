// owbcimomd: serves the data of this host to CIM clients on a Unix-domain socket.

#include "Log.hpp"
#include "ObjectManager.hpp"
#include "Text.hpp"
#include "host/Host.hpp"
#include "http/Server.hpp"
#include "protocol/BinaryHandler.hpp"
#include "providers/Providers.hpp"
#include "state/DefaultPath.hpp"
#include "state/SiteValues.hpp"

#include <CLI/CLI.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

struct Options {
    std::string socket = "/tmp/OpenWBEM_UDS";
    std::string socketMode = "0666";
    std::string state = cimom::defaultStatePath();
    std::string root = "/";
};

/** A file mode in octal digits; nothing when the text is none. */
std::optional<mode_t> fileMode(const std::string& text) {
    const std::optional<mode_t> mode = cimom::number<mode_t>(text, 8);
    return mode && *mode <= 0777 ? mode : std::nullopt;
}

std::string checkMode(const std::string& text) {
    return fileMode(text) ? std::string() : "'" + text + "' is no file mode (octal, 0 to 0777)";
}

/** Serves until the io_context is stopped. An exception ends the session that it comes from and no other. */
void run(boost::asio::io_context& io) {
    while (!io.stopped()) {
        try {
            io.run();
        } catch (const std::exception& e) {
            cimom::log(std::string("connection closed: ") + e.what());
        }
    }
}

void serve(const Options& options) {
    if (options.state.empty())
        throw std::runtime_error("state file: no name; give one by --state");
    const cimom::Host host(options.root);
    cimom::ObjectManager manager(cimom::makeProviders(host),
                                 cimom::SiteValues(std::make_unique<cimom::StateFile>(options.state)));
    const cimom::BinaryHandler handler(manager);

    boost::asio::io_context io(1);
    // Before the socket is made, so that no signal can leave its file behind.
    boost::asio::signal_set stopSignals(io, SIGTERM, SIGINT);
    stopSignals.async_wait([&io](const boost::system::error_code&, int) { io.stop(); });

    cimom::Server server(io, options.socket, *fileMode(options.socketMode), handler);
    std::cerr << "owbcimomd: ready on " << options.socket << std::endl;
    run(io);
}

} // namespace

int main(int argc, char** argv) {
    // A client or a log reader that goes away is no reason to end.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor is a limit on the size of files: a write then fails like on a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    // What is made on the way to the state file is for its owner alone; the socket has a mode of its own.
    ::umask(0077);

    Options options;
    CLI::App app("Serves the live data of this host to CIM clients on a Unix-domain socket.", "owbcimomd");
    app.add_option("--socket", options.socket, "Path of the socket")
        ->type_name("PATH")
        ->capture_default_str();
    app.add_option("--socket-mode", options.socketMode, "File mode of the socket: who may connect and read")
        ->type_name("MODE")
        ->check(checkMode)
        ->capture_default_str();
    app.add_option("--state", options.state, "File that keeps the values that clients write")
        ->type_name("FILE")
        ->capture_default_str();
    app.add_option("--root", options.root, "Folder that holds the host's /proc, /sys, /etc and /run")
        ->type_name("FOLDER")
        ->check(CLI::ExistingDirectory)
        ->capture_default_str();
    app.set_version_flag("--version", "owbcimomd " OWBCIMOMD_VERSION);
    try {
        app.parse(argc, argv);
        serve(options);
        return 0;
    } catch (const CLI::Success& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "owbcimomd: command line: " << e.what() << std::endl;
        return 2;
    } catch (const std::exception& e) {
        cimom::log(e.what());
        return 1;
    }
}

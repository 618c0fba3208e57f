// owbcimomd: serves the data of this host to CIM clients on a Unix-domain socket.

#include "Host.hpp"
#include "ObjectManager.hpp"
#include "http/Server.hpp"
#include "protocol/BinaryHandler.hpp"
#include "providers/Providers.hpp"

#include <CLI/CLI.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

namespace {

struct Options {
    std::string socket = "/tmp/OpenWBEM_UDS";
    std::string root = "/";
};

/** Serves until the io_context is stopped. An exception ends the session that it comes from and no other. */
void run(boost::asio::io_context& io) {
    while (!io.stopped()) {
        try {
            io.run();
        } catch (const std::exception& e) {
            std::cerr << "owbcimomd: connection closed: " << e.what() << std::endl;
        }
    }
}

void serve(const Options& options) {
    const cimom::Host host(options.root);
    const cimom::ObjectManager manager(cimom::makeProviders(host));
    const cimom::BinaryHandler handler(manager);

    boost::asio::io_context io(1);
    // Before the socket is made, so that no signal can leave its file behind.
    boost::asio::signal_set stopSignals(io, SIGTERM, SIGINT);
    stopSignals.async_wait([&io](const boost::system::error_code&, int) { io.stop(); });

    cimom::Server server(io, options.socket, handler);
    std::cerr << "owbcimomd: ready on " << options.socket << std::endl;
    run(io);
}

} // namespace

int main(int argc, char** argv) {
    // A client or a log reader that goes away is no reason to end.
    std::signal(SIGPIPE, SIG_IGN);

    Options options;
    CLI::App app("Serves the live data of this host to CIM clients on a Unix-domain socket.", "owbcimomd");
    app.add_option("--socket", options.socket, "Path of the socket")->capture_default_str();
    app.add_option("--root", options.root, "Folder that holds the host's /proc, /sys, /etc and /run")
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
        std::cerr << "owbcimomd: " << e.what() << std::endl;
        return 1;
    }
}

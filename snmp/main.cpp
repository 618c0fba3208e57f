// owb-agentx: serves the data of a CIM object manager to SNMP managers, as a subagent of their agent.
#include "service/Log.hpp"
#include "service/ServiceManager.hpp"
#include "snmp/Arguments.hpp"
#include "snmp/session/Session.hpp"
#include "util/OneLine.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <chrono>
#include <csignal>
#include <exception>
#include <iostream>

namespace snmp {
namespace {

/** Time for the master to read the end of the session. */
constexpr std::chrono::seconds stopTime{1};

/** Serves until SIGTERM or SIGINT. Throws std::exception if memory or descriptors run out. */
void serve(Arguments arguments) {
    arguments.objects.log = service::log;
    arguments.session.log = service::log;
    boost::asio::io_context io{1};
    ManagedObjects objects(io, arguments.objects); // before all else: its child keeps what there is
    boost::asio::signal_set stopSignals(io, SIGTERM, SIGINT);
    stopSignals.async_wait([&io](const boost::system::error_code&, int) { io.stop(); });
    Session session(io, objects, arguments.session);
    session.start();
    service::notifyServiceManager("READY=1");
    io.run();

    service::notifyServiceManager("STOPPING=1");
    session.stop();
    io.restart();
    const auto end = std::chrono::steady_clock::now() + stopTime;
    while (!session.isClosed() && io.run_one_until(end) > 0) {
    }
}

} // namespace
} // namespace snmp

int main(int argc, char** argv) {
    // A log reader may close its end: write(2) then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    // The parent may have ignored SIGCHLD: waitpid(2) would not wait for a child.
    std::signal(SIGCHLD, SIG_DFL);
    service::nameLog("owb-agentx");
    const snmp::Arguments arguments = snmp::readArguments(argc, argv);
    try {
        snmp::serve(arguments);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "owb-agentx: " << util::onOneAsciiLine(e.what()) << '\n';
        return 1;
    }
}

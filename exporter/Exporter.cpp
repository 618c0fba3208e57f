#include "exporter/Exporter.hpp"

#include "exporter/Pages.hpp"
#include "exporter/Scraper.hpp"
#include "http/Server.hpp"
#include "service/EventLoop.hpp"
#include "service/Log.hpp"
#include "service/ServiceManager.hpp"
#include "service/SignalHandler.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <cstring>
#include <exception>
#include <string>

namespace exporter {
namespace {

/** A quarter of them is reserved for clients over Unix-domain sockets, which do not exist here. */
constexpr std::size_t connections = 64;
/** Bytes of the body of a request: GET has none. */
constexpr std::uint64_t maximumBody = 1024;

class Exporter {
public:
    explicit Exporter(const Options& options)
        : m_options(options)
        , m_stopSignals(m_io, SIGTERM, SIGINT)
        , m_reloadSignal(m_io, SIGHUP, [this] { reload(); })
        , m_countersSignal(m_io, SIGUSR1, [this] { logCounters(); })
        , m_scraper(m_io, {options.url, options.groups, options.maxAge})
        , m_watchdog(m_io)
        , m_server(m_io, settings()) {
        readTlsFiles();
    }

    void run() {
        m_stopSignals.async_wait([this](const boost::system::error_code&, int) { m_io.stop(); });
        service::log("ready on " + listen());
        service::notifyServiceManager("READY=1");
        m_watchdog.start();
        service::runDespiteExceptions([this] { m_io.run(); });
        stop();
    }

private:
    http::Settings settings() {
        http::Settings settings;
        settings.limits.connections = connections;
        settings.limits.body = maximumBody;
        settings.name = "owb-exporter/" OWB_EXPORTER_VERSION;
        settings.methods = methods;
        settings.makeResponder = [this](const http::Peer&) { return pages(m_scraper, m_options.timeLimit); };
        settings.log = service::log;
        settings.isVerbose = m_options.isVerbose;
        return settings;
    }

    /** Listens on all addresses. Returns them, with the ports that the kernel has chosen. */
    std::string listen() {
        std::string addresses;
        for (const http::NetworkAddress& address : m_options.listen)
            addresses += " and " + http::textOf(m_server.listenOn(address));
        for (const http::NetworkAddress& address : m_options.tls.listen)
            addresses += " and " + http::textOf(m_server.listenWithTlsOn(address)) + " (TLS)";
        return addresses.substr(std::strlen(" and "));
    }

    void readTlsFiles() {
        if (!m_options.tls.listen.empty())
            m_server.setTls(http::readTlsFiles(m_options.tls.files));
    }

    void reload() {
        if (m_options.tls.listen.empty()) {
            service::log("no files to reload");
            return;
        }
        try {
            readTlsFiles();
            service::log("reloaded the files for TLS");
        } catch (const std::exception& e) {
            service::log(std::string("cannot reload the files for TLS: ") + e.what());
        }
    }

    void logCounters() {
        const http::Counters& counters = m_server.counters();
        service::log("connections: " + std::to_string(counters.connections) + ", open " +
                     std::to_string(m_server.openConnections()) + "; requests: " +
                     std::to_string(counters.requests) + "; refused: " + std::to_string(counters.refused));
    }

    /** Stops the server, after the replies to current requests or Options::stopTime. */
    void stop() {
        service::notifyServiceManager("STOPPING=1");
        m_server.stop();
        m_reloadSignal.cancel();
        m_countersSignal.cancel();
        m_watchdog.stop();
        m_io.restart();
        const auto end = std::chrono::steady_clock::now() + m_options.stopTime;
        service::runDespiteExceptions([this, end] { m_io.run_until(end); });
    }

    const Options& m_options;
    // Outlives the scraper, whose child it may still hold. Its destructor destroys the open sessions.
    boost::asio::io_context m_io{1};
    boost::asio::signal_set m_stopSignals;
    service::SignalHandler m_reloadSignal;
    service::SignalHandler m_countersSignal;
    Scraper m_scraper;
    service::Watchdog m_watchdog;
    http::Server m_server;
};

} // namespace

void serve(const Options& options) {
    Exporter(options).run();
}

} // namespace exporter

#include "Daemon.hpp"

#include "host/Host.hpp"
#include "http/Server.hpp"
#include "http/UnixSocket.hpp"
#include "objects/ObjectManager.hpp"
#include "protocol/HttpService.hpp"
#include "providers/Providers.hpp"
#include "service/EventLoop.hpp"
#include "service/Log.hpp"
#include "service/ServiceManager.hpp"
#include "service/SignalHandler.hpp"
#include "site/SiteInstances.hpp"
#include "state/SiteValues.hpp"
#include "users/Logins.hpp"
#include "users/PasswordCheck.hpp"
#include "users/UsersFile.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <chrono>
#include <csignal>
#include <exception>
#include <malloc.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <utility>

namespace cimom {
namespace {

/** Nothing if all writes are refused. */
std::optional<SiteValues> siteValues(const Options& options) {
    if (options.keepsNoState)
        return std::nullopt;
    if (options.state.empty())
        throw std::runtime_error("state file: no default path: give one by --state, or --no-state");
    return SiteValues(std::make_unique<StateFile>(options.state));
}

/** An object manager and its server. */
class Daemon {
public:
    explicit Daemon(const Options& options)
        : m_options(options)
        , m_host(options.root)
        , m_manager(makeProviders(m_host, m_io), siteValues(options))
        // Before the socket exists, so that no signal can leave its file.
        , m_stopSignals(m_io, SIGTERM, SIGINT)
        , m_reloadSignal(m_io, SIGHUP, [this] { reload(); })
        , m_countersSignal(m_io, SIGUSR1, [this] { logCounters(); })
        , m_passwords(m_io, m_users)
        , m_logins(m_passwords)
        , m_service(m_manager, options.users.empty() ? nullptr : &m_logins, options.requiresLogin,
                    options.takesUserFromCertificate ? &m_users : nullptr)
        , m_watchdog(m_io)
        , m_server(m_io, settings()) {
        readFiles();
    }

    void run() {
        m_stopSignals.async_wait([this](const boost::system::error_code&, int) { m_io.stop(); });
        m_socket.emplace(m_options.socket, m_options.socketMode);
        m_server.listen(m_socket->duplicate(), AF_UNIX);
        const std::string addresses = m_options.socket + listenOnNetwork();
        service::log("ready on " + addresses);
        service::notifyServiceManager("READY=1");
        m_watchdog.start();
        service::runDespiteExceptions([this] { m_io.run(); });
        stop();
    }

private:
    /** Listens on the network. Returns " and <address>" for each address, with the port that the kernel has
     * chosen. */
    std::string listenOnNetwork() {
        std::string addresses;
        for (const http::NetworkAddress& address : m_options.listen) {
            const http::NetworkAddress at = m_server.listenOn(address);
            addresses += " and " + http::textOf(at);
            if (!m_options.users.empty() && !http::isLoopback(at))
                service::log("WARNING: passwords of clients of " + http::textOf(at) +
                             " are sent in the clear; --tls-listen encrypts them");
        }
        for (const http::NetworkAddress& address : m_options.tls.listen)
            addresses += " and " + http::textOf(m_server.listenWithTlsOn(address)) + " (TLS)";
        return addresses;
    }

    http::Settings settings() {
        http::Settings settings = m_service.settings(m_options.limits);
        settings.log = service::log;
        settings.isVerbose = m_options.isVerbose;
        return settings;
    }

    /** Reads the site's files: all or, if one is invalid, none. */
    void readFiles() {
        Users users = m_options.users.empty() ? Users() : readUsers(m_options.users);
        std::shared_ptr<http::TlsContext> tls =
            m_options.tls.listen.empty() ? nullptr : http::readTlsFiles(m_options.tls.files);
        if (!m_options.instances.empty())
            m_manager.setSiteInstances(SiteInstances(m_options.instances, m_manager.declarations()));
        m_users = std::move(users);
        m_server.setTls(std::move(tls));
        m_service.forgetLogins();
    }

    void reload() {
        try {
            readFiles();
            service::log("reloaded the site's files");
        } catch (const std::exception& e) {
            service::log(std::string("cannot reload the site's files: ") + e.what());
        }
        ::malloc_trim(0); // returns the memory of the old data
    }

    void logCounters() {
        const http::Counters& counters = m_server.counters();
        service::log("connections: " + std::to_string(counters.connections) + ", open " +
                     std::to_string(m_server.openConnections()) +
                     "; requests: " + std::to_string(counters.requests) + ", failed " +
                     std::to_string(counters.failed) + "; refused: " + std::to_string(counters.refused));
    }

    /** Stops the server, after the replies to current requests or Options::stopTime. */
    void stop() {
        service::notifyServiceManager("STOPPING=1");
        m_socket.reset(); // the kernel would still complete connections
        m_server.stop();
        m_reloadSignal.cancel();
        m_countersSignal.cancel();
        m_watchdog.stop();
        m_io.restart();
        const auto end = std::chrono::steady_clock::now() + m_options.stopTime;
        service::runDespiteExceptions([this, end] { m_io.run_until(end); });
    }

    const Options& m_options;
    // Outlives the providers and children, which use it. Its destructor destroys the open sessions.
    boost::asio::io_context m_io{1};
    const Host m_host;
    ObjectManager m_manager;
    boost::asio::signal_set m_stopSignals;
    service::SignalHandler m_reloadSignal;
    service::SignalHandler m_countersSignal;
    Users m_users;
    PasswordCheck m_passwords;
    Logins m_logins;
    HttpService m_service;
    service::Watchdog m_watchdog;
    std::optional<http::UnixSocket> m_socket;
    http::Server m_server;
};

} // namespace

void serve(const Options& options) {
    Daemon(options).run();
}

} // namespace cimom

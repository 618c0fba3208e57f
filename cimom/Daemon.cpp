#include "Daemon.hpp"

#include "host/Host.hpp"
#include "http/ListeningSocket.hpp"
#include "http/Server.hpp"
#include "objects/ObjectManager.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"
#include "providers/Providers.hpp"
#include "site/SiteInstances.hpp"
#include "state/SiteValues.hpp"
#include "system/Log.hpp"
#include "system/Notification.hpp"
#include "system/Watchdog.hpp"
#include "users/Logins.hpp"
#include "users/PasswordCheck.hpp"
#include "users/UsersFile.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
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

/** Nothing when all writes are refused. */
std::optional<SiteValues> siteValues(const Options& options) {
    if (options.keepsNoState)
        return std::nullopt;
    if (options.state.empty())
        throw std::runtime_error("state file: no name; give one by --state, or --no-state");
    return SiteValues(std::make_unique<StateFile>(options.state));
}

/** Lets a run of the io_context go on behind an exception, which ends the session that it comes from and no
 * other. */
template <class Run>
void withoutExceptions(Run run) {
    for (bool isDone = false; !isDone;) {
        try {
            run();
            isDone = true;
        } catch (const std::exception& e) {
            logWithoutMemory("connection closed", e.what());
        }
    }
}

/** An object manager and what it is served by. */
class Daemon {
public:
    explicit Daemon(const Options& options)
        : m_options(options)
        , m_host(options.root)
        , m_manager(makeProviders(m_host, m_io), siteValues(options))
        , m_settings(settings())
        // Before a socket is made, so that no signal can leave its file behind.
        , m_stopSignals(m_io, SIGTERM, SIGINT)
        , m_reloadSignal(m_io, SIGHUP)
        , m_countersSignal(m_io, SIGUSR1)
        , m_passwords(m_io, m_users)
        , m_logins(m_passwords)
        , m_watchdog(m_io)
        , m_server(m_io, m_settings, m_counters, m_sessions) {
        readFiles();
    }

    void run() {
        m_stopSignals.async_wait([this](const boost::system::error_code&, int) { m_io.stop(); });
        awaitReload();
        awaitCountersSignal();
        m_socket.emplace(m_options.socket, m_options.socketMode);
        m_server.listen(m_socket->duplicate(), AF_UNIX);
        const std::string places = m_options.socket + listenOnNetwork();
        log("ready on " + places);
        notifyServiceManager("READY=1");
        m_watchdog.start();
        withoutExceptions([this] { m_io.run(); });
        finish();
    }

private:
    /** Listens on the addresses of the network, and says which. */
    std::string listenOnNetwork() {
        std::string places;
        for (const NetworkAddress& address : m_options.listen) {
            const NetworkSocket network = listenOn(address);
            m_server.listen(network.descriptor, address.address.ss_family);
            places += " and " + textOf(network.at);
        }
        return places;
    }

    SessionSettings settings() {
        SessionSettings settings{m_binary, m_xml, m_options.limits};
        settings.isVerbose = m_options.isVerbose;
        settings.requiresLogin = m_options.requiresLogin;
        if (!m_options.users.empty())
            settings.logIn = [this](const std::string& address, const Credentials& given,
                                    PasswordCheck::Done done) {
                m_logins.logIn(address, given.user, given.password, std::move(done));
            };
        return settings;
    }

    /** Reads the site's files, all or none of them. */
    void readFiles() {
        Users users = m_options.users.empty() ? Users() : readUsers(m_options.users);
        if (!m_options.instances.empty())
            m_manager.setSiteInstances(SiteInstances(m_options.instances, m_manager.declarations()));
        m_users = std::move(users);
        m_sessions.forgetLogins();
    }

    void awaitReload() {
        m_reloadSignal.async_wait([this](const boost::system::error_code& error, int) {
            if (error)
                return;
            awaitReload();
            try {
                readFiles();
                log("read the site's files again");
            } catch (const std::exception& e) {
                log(std::string("the site's files stay as they were: ") + e.what());
            }
            ::malloc_trim(0); // of what was read and what it has replaced
        });
    }

    void awaitCountersSignal() {
        m_countersSignal.async_wait([this](const boost::system::error_code& error, int) {
            if (error)
                return;
            awaitCountersSignal();
            log("connections: " + std::to_string(m_counters.connections) + ", open " +
                std::to_string(m_sessions.count()) + "; requests: " + std::to_string(m_counters.requests) +
                ", failed " + std::to_string(m_counters.failed) +
                "; refused: " + std::to_string(m_counters.refused));
        });
    }

    /** Lets the answers under way be sent, for a while. */
    void finish() {
        notifyServiceManager("STOPPING=1");
        m_socket.reset(); // or the kernel would go on to take connections
        m_server.stop();
        m_reloadSignal.cancel();
        m_countersSignal.cancel();
        m_watchdog.stop();
        m_io.restart();
        const auto end = std::chrono::steady_clock::now() + m_options.stopTime;
        withoutExceptions([this, end] { m_io.run_until(end); });
    }

    const Options& m_options;
    // Sessions leave these when they end, with the loop at the latest.
    Counters m_counters;
    Sessions m_sessions;
    // Providers and children use the loop until they end.
    boost::asio::io_context m_io{1};
    const Host m_host;
    ObjectManager m_manager;
    const BinaryHandler m_binary{m_manager};
    const XmlHandler m_xml{m_manager};
    const SessionSettings m_settings;
    boost::asio::signal_set m_stopSignals;
    boost::asio::signal_set m_reloadSignal;
    boost::asio::signal_set m_countersSignal;
    Users m_users;
    PasswordCheck m_passwords;
    Logins m_logins;
    Watchdog m_watchdog;
    std::optional<ListeningSocket> m_socket;
    Server m_server;
};

} // namespace

void serve(const Options& options) {
    Daemon(options).run();
}

} // namespace cimom

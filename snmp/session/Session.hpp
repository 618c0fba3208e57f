#ifndef SNMP_SESSION_SESSION_HPP
#define SNMP_SESSION_SESSION_HPP

#include "snmp/Objects.hpp"
#include "snmp/agentx/Pdu.hpp"
#include "snmp/session/Connection.hpp"
#include "snmp/session/Responder.hpp"
#include "snmp/session/Settings.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace snmp {

/**
 * The session of a subagent with its master: connects, registers the objects, has a Responder answer
 * requests, and reconnects when the master is lost. Asks the master one thing at a time.
 *
 * After an exception the session drops the connection and reconnects. If memory does not suffice for the
 * timer of the reconnection, the exception passes through the io_context.
 */
class Session : private Connection::User {
public:
    /** @param objects outlive the session, which outlives the last run of the io_context */
    Session(boost::asio::io_context& io, Objects& objects, Settings settings);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** Connects to the master as soon as the io_context runs. */
    void start();
    /** Closes the session. After that the io_context has no work of the session, once the master has read
     * what was sent. */
    void stop();
    /** Whether the master has read all that was sent before stop(). */
    bool isClosed() const { return !m_connection || m_connection->isClosed(); }

private:
    enum class State {
        /** Waits for the next attempt to connect. */
        lost,
        connecting,
        /** These three wait for the master's reply. */
        opening,
        registering,
        pinging,
        /** All is registered. */
        idle,
        stopped
    };

    /** What the master is asked to register. */
    struct Registration {
        Oid id;
        /** Of a module; null for a subtree. */
        const char* description;
    };

    void onConnected() override;
    void onPdu(const agentx::Header& header, std::string_view payload) override;
    void onEnd(const std::string& why) override;

    void connect();
    void onResponse(const agentx::Header& header, const agentx::Response& response);
    void onOpened(const agentx::Header& header, const agentx::Response& response);
    void registerNext();
    void onRegistered(const agentx::Response& response);
    void onReady();
    void rest();
    void pingIfQuiet();

    agentx::Header nextHeader();
    void ask(State state, const std::string& pdu);
    void onTimeout();
    void limitTime(std::chrono::steady_clock::duration time);
    void report(const std::string& message) const noexcept;

    boost::asio::io_context& m_io;
    Objects& m_objects;
    const Settings m_settings;
    boost::asio::steady_timer m_timer; // of the state
    State m_state = State::lost;

    // Of the current connection.
    std::shared_ptr<Connection> m_connection;
    std::shared_ptr<Responder> m_responder;
    std::uint32_t m_session = 0;
    std::uint32_t m_packet = 0; // of the last request to the master
    std::vector<Registration> m_registrations;
    std::size_t m_nextRegistration = 0;
    std::size_t m_registered = 0; // subtrees
    std::chrono::steady_clock::time_point m_readySince;
    std::chrono::steady_clock::time_point m_lastHeard;

    unsigned m_failures = 0; // since the last session that lasted
    bool m_isLossReported = false;
    std::map<std::string, std::uint16_t> m_refused; // registrations, with the reported error
};

} // namespace snmp
#endif

#ifndef SNMP_SESSION_CONNECTION_HPP
#define SNMP_SESSION_CONNECTION_HPP

#include "snmp/agentx/Pdu.hpp"

#include <array>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace snmp {

/** Bytes that may follow the header of a PDU. A manager's request has at most 64 KiB; its longest form as a
 * PDU is some times as long. */
constexpr std::size_t longestPayload = 1024 * 1024;

/** Bytes to send above which no PDU is read: the master takes its replies too slowly. */
constexpr std::size_t mostUnsent = 1024 * 1024;

/**
 * One connection to a master: receives PDUs, which arrive in pieces of any size, and sends PDUs.
 *
 * Pending I/O owns the connection. An error, an exception of the user, and a header that no PDU can have end
 * it.
 */
class Connection : public std::enable_shared_from_this<Connection> {
public:
    using Endpoint = boost::asio::generic::stream_protocol::endpoint;

    /** Receives what happens to the connection, until its end or close(). */
    class User {
    public:
        virtual void onConnected() = 0;
        virtual void onPdu(const agentx::Header& header, std::string_view payload) = 0;
        /** The connection is closed. */
        virtual void onEnd(const std::string& why) = 0;

    protected:
        ~User() = default;
    };

    Connection(boost::asio::io_context& io, User& user);

    void connect(const Endpoint& master);
    /** Sends a PDU after those of earlier calls. Does nothing once the connection is closed. */
    void send(std::string_view pdu);
    /** Receives no more PDUs, and closes the connection when all is sent. */
    void finish();
    /** Closes the connection at once. */
    void close();
    bool isClosed() const { return m_state == State::closed; }
    /** Closes the connection, and reports its end. Does nothing if it is closed. */
    void end(const std::string& why);

    /** Calls a function unless the connection is closed. An exception ends the connection. */
    template <class Function>
    void guard(Function function) {
        if (m_state == State::closed)
            return;
        try {
            function();
        } catch (const std::exception& e) {
            end(e.what());
        }
    }

private:
    using Error = boost::system::error_code;

    enum class State { open, finishing, closed };

    void read();
    void onRead(const Error& error, std::size_t size);
    void takePdus();
    void write();
    void onWritten(const Error& error);

    User& m_user;
    boost::asio::generic::stream_protocol::socket m_socket;
    State m_state = State::open;
    std::array<char, 16384> m_piece{};
    std::string m_received; // and not taken
    std::string m_unsent;
    std::string m_sending;
    bool m_isWriting = false;
    bool m_isPaused = false; // until the master has read its replies
};

} // namespace snmp
#endif

#include "snmp/session/Connection.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <utility>

namespace snmp {

namespace asio = boost::asio;
using agentx::Header;
using agentx::headerSize;
using agentx::Malformed;

namespace {

/** Throws Malformed if no PDU can have a header. */
void check(const Header& header) {
    if (header.version != 1)
        throw Malformed("PDU of unknown version");
    if (header.length > longestPayload)
        throw Malformed("PDU too long");
    if (header.length % 4 != 0)
        throw Malformed("PDU of invalid length");
}

} // namespace

Connection::Connection(asio::io_context& io, User& user)
    : m_user(user)
    , m_socket(io) {}

void Connection::connect(const Endpoint& master) {
    m_socket.async_connect(master, [self = shared_from_this()](const Error& error) {
        self->guard([&] {
            if (error) {
                self->end(error.message());
                return;
            }
            Error ignored; // a Unix-domain socket has no such option
            self->m_socket.set_option(asio::ip::tcp::no_delay(true), ignored);
            self->m_user.onConnected();
            self->read();
        });
    });
}

void Connection::read() {
    m_socket.async_read_some(asio::buffer(m_piece),
                             [self = shared_from_this()](const Error& error, std::size_t size) {
                                 self->guard([&] { self->onRead(error, size); });
                             });
}

void Connection::onRead(const Error& error, std::size_t size) {
    if (m_state == State::finishing)
        return;
    if (error) {
        end(error.message());
        return;
    }
    m_received.append(m_piece.data(), size);
    takePdus();
}

/** Passes on all PDUs that have arrived, and reads on. */
void Connection::takePdus() {
    std::string_view left = m_received;
    m_isPaused = false;
    while (m_state == State::open && left.size() >= headerSize) {
        const Header header = agentx::readHeader(left);
        check(header);
        m_isPaused = m_unsent.size() > mostUnsent;
        if (m_isPaused || left.size() - headerSize < header.length)
            break;
        const std::string_view payload = left.substr(headerSize, header.length);
        left.remove_prefix(headerSize + header.length);
        m_user.onPdu(header, payload);
    }
    m_received.erase(0, m_received.size() - left.size());
    if (m_received.empty())
        m_received = std::string(); // gives the memory of a long PDU back
    if (m_state == State::open && !m_isPaused)
        read();
}

void Connection::send(std::string_view pdu) {
    if (m_state == State::closed)
        return;
    m_unsent += pdu;
    if (!m_isWriting)
        write();
}

void Connection::write() {
    m_isWriting = true;
    m_sending = std::exchange(m_unsent, std::string());
    asio::async_write(m_socket, asio::buffer(m_sending),
                      [self = shared_from_this()](const Error& error, std::size_t) {
                          self->guard([&] { self->onWritten(error); });
                      });
}

void Connection::onWritten(const Error& error) {
    m_isWriting = false;
    if (error) {
        end(error.message());
        return;
    }
    if (!m_unsent.empty())
        write();
    else if (m_state == State::finishing)
        close();
    if (m_isPaused && m_state == State::open)
        takePdus();
}

void Connection::finish() {
    m_state = State::finishing;
    if (!m_isWriting)
        close();
}

void Connection::close() {
    m_state = State::closed;
    Error ignored;
    m_socket.close(ignored);
}

void Connection::end(const std::string& why) {
    if (m_state == State::closed)
        return;
    const bool isReported = m_state == State::open;
    close();
    if (isReported)
        m_user.onEnd(why);
}

} // namespace snmp

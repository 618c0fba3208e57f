#ifndef TESTS_CIMOM_SESSION_RUN_HPP
#define TESTS_CIMOM_SESSION_RUN_HPP
#include "http/Session.hpp"
#include "objects/ObjectManager.hpp"
#include "protocol/HttpService.hpp"

#include <boost/asio/io_context.hpp>
#include <cerrno>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

/** Runs sessions one after the other. Each client sends bytes, shuts down its sending side and reads. */
class SessionRun {
public:
    /** @param manager, tls must outlive this object; without `tls` the sessions have no TLS */
    explicit SessionRun(cimom::ObjectManager& manager, http::TlsContext* tls = nullptr)
        : m_manager(manager)
        , m_tls(tls) {}

    /**
     * Everything that a client receives up to the end of the connection. The session reads and processes each
     * piece before the next one arrives. Throws std::logic_error if the connection has ended but the session
     * has not, or if the session blocks.
     */
    std::string answerTo(const std::vector<std::string_view>& pieces) {
        cimom::HttpService service(m_manager); // a new one counts its replies from 1
        const auto sessions = std::make_shared<http::Sessions>(service.settings());
        Connection client(m_io);
        std::make_shared<http::Session>(client.served(), sessions, m_tls)->start();
        for (const std::string_view piece : pieces)
            client.send(piece);
        client.finish();
        if (sessions->count() > 0)
            throw std::logic_error("the session has not ended");
        return client.received();
    }
    std::string answerTo(std::string_view sent) { return answerTo(std::vector<std::string_view>{sent}); }

private:
    /** The client's end of a connection. */
    class Connection {
    public:
        explicit Connection(boost::asio::io_context& io)
            : m_io(io) {
            if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_ends) != 0)
                throw std::runtime_error("socketpair");
        }
        ~Connection() { ::close(m_ends[0]); }
        Connection(const Connection&) = delete;
        Connection& operator=(const Connection&) = delete;

        /** The other end. */
        http::Session::Socket served() {
            m_io.restart();
            return {m_io, boost::asio::generic::stream_protocol(AF_UNIX, 0), m_ends[1]};
        }
        void send(std::string_view bytes) {
            while (!bytes.empty() && !m_isClosed) {
                const ssize_t size = ::send(m_ends[0], bytes.data(), bytes.size(), MSG_NOSIGNAL);
                if (size < 0 && errno != EAGAIN)
                    return; // the session has stopped reading
                bytes.remove_prefix(size > 0 ? static_cast<std::size_t>(size) : 0);
                if (!work() && size < 0)
                    throw std::logic_error("the session does not read");
            }
        }
        /** Shuts down the sending side and waits for the end of the connection. */
        void finish() {
            ::shutdown(m_ends[0], SHUT_WR);
            while (!m_isClosed) {
                if (!work())
                    throw std::logic_error("the session does not end the connection");
            }
            poll();
        }
        const std::string& received() const { return m_received; }

    private:
        /** Runs the session as far as possible and receives its output. Returns whether it did anything. */
        bool work() {
            bool isBusy = false;
            while (poll() || receive())
                isBusy = true;
            return isBusy;
        }
        /** Continues after an exception, as the daemon does: it has ended the session. */
        bool poll() {
            try {
                return m_io.poll() > 0;
            } catch (const std::exception&) {
                return true;
            }
        }
        bool receive() {
            if (m_isClosed)
                return false;
            char bytes[65536];
            const ssize_t size = ::recv(m_ends[0], bytes, sizeof bytes, 0);
            if (size < 0 && errno == EAGAIN)
                return false;
            m_isClosed =
                size <= 0; // a session that closes before it has read everything resets the connection
            m_received.append(bytes, m_isClosed ? 0 : static_cast<std::size_t>(size));
            return true;
        }

        boost::asio::io_context& m_io;
        int m_ends[2];
        bool m_isClosed = false;
        std::string m_received;
    };

    cimom::ObjectManager& m_manager;
    http::TlsContext* const m_tls;
    boost::asio::io_context m_io{1};
};

#endif

// What a master sends to a subagent, in pieces. Bits of the first byte: 1 no session is open, 2 values wait
// for the end of the input, 4 writes do.
#include "snmp/FakeObjects.hpp"
#include "snmp/Pdus.hpp"
#include "snmp/session/Session.hpp"
#include "support/Pieces.hpp"
#include "util/Descriptor.hpp"

#include <boost/asio/io_context.hpp>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

using namespace snmp;

namespace {

/** Listens at an abstract address, without a file. */
class Listener {
public:
    Listener() {
        const sockaddr any{AF_UNIX, {}};
        socklen_t size = sizeof m_address;
        if (::bind(m_socket.number(), &any, sizeof any.sa_family) != 0 ||
            ::listen(m_socket.number(), 8) != 0 ||
            ::getsockname(m_socket.number(), reinterpret_cast<sockaddr*>(&m_address), &size) != 0)
            std::abort();
        m_size = size;
    }
    MasterAddress address() const { return {"master", {&m_address, m_size}}; }
    int accept() const {
        return ::accept4(m_socket.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    }

private:
    util::Descriptor m_socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    sockaddr_storage m_address{};
    std::size_t m_size = 0;
};

/** A session and its master. */
class Exchange {
public:
    explicit Exchange(unsigned flags)
        : m_session(m_io, m_objects, settings()) {
        m_objects.roots = {{1, 3, 6, 1, 2, 1, 1}};
        for (std::uint32_t i = 1; i <= 4; ++i)
            m_objects.setText({1, 3, 6, 1, 2, 1, 1, i, 0}, "text");
        m_session.start();
        for (m_io.run_one(); !m_socket.isOpen(); m_io.poll())
            m_socket.reset(listener().accept());
        m_io.poll();
        if ((flags & 1) == 0)
            open();
        m_objects.holdsPreparations = (flags & 2) != 0;
        m_objects.holdsPhases = (flags & 4) != 0;
    }

    void send(std::string_view piece) {
        while (!piece.empty()) {
            const ssize_t size = ::send(m_socket.number(), piece.data(), piece.size(), MSG_NOSIGNAL);
            piece.remove_prefix(size > 0 ? static_cast<std::size_t>(size) : 0);
            work();
            if (size < 0 && errno != EAGAIN)
                return; // closed
        }
    }
    /** Ends what waits, and with it what it causes. */
    void finish() {
        for (std::size_t i = 0; i < m_objects.waiting.size(); ++i)
            m_objects.waiting[i]();
        for (std::size_t i = 0; i < m_objects.running.size(); ++i)
            m_objects.running[i]({});
        work();
        m_session.stop();
        work();
        check();
    }

private:
    static const Listener& listener() {
        static const Listener only;
        return only;
    }
    static Settings settings() {
        Settings settings;
        settings.master = listener().address();
        settings.firstPause = std::chrono::hours(1);
        settings.longestPause = std::chrono::hours(1);
        return settings;
    }
    /** Answers the Open and the registration. Their packets have the numbers 1 and 2. */
    void open() {
        for (std::uint32_t packet = 1; packet <= 2; ++packet)
            send(pdus::response({false, 7, 0, packet}, 0, 0));
    }
    void work() {
        m_io.restart();
        m_io.poll();
        char bytes[65536];
        for (ssize_t size = 1; size > 0;) {
            size = ::recv(m_socket.number(), bytes, sizeof bytes, 0);
            m_received.append(bytes, size > 0 ? static_cast<std::size_t>(size) : 0);
            m_io.poll();
        }
    }
    /** Whole PDUs were received, and the responses among them are valid. */
    void check() const {
        std::string_view left = m_received;
        while (!left.empty()) {
            const agentx::Header header = agentx::readHeader(left);
            if (header.version != 1 || left.size() < agentx::headerSize + header.length)
                std::abort();
            if (header.type == agentx::PduType::response)
                agentx::readResponse(header, left.substr(agentx::headerSize, header.length));
            left.remove_prefix(agentx::headerSize + header.length);
        }
    }

    boost::asio::io_context m_io{1};
    FakeObjects m_objects;
    Session m_session;
    util::Descriptor m_socket{-1};
    std::string m_received;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    Exchange exchange(data[0]);
    const fuzz::Pieces pieces(data + 1, size - 1);
    for (const std::string_view piece : pieces.of(pieces.content()))
        exchange.send(piece);
    exchange.finish();
    return 0;
}

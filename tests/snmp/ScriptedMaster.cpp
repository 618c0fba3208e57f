#include "snmp/ScriptedMaster.hpp"

#include "http/NetworkAddress.hpp"
#include "snmp/Pdus.hpp"

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace snmp::agentx;

namespace {

int listenAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ::unlink(path.c_str());
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(descriptor, 8) != 0)
        throw std::runtime_error("cannot listen at " + path);
    return descriptor;
}

} // namespace

ScriptedMaster::ScriptedMaster(boost::asio::io_context& io, const std::string& path)
    : m_io(io)
    , m_address(path) {
    if (path.empty()) {
        const http::NetworkSocket socket = http::listenOn(*http::networkAddress("127.0.0.1:0"));
        m_listener.reset(socket.descriptor);
        m_address = "tcp:" + http::textOf(socket.at);
    } else {
        m_listener.reset(listenAt(path));
    }
}

void ScriptedMaster::work() {
    m_io.restart();
    m_io.poll();
}

void ScriptedMaster::await(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    for (work(); !condition(); work()) {
        if (std::chrono::steady_clock::now() > limit)
            throw std::runtime_error("the subagent does not do what the master awaits");
        m_io.restart();
        m_io.run_one_for(std::chrono::milliseconds(1));
    }
}

void ScriptedMaster::accept() {
    m_connection.reset();
    m_received.clear();
    m_isClosed = false;
    await([this] {
        m_connection.reset(::accept4(m_listener.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        return m_connection.isOpen();
    });
}

void ScriptedMaster::send(std::string_view bytes) {
    await([&] {
        const ssize_t size = ::send(m_connection.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        bytes.remove_prefix(size > 0 ? static_cast<std::size_t>(size) : 0);
        return bytes.empty() || (size < 0 && errno != EAGAIN);
    });
}

/** Receives what has arrived. Whether there was anything, or the end. */
bool ScriptedMaster::fill() {
    char bytes[65536];
    const ssize_t size = ::recv(m_connection.number(), bytes, sizeof bytes, 0);
    if (size < 0 && errno == EAGAIN)
        return false;
    m_isClosed = m_isClosed || size <= 0;
    m_received.append(bytes, size > 0 ? static_cast<std::size_t>(size) : 0);
    return true;
}

bool ScriptedMaster::hasPdu() const {
    return m_received.size() >= headerSize && m_received.size() >= headerSize + readHeader(m_received).length;
}

ReceivedPdu ScriptedMaster::receive() {
    await([this] { return hasPdu() || (fill() && (hasPdu() || m_isClosed)); });
    if (!hasPdu())
        throw std::runtime_error("the subagent has closed the connection");
    const Header header = readHeader(m_received);
    ReceivedPdu pdu{header, m_received.substr(headerSize, header.length)};
    m_received.erase(0, headerSize + header.length);
    return pdu;
}

void ScriptedMaster::awaitClose() {
    await([this] { return fill() && m_isClosed; });
}

bool ScriptedMaster::isSilent() {
    work();
    fill();
    return m_received.empty();
}

void ScriptedMaster::reply(const ReceivedPdu& request, std::uint16_t error, std::uint32_t upTime) {
    pdus::Head head;
    head.packet = request.header.packet;
    head.transaction = request.header.transaction;
    send(pdus::response(head, upTime, error));
}

ReceivedPdu ScriptedMaster::answer(PduType type, std::uint16_t error) {
    const ReceivedPdu pdu = receive();
    if (pdu.header.type != type)
        throw std::runtime_error("PDU of type " + std::to_string(static_cast<int>(pdu.header.type)) +
                                 ", not " + std::to_string(static_cast<int>(type)));
    reply(pdu, error);
    return pdu;
}

void ScriptedMaster::establish(std::size_t registrations) {
    accept();
    answer(PduType::open);
    for (std::size_t i = 0; i < registrations; ++i)
        reply(receive());
    work();
}

Response ScriptedMaster::exchange(std::string_view pdu) {
    send(pdu);
    return responseIn(receive());
}

Response responseIn(const ReceivedPdu& pdu) {
    if (pdu.header.type != PduType::response)
        throw std::runtime_error("not a response");
    return readResponse(pdu.header, pdu.payload);
}

#include "snmp/SessionThread.hpp"

#include "snmp/FakeObjects.hpp"
#include "snmp/Pdus.hpp"
#include "snmp/session/Session.hpp"
#include "support/TempDir.hpp"
#include "util/Descriptor.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>

using namespace snmp;
using namespace snmp::agentx;

namespace {

const Oid object{1, 3, 6, 1, 2, 1, 1, 4, 0};
const Oid lastObject{1, 3, 6, 1, 2, 1, 1, 5, 0};

/** The connection has ended. */
class Ended : public std::exception {};

/** Plays the master on blocking sockets. */
class Master {
public:
    Master(const std::string& path, const std::atomic<bool>& isOver)
        : m_isOver(isOver)
        , m_listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        if (::bind(m_listener.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(m_listener.number(), 8) != 0)
            throw std::runtime_error("cannot listen");
    }

    void play() {
        while (waitFor(m_listener)) {
            m_connection.reset(::accept4(m_listener.number(), nullptr, nullptr, SOCK_CLOEXEC));
            m_received.clear();
            try {
                serve();
            } catch (const Ended&) {
                continue;
            }
        }
    }

private:
    void serve() {
        for (int i = 0; i < 4; ++i) // Open, two subtrees, a module
            reply(receive());
        pdus::Head head;
        head.context = "owb";
        exchange(pdus::get(head, {object}));
        exchange(pdus::getNext(head, {{object}}));
        exchange(pdus::getBulk(head, 0, 10, {{object, true}}));
        exchange(pdus::testSet(head, {{object, "new"}}));
        exchange(pdus::commitSet(head));
        exchange(pdus::undoSet(head));
        exchange(pdus::pdu(1, head, "")); // to be refused
        send(pdus::get(head, {lastObject}));
        receive();
    }

    /** False if the session is over before there is anything to receive. */
    bool waitFor(const util::Descriptor& socket) const {
        pollfd waiting{socket.number(), POLLIN, 0};
        while (::poll(&waiting, 1, 1) <= 0) {
            if (m_isOver)
                return false;
        }
        return true;
    }
    void send(const std::string& bytes) const {
        ::send(m_connection.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    Header receive() {
        while (m_received.size() < headerSize ||
               m_received.size() < headerSize + readHeader(m_received).length) {
            char bytes[4096];
            const ssize_t size =
                waitFor(m_connection) ? ::recv(m_connection.number(), bytes, sizeof bytes, 0) : 0;
            if (size <= 0)
                throw Ended();
            m_received.append(bytes, static_cast<std::size_t>(size));
        }
        const Header header = readHeader(m_received);
        m_received.erase(0, headerSize + header.length);
        return header;
    }
    void reply(const Header& request) const {
        pdus::Head head;
        head.packet = request.packet;
        send(pdus::response(head, 1, 0));
    }
    void exchange(const std::string& request) {
        send(request);
        receive();
    }

    const std::atomic<bool>& m_isOver;
    util::Descriptor m_listener;
    util::Descriptor m_connection{-1};
    std::string m_received;
};

/** Runs a session until the last object is read. */
void runSession(const std::string& path, const std::function<void()>& before) {
    boost::asio::io_context io{1};
    FakeObjects objects;
    objects.roots = {{1, 3, 6, 1, 2, 1, 1}, {1, 3, 6, 1, 2, 1, 2}};
    objects.capabilities = {{{1, 3, 6, 1, 2, 1, 31}, "The interfaces."}};
    objects.setText(object, "a text that does not fit into the object of a string");
    objects.setText(lastObject, "end");
    objects.onGet = [&](const Oid& oid) {
        if (oid == lastObject)
            io.stop();
    };
    Settings settings;
    settings.master = *masterAddress(path);
    settings.firstPause = std::chrono::milliseconds(1);
    settings.longestPause = std::chrono::milliseconds(2);
    Session session(io, objects, settings);
    session.start();
    before();
    io.run();
}

} // namespace

std::string SessionThread::run(const std::function<void()>& before, const std::function<void()>& after) {
    const support::TempDir directory;
    const std::string path = directory.file("master");
    std::atomic<bool> isOver{false};
    Master master(path, isOver);
    std::string failure;
    std::thread thread([&] {
        try {
            runSession(path, before);
            after();
        } catch (const std::exception& e) {
            after();
            failure = e.what();
        }
        isOver = true;
    });
    master.play();
    thread.join();
    return failure;
}

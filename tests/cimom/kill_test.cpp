// An object manager that is killed repeatedly while a client writes.
#include "Client.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"
#include "OW_WBEMFlags.hpp"
#include "binary/Request.hpp"
#include "support/Manager.hpp"

#include <condition_variable>
#include <csignal>
#include <gtest/gtest.h>
#include <mutex>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>

using namespace OpenWBEM;
using support::Manager;

namespace {

/** Writes ascending numbers until the connection ends. */
class Writer {
public:
    Writer(const std::string& socket, long first)
        : m_client(socket)
        , m_sent(first - 1)
        , m_acknowledged(first - 1)
        , m_thread([this] { write(); }) {}

    /** Waits until a write has been acknowledged or the connection has ended. */
    void waitForFirst() {
        std::unique_lock lock(m_mutex);
        const long before = m_acknowledged;
        m_changed.wait(lock, [&] { return m_acknowledged > before || m_isBroken; });
    }
    /** Waits for the end of the connection. */
    void join() { m_thread.join(); }
    long sent() const { return m_sent; }
    long acknowledged() const { return m_acknowledged; }

private:
    void write() {
        try {
            for (;;) {
                ++m_sent;
                const Reply reply = m_client.exchange(httpRequest(body(m_sent)));
                const std::lock_guard lock(m_mutex);
                if (reply.body != std::string(1, '\0'))
                    break;
                ++m_acknowledged;
                m_changed.notify_one();
            }
        } catch (const std::runtime_error&) {
        }
        const std::lock_guard lock(m_mutex);
        m_isBroken = true;
        m_changed.notify_one();
    }

    static std::string body(long number) {
        CIMInstance chassis("QAV_K70Chassis");
        chassis.setProperty("Tag", CIMValue("Chassis"));
        chassis.setProperty("CreationClassName", CIMValue("QAV_K70Chassis"));
        chassis.setProperty("UserTracking", CIMValue(std::to_string(number).c_str()));
        // Long, so that a kill may interrupt the write to the file.
        chassis.setProperty("Location", CIMValue(std::string(200000, 'x').c_str()));
        return binary::modifyInstance("root/cimv2", chassis, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr);
    }

    Client m_client;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    long m_sent;
    long m_acknowledged;
    bool m_isBroken = false;
    std::thread m_thread;
};

long writtenNumber(const Manager& manager) {
    const auto chassis =
        instancesIn(Client(manager.socketPath()).exchange(httpRequest(enumerateBody("QAV_K70Chassis"))).body);
    return std::stol(chassis.at(0).getPropertyValue("UserTracking").toString().c_str());
}

/** Receives the inotify(7) events of a directory. */
class Watch {
public:
    explicit Watch(const std::string& directory)
        : m_events(::inotify_init1(IN_CLOEXEC)) {
        EXPECT_LE(0, ::inotify_add_watch(m_events, directory.c_str(), IN_ALL_EVENTS)) << directory;
    }
    ~Watch() { ::close(m_events); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /** Waits for `count` events. */
    void waitFor(unsigned count) const {
        alignas(inotify_event) char events[4096];
        while (count > 0) {
            const ssize_t size = ::read(m_events, events, sizeof events);
            ASSERT_LT(0, size);
            for (ssize_t at = 0; at < size && count > 0; --count)
                at += static_cast<ssize_t>(sizeof(inotify_event) +
                                           reinterpret_cast<const inotify_event*>(events + at)->len);
        }
    }

private:
    int m_events;
};

} // namespace

TEST(Kill, LosesNoSuccessfulWriteAndLeavesNoIncompleteState) {
    Manager manager;
    long acknowledged = 0;
    for (unsigned kill = 0; kill < 200; ++kill) {
        const Watch watch(manager.directory().path());
        Writer writer(manager.socketPath(), acknowledged + 1);
        writer.waitForFirst();
        watch.waitFor(1 + kill % 20); // at varying points of a later write
        EXPECT_EQ(128 + SIGKILL, manager.end(SIGKILL));
        writer.join();
        ASSERT_GT(writer.acknowledged(), acknowledged) << kill;

        manager.start(); // fails if the state file is damaged
        acknowledged = writtenNumber(manager);
        ASSERT_GE(acknowledged, writer.acknowledged()) << kill;
        ASSERT_LE(acknowledged, writer.sent()) << kill;
    }
}

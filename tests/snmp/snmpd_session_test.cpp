// A session with net-snmp's master.
#include "snmp/FakeObjects.hpp"
#include "snmp/session/Session.hpp"
#include "support/Snmpd.hpp"

#include <algorithm>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <optional>
#include <thread>

using namespace snmp;
using namespace support;

namespace {

/** A session that runs in a thread. The objects must not be used meanwhile. */
class RunningSession {
public:
    RunningSession(const Snmpd& snmpd, FakeObjects& objects, const std::string& context)
        : m_thread(
              [this, socket = snmpd.masterSocket(), &objects, context] { run(socket, objects, context); }) {}
    ~RunningSession() {
        m_isStopping = true;
        m_thread.join();
    }
    RunningSession(const RunningSession&) = delete;
    RunningSession& operator=(const RunningSession&) = delete;

    /** Waits for a number of lines of the log; returns the last one without the address of the master. */
    std::string line(std::size_t number) {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_hasLine.wait_for(lock, std::chrono::seconds(30), [&] { return m_log.size() >= number; });
        if (m_log.size() < number)
            return "(no such line within 30 s)";
        return m_log[number - 1].substr(m_log[number - 1].find(": ") + 2);
    }

private:
    void run(const std::string& socket, FakeObjects& objects, const std::string& context) {
        boost::asio::io_context io{1};
        Settings settings;
        settings.master = *masterAddress(socket);
        settings.context = context;
        settings.firstPause = std::chrono::milliseconds(50);
        settings.log = [this](const std::string& text) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_log.push_back(text);
            m_hasLine.notify_all();
        };
        Session session(io, objects, settings);
        session.start();
        while (!m_isStopping)
            io.run_for(std::chrono::milliseconds(10));
        session.stop();
        io.run_for(std::chrono::seconds(1));
    }

    std::atomic<bool> m_isStopping{false};
    std::mutex m_mutex;
    std::condition_variable m_hasLine;
    std::vector<std::string> m_log;
    std::thread m_thread;
};

class SnmpdSession : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string reason = snmpToolsMissing(); !reason.empty())
            GTEST_SKIP() << reason;
        snmpd.emplace();
        objects.roots = {{1, 3, 6, 1, 2, 1, 1}, {1, 3, 6, 1, 2, 1, 25, 4, 2}};
        objects.capabilities = {{{1, 3, 6, 1, 2, 1, 47}, "Entities of owb."}};
        objects.setText({1, 3, 6, 1, 2, 1, 1, 4, 0}, "contact");
        objects.setText({1, 3, 6, 1, 2, 1, 1, 6, 0}, "location");
        for (std::uint32_t process = 1; process <= 100; ++process)
            objects.setText({1, 3, 6, 1, 2, 1, 25, 4, 2, 1, 2, process}, "process");
        objects.values[{1, 3, 6, 1, 2, 1, 25, 4, 2, 1, 3, 1}] = {Type::objectIdentifier, Oid{0, 0}};
        objects.values[{1, 3, 6, 1, 2, 1, 25, 4, 2, 1, 3, 2}] = {Type::counter64, std::uint64_t{1} << 63};
        objects.values[{1, 3, 6, 1, 2, 1, 25, 4, 2, 1, 3, 3}] = {Type::integer, std::uint64_t(-1)};
    }

    std::string get(const std::string& context, const std::string& oid) const {
        return snmpd->run("snmpget", v2c(context), {oid}).out;
    }

    std::optional<Snmpd> snmpd;
    FakeObjects objects;
};

const char* const contact = ".1.3.6.1.2.1.1.4.0";
const char* const location = ".1.3.6.1.2.1.1.6.0";

} // namespace

TEST_F(SnmpdSession, ServesValuesOfItsContext) {
    RunningSession session(*snmpd, objects, "owb");
    EXPECT_EQ("2 of 2 subtrees registered", session.line(1));
    EXPECT_EQ(std::string(contact) + " = STRING: \"contact\"\n", get("owb", contact));
    EXPECT_EQ(std::string(contact) + " = STRING: \"contact\"\n",
              snmpd->run("snmpget", v3("owb"), {contact}).out);
    EXPECT_EQ(".1.3.6.1.2.1.25.4.2.1.3.1 = OID: .0.0\n", get("owb", ".1.3.6.1.2.1.25.4.2.1.3.1"));
    EXPECT_EQ(".1.3.6.1.2.1.25.4.2.1.3.2 = Counter64: 9223372036854775808\n",
              get("owb", ".1.3.6.1.2.1.25.4.2.1.3.2"));
    EXPECT_EQ(".1.3.6.1.2.1.25.4.2.1.3.3 = INTEGER: -1\n", get("owb", ".1.3.6.1.2.1.25.4.2.1.3.3"));
    EXPECT_NE("", get("", ".1.3.6.1.2.1.1.3.0")) << "the default context is that of the master";
}

TEST_F(SnmpdSession, IsWalkedWholeAndInOrder) {
    RunningSession session(*snmpd, objects, "owb");
    session.line(1);
    for (const char* const command : {"snmpwalk", "snmpbulkwalk"}) {
        const ProgramResult walked = snmpd->run(command, v2c("owb"), {".1.3.6.1.2.1"});
        EXPECT_EQ(0, walked.exitCode) << walked.err;
        // The last line is for the end of the walk.
        EXPECT_EQ(105 + 1, std::count(walked.out.begin(), walked.out.end(), '\n')) << walked.out;
    }
}

TEST_F(SnmpdSession, WritesAllValuesOfASetOrNone) {
    RunningSession session(*snmpd, objects, "owb");
    session.line(1);
    EXPECT_EQ(0, snmpd->run("snmpset", v2c("owb"), {contact, "s", "new", location, "s", "here"}).exitCode);
    EXPECT_EQ(std::string(contact) + " = STRING: \"new\"\n", get("owb", contact));
    EXPECT_EQ(std::string(location) + " = STRING: \"here\"\n", get("owb", location));
    const ProgramResult set =
        snmpd->run("snmpset", v2c("owb"), {contact, "s", "newer", ".1.3.6.1.2.1.1.5.0", "s", "name"});
    EXPECT_NE(std::string::npos, set.err.find("noCreation")) << set.err;
    EXPECT_EQ(std::string(contact) + " = STRING: \"new\"\n", get("owb", contact));
}

TEST_F(SnmpdSession, AFailedCommitIsUndone) {
    objects.commitResult = {Error::commitFailed, 1};
    RunningSession session(*snmpd, objects, "owb");
    session.line(1);
    const ProgramResult set = snmpd->run("snmpset", v2c("owb"), {contact, "s", "new"});
    EXPECT_NE(std::string::npos, set.err.find("commitFailed")) << set.err;
    EXPECT_EQ(std::string(contact) + " = STRING: \"contact\"\n", get("owb", contact));
}

TEST_F(SnmpdSession, WinsATableOfTheDefaultContext) {
    RunningSession session(*snmpd, objects, "");
    session.line(1);
    EXPECT_EQ(".1.3.6.1.2.1.25.4.2.1.2.1 = STRING: \"process\"\n", get("", ".1.3.6.1.2.1.25.4.2.1.2.1"));
}

TEST_F(SnmpdSession, ListsItsModules) {
    RunningSession session(*snmpd, objects, "owb");
    session.line(1);
    const std::string rows = snmpd->run("snmpwalk", v2c(""), {".1.3.6.1.2.1.1.9"}).out;
    EXPECT_NE(std::string::npos, rows.find("Entities of owb.")) << rows;
}

TEST_F(SnmpdSession, ComesBackWithTheMaster) {
    RunningSession session(*snmpd, objects, "owb");
    session.line(1);
    snmpd->kill();
    EXPECT_EQ(0u, session.line(2).find("connection lost: "));
    snmpd->start();
    EXPECT_EQ("2 of 2 subtrees registered", session.line(3));
    EXPECT_EQ(std::string(contact) + " = STRING: \"contact\"\n", get("owb", contact));
}

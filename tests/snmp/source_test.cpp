// The child process: what it reads and writes, and what happens when it or the object manager fails.
#include "snmp/Loop.hpp"
#include "snmp/Readings.hpp"
#include "snmp/source/Source.hpp"
#include "support/Manager.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <csignal>
#include <unistd.h>

using namespace snmp;
using namespace snmp_test;
using namespace std::chrono_literals;

namespace {

const SubjectRule& ruleOf(Subject subject) {
    return subjectRules()[static_cast<std::size_t>(subject)];
}

SourceSettings quick() {
    SourceSettings settings;
    settings.firstPause = 10ms;
    settings.longestPause = 20ms;
    return settings;
}

class Sources : public testing::Test {
protected:
    void start(const std::string& url, const SourceSettings& settings = quick()) {
        m_source = std::make_unique<Source>(
            m_io, url, [this](const std::string& line) { m_log.push_back(line); }, settings);
    }
    /** Starts a source whose child sends bytes in answer to its first message, and ends. */
    void startLying(const std::string& bytes) {
        SourceSettings settings = quick();
        settings.longestPause = settings.firstPause = 10s;
        settings.serve = [bytes](int socket) {
            char request[8];
            if (::read(socket, request, sizeof request) > 0 &&
                ::write(socket, bytes.data(), bytes.size()) < 0)
                ::_exit(1);
        };
        start("", settings);
    }
    std::optional<Readings> read(Subject subject) {
        std::optional<Readings> result;
        bool isDone = false;
        m_source->read(ruleOf(subject), [&](std::optional<Readings> readings) {
            result = std::move(readings);
            isDone = true;
        });
        EXPECT_TRUE(runUntil(m_io, [&isDone] { return isDone; }));
        return result;
    }
    WriteOutcome write(const WriteOrder& order) {
        WriteOutcome result;
        bool isDone = false;
        m_source->write(order, [&](const WriteOutcome& outcome) {
            result = outcome;
            isDone = true;
        });
        EXPECT_TRUE(runUntil(m_io, [&isDone] { return isDone; }));
        return result;
    }
    /** Reads until it succeeds. */
    bool readAgain(Subject subject) {
        return runUntil(m_io, [this, subject] { return read(subject).has_value(); });
    }

    boost::asio::io_context m_io{1};
    std::vector<std::string> m_log;
    std::unique_ptr<Source> m_source;
};

std::string frame(MessageKind kind, const std::string& bytes) {
    const MessageHead head = headOf({kind, bytes});
    return std::string(reinterpret_cast<const char*>(head.data()), sizeof head) + bytes;
}

std::string group(std::uint32_t number, const std::string& items = {}) {
    return frame(MessageKind::group,
                 std::string(reinterpret_cast<const char*>(&number), sizeof number) + items);
}

std::string end() {
    return frame(MessageKind::end, std::string(8, '\0')); // answered, without a reason
}

WriteOrder contactWrite(const std::string& value) {
    return {0, 2, {0}, {{3, value}}};
}

} // namespace

TEST_F(Sources, ASubjectIsReadWithAllItsGroups) {
    const support::Manager manager;
    start(manager.url());
    const auto read = this->read(Subject::ip);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->size(), 2u);
    EXPECT_EQ((*read)[0].group(), 12);
    EXPECT_EQ((*read)[1].group(), 13);
    EXPECT_EQ(m_log, std::vector<std::string>());
}

TEST_F(Sources, ProcessesOfALocalObjectManagerComeFromTheLibrary) {
    const support::TempDir host; // an object manager that sees no process
    const support::Manager manager({"--root", host.path()});
    start(manager.url());
    const auto read = this->read(Subject::running);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->size(), 2u);
    EXPECT_NE(("." + indexesIn(*read, "25.4.2.1") + ".").find(std::to_string(::getpid())), std::string::npos);
}

TEST_F(Sources, AChildThatDiesIsReplaced) {
    const support::Manager manager;
    start(manager.url());
    ASSERT_TRUE(read(Subject::system));
    const pid_t first = m_source->child();
    ::kill(first, SIGKILL);
    ASSERT_TRUE(runUntil(m_io, [&] { return m_source->child() != first && m_source->child() != 0; }));
    EXPECT_TRUE(readAgain(Subject::system));
    EXPECT_EQ(m_log, (std::vector<std::string>{"object manager lost: the process that reads it has ended",
                                               "object manager is back"}));
}

TEST_F(Sources, AChildThatHangsIsReplaced) {
    const support::Manager manager;
    SourceSettings settings = quick();
    settings.readLimit = 200ms;
    start(manager.url(), settings);
    ASSERT_TRUE(read(Subject::system));
    const pid_t first = m_source->child();
    ::kill(first, SIGSTOP);
    EXPECT_FALSE(read(Subject::system));
    EXPECT_EQ(m_log, std::vector<std::string>{"object manager lost: timed out"});
    EXPECT_TRUE(readAgain(Subject::system));
    EXPECT_NE(m_source->child(), first);
    EXPECT_EQ(::kill(first, 0), -1) << "the old child is still there";
}

TEST_F(Sources, AnObjectManagerThatHangsDoesNotDelayOthers) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    SourceSettings settings = quick();
    settings.readLimit = 100ms;
    start(peer.url(), settings);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(read(Subject::system));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

TEST_F(Sources, TheLossOfTheObjectManagerIsLoggedOnceAndItsReturnOnce) {
    support::Manager manager;
    start(manager.url());
    ASSERT_TRUE(read(Subject::system));
    manager.end(SIGKILL);
    EXPECT_FALSE(read(Subject::system));
    EXPECT_FALSE(read(Subject::ip));
    ASSERT_EQ(m_log.size(), 1u);
    EXPECT_EQ(m_log[0], "object manager lost: connection refused: " + manager.socketPath());
    manager.start();
    EXPECT_TRUE(read(Subject::ip));
    EXPECT_TRUE(read(Subject::system));
    EXPECT_EQ(m_log.size(), 2u);
    EXPECT_EQ(m_log.back(), "object manager is back");
}

TEST_F(Sources, ProcessesOfTheLibraryDoNotMeanThatTheObjectManagerIsBack) {
    support::Manager manager;
    start(manager.url());
    ASSERT_TRUE(read(Subject::system));
    manager.end(SIGKILL);
    EXPECT_FALSE(read(Subject::system));
    EXPECT_TRUE(read(Subject::running));
    EXPECT_EQ(m_log.size(), 1u);
}

TEST_F(Sources, AMalformedUrlIsALostObjectManager) {
    start("://");
    EXPECT_FALSE(read(Subject::running));
    EXPECT_EQ(m_log.size(), 1u);
}

TEST_F(Sources, AGroupThatTheObjectManagerDoesNotHaveIsLeftOut) {
    namespace wire = support::wire;
    const std::string error = wire::cimErrorReply(5, "no such class");
    const std::string system = wire::chunkedReply(
        wire::enumeration({wire::instance("QAV_System", {wire::stringProperty("SystemName", "box")})}));
    // Group 12 fails and is repeated, the probe succeeds, group 12 fails again, and group 13 succeeds.
    using support::Step;
    const support::ScriptedPeer peer({Step::answer(error), Step::answer(error), Step::answer(system),
                                      Step::answer(error), Step::answer(error), Step::answer(system)});
    start(peer.url());
    const auto read = this->read(Subject::ip);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->size(), 1u);
    EXPECT_EQ((*read)[0].group(), 13);
    EXPECT_EQ(m_log, std::vector<std::string>{"cannot read group 12: the object manager reports an error"});
}

TEST_F(Sources, AChildThatDiesWithinAnAnswerFailsTheRead) {
    const std::string whole = group(2, std::string("\0\0\0\0\4\0\0\0\3\0\0\0box", 15)) + end();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        startLying(whole.substr(0, size));
        EXPECT_FALSE(read(Subject::system)) << size;
    }
    startLying(whole);
    const auto read = this->read(Subject::system);
    ASSERT_TRUE(read);
    EXPECT_EQ(valueIn(*read, "1.5.0"), "box");
}

TEST_F(Sources, LyingAnswersFailTheRead) {
    std::string endless;
    for (int i = 0; i < 40; ++i)
        endless += group(2, std::string(1024 * 1024, '\xff'));
    for (const std::string& answer :
         {frame(static_cast<MessageKind>(99), "x"), frame(MessageKind::written, "x"),
          std::string("\3\0\0\0\xff\xff\xff\xff", 8), frame(MessageKind::end, ""), group(2, "short") + end(),
          frame(MessageKind::group, "") + end(),
          group(2, std::string("\0\0\0\0\4\0\0\0\xff\xff\xff\xff", 12)) + end(), endless}) {
        startLying(answer);
        EXPECT_FALSE(read(Subject::system));
    }
}

TEST_F(Sources, AnAnswerWithoutRequestEndsTheChild) {
    SourceSettings settings = quick();
    settings.longestPause = settings.firstPause = 10s;
    settings.serve = [](int socket) {
        const std::string bytes = end();
        if (::write(socket, bytes.data(), bytes.size()) < 0)
            ::_exit(1);
        ::pause();
    };
    start("", settings);
    EXPECT_TRUE(runUntil(m_io, [this] { return m_source->child() == 0; }));
}

TEST_F(Sources, AValueIsWrittenAndReadBack) {
    const support::Manager manager;
    start(manager.url());
    const WriteOutcome first = write(contactWrite("ops"));
    EXPECT_TRUE(first.isTaken);
    EXPECT_EQ(first.before, std::vector<std::string>{""});
    const WriteOutcome second = write(contactWrite("noc"));
    EXPECT_TRUE(second.isTaken);
    EXPECT_EQ(second.before, std::vector<std::string>{"ops"});
    EXPECT_EQ(valueIn(read(Subject::system).value(), "1.4.0"), "noc");
}

TEST_F(Sources, AnEmptyValueIsTaken) {
    const support::Manager manager;
    start(manager.url());
    EXPECT_TRUE(write(contactWrite("ops")).isTaken);
    EXPECT_TRUE(write(contactWrite("")).isTaken);
}

TEST_F(Sources, AValueThatIsNotTakenIsReported) {
    const support::Manager manager;
    start(manager.url());
    const WriteOutcome outcome = write({0, 2, {0}, {{6, "1"}}}); // sysServices is a state of the host
    EXPECT_FALSE(outcome.isTaken);
    EXPECT_FALSE(outcome.isUntouched);
}

TEST_F(Sources, NothingIsWrittenToARowThatIsNotThere) {
    const support::Manager manager;
    start(manager.url());
    std::size_t entity = 0;
    while (tableRules()[entity].entry != std::string("47.1.1.1.1"))
        ++entity;
    const WriteOutcome outcome = write({entity, 0, {4711}, {{13, "x"}}});
    EXPECT_FALSE(outcome.isTaken);
    EXPECT_TRUE(outcome.isUntouched);
    EXPECT_TRUE(write({entity, 0, {1}, {{13, "x"}}}).isTaken);
}

TEST_F(Sources, AWritePrecedesReadsThatWait) {
    const support::Manager manager;
    start(manager.url());
    std::string order;
    m_source->read(ruleOf(Subject::system), [&order](const auto&) { order += "r"; });
    m_source->read(ruleOf(Subject::ip), [&order](const auto&) { order += "r"; });
    m_source->write(contactWrite("ops"), [&order](const auto&) { order += "w"; });
    EXPECT_TRUE(runUntil(m_io, [&order] { return order.size() == 3; }));
    EXPECT_EQ(order, "wrr");
}

// Opening, registering, pinging, and the end of a session.
#include "snmp/SessionTest.hpp"

#include <algorithm>
#include <sys/socket.h>

using namespace snmp;
using namespace snmp::agentx;
using namespace std::chrono_literals;

namespace {

/** What a registration names, and its context. */
struct Registered {
    std::string context;
    unsigned priority;
    Oid subtree;
};

Registered registrationIn(const ReceivedPdu& pdu) {
    Reader reader(pdu.payload, pdu.header.order());
    Registered result;
    if (pdu.header.flags & nonDefaultContext)
        result.context = reader.octets();
    reader.skip(1);
    result.priority = reader.byte();
    EXPECT_EQ(0, reader.number16()) << "no range: masters have had faults there";
    result.subtree = reader.oid();
    reader.expectEnd();
    return result;
}

using Lines = std::vector<std::string>;

} // namespace

TEST_F(SessionTest, RegistersEachSubtreeInItsContextAndThenTheModules) {
    objects.capabilities = {{{1, 3, 6, 1, 2, 1, 31}, "The interfaces."}};
    start();
    master.accept();
    const ReceivedPdu open = master.answer(PduType::open);
    EXPECT_EQ(std::string("\2\0\0\0\0\0\0\0\0\0\0\12owb-agentx\0\0", 24), open.payload);
    for (const Oid& root : objects.roots) {
        const ReceivedPdu pdu = master.answer(PduType::registerSubtree);
        EXPECT_EQ(7u, pdu.header.session);
        const Registered registered = registrationIn(pdu);
        EXPECT_EQ("owb", registered.context);
        EXPECT_EQ(100u, registered.priority);
        EXPECT_EQ(root, registered.subtree);
    }
    const ReceivedPdu capabilities = master.answer(PduType::addAgentCaps);
    Reader reader(capabilities.payload, capabilities.header.order());
    EXPECT_EQ("owb", reader.octets());
    EXPECT_EQ((Oid{1, 3, 6, 1, 2, 1, 31}), reader.oid());
    EXPECT_EQ("The interfaces.", reader.octets());
    EXPECT_TRUE(master.isSilent());
    EXPECT_EQ(Lines{line("2 of 2 subtrees registered")}, log);
}

TEST_F(SessionTest, DoesNotNameTheDefaultContext) {
    settings.context = "";
    start();
    master.accept();
    master.answer(PduType::open);
    EXPECT_EQ("", registrationIn(master.answer(PduType::registerSubtree)).context);
}

TEST_F(SessionTest, ReachesAMasterOverTcp) {
    ScriptedMaster network(io, "");
    settings.master = *masterAddress(network.address());
    start();
    network.establish(2);
    EXPECT_EQ(Lines{"master " + network.address() + ": 2 of 2 subtrees registered"}, log);
}

TEST_F(SessionTest, ARefusedRegistrationIsReportedOnceAndTheOthersGoOn) {
    const std::string refused = line("cannot register 1.3.6.1.2.1.1: duplicateRegistration (263)");
    const std::string partly = line("1 of 2 subtrees registered");
    const std::string lost = line("connection lost: End of file");
    const auto connect = [this](std::uint16_t error) {
        master.accept();
        master.answer(PduType::open);
        master.answer(PduType::registerSubtree, error);
        master.answer(PduType::registerSubtree);
        EXPECT_TRUE(master.isSilent());
        master.close();
    };
    start();
    connect(263);
    connect(263);
    EXPECT_EQ((Lines{refused, partly, lost, partly}), log);
}

TEST_F(SessionTest, ARegistrationThatIsRefusedAgainAfterASuccessIsReportedAgain) {
    start();
    for (const std::uint16_t error : std::initializer_list<std::uint16_t>{267, 0, 267}) {
        master.accept();
        master.answer(PduType::open);
        master.answer(PduType::registerSubtree, error);
        EXPECT_EQ(PduType::registerSubtree, master.receive().header.type);
    }
    const std::string refused = line("cannot register 1.3.6.1.2.1.1: requestDenied (267)");
    EXPECT_EQ(2, std::count(log.begin(), log.end(), refused));
}

TEST_F(SessionTest, AThousandRefusedRegistrationsLeaveASessionThatAnswers) {
    objects.roots.clear();
    for (std::uint32_t i = 0; i < 1000; ++i)
        objects.roots.push_back({1, 3, 6, 1, 2, 1, 1, i});
    start();
    master.accept();
    master.answer(PduType::open);
    for (std::size_t i = 0; i < 1000; ++i)
        master.answer(PduType::registerSubtree, 263);
    EXPECT_EQ(
        "text 1",
        std::get<std::string>(
            master.exchange(pdus::get({false, 7, 0, 0, "owb"}, {oid(1)})).variables.at(0).value.content));
    EXPECT_EQ(1001u, log.size());
    EXPECT_EQ(line("0 of 1000 subtrees registered"), log.back());
}

TEST_F(SessionTest, RefusedCapabilitiesAreReported) {
    objects.roots.clear();
    objects.capabilities = {{{1, 3, 6, 1, 2, 1, 47}, "Entities."}};
    start();
    master.accept();
    master.answer(PduType::open);
    master.answer(PduType::addAgentCaps, 268);
    master.isSilent();
    EXPECT_EQ((Lines{line("cannot add capabilities of 1.3.6.1.2.1.47: processingError (268)"),
                     line("0 of 0 subtrees registered")}),
              log);
}

TEST_F(SessionTest, AMasterThatDoesNotReplyToTheOpenIsLost) {
    settings.replyTime = 20ms;
    start();
    master.accept();
    master.awaitClose();
    EXPECT_EQ(Lines{line("connection lost: timed out after 20 ms")}, log);
    master.establish(2);
    EXPECT_EQ(line("2 of 2 subtrees registered"), log.back());
}

TEST_F(SessionTest, AMasterThatDoesNotReplyToARegistrationIsLost) {
    settings.replyTime = 20ms;
    start();
    master.accept();
    master.answer(PduType::open);
    master.awaitClose();
    EXPECT_EQ(Lines{line("connection lost: timed out after 20 ms")}, log);
}

TEST_F(SessionTest, AMasterThatRefusesTheSessionIsAskedAgain) {
    start();
    master.accept();
    master.answer(PduType::open, 256);
    master.awaitClose();
    EXPECT_EQ(Lines{line("connection lost: session refused: openFailed (256)")}, log);
    master.establish(2);
}

TEST_F(SessionTest, AnIdleMasterIsPinged) {
    settings.idleTime = 10ms;
    establish();
    for (int i = 0; i < 3; ++i) {
        const ReceivedPdu ping = master.answer(PduType::ping);
        EXPECT_EQ(7u, ping.header.session);
        EXPECT_EQ(nonDefaultContext | networkByteOrder, ping.header.flags);
    }
    EXPECT_EQ(1u, log.size());
}

TEST_F(SessionTest, ARequestPostponesThePing) {
    settings.idleTime = 200ms;
    establish();
    io.restart();
    io.run_for(100ms);
    head.context = "owb";
    const auto asked = std::chrono::steady_clock::now();
    master.exchange(pdus::get(head, {oid(1)}));
    master.answer(PduType::ping);
    EXPECT_GE(std::chrono::steady_clock::now() - asked, 200ms);
}

TEST_F(SessionTest, AMasterThatDoesNotAnswerAPingIsLost) {
    settings.idleTime = 10ms;
    settings.replyTime = 20ms;
    establish();
    EXPECT_EQ(PduType::ping, master.receive().header.type);
    master.awaitClose();
    EXPECT_EQ(line("connection lost: timed out after 20 ms"), log.back());
    master.establish(2);
}

TEST_F(SessionTest, AMasterThatHasForgottenTheSessionIsLost) {
    settings.idleTime = 10ms;
    establish();
    master.answer(PduType::ping, 257);
    master.awaitClose();
    EXPECT_EQ(line("connection lost: session closed"), log.back());
    master.establish(2);
}

TEST_F(SessionTest, AMasterThatClosesTheSessionIsLost) {
    establish();
    master.send(pdus::close(head, 5));
    master.awaitClose();
    EXPECT_EQ(line("connection lost: session closed: shutdown"), log.back());
    master.establish(2);
}

TEST_F(SessionTest, AMasterThatIsMissingIsReportedOnce) {
    master.stopListening();
    start();
    master.await([this] { return !log.empty(); });
    io.restart();
    io.run_for(20ms); // some attempts
    EXPECT_EQ(Lines{line("cannot connect: Connection refused")}, log);
}

TEST_F(SessionTest, AMasterThatComesBackIsReportedOnce) {
    establish();
    for (int i = 0; i < 2; ++i) {
        log.clear();
        master.close();
        master.establish(2);
        EXPECT_EQ((Lines{line("connection lost: End of file"), line("2 of 2 subtrees registered")}), log);
    }
}

TEST_F(SessionTest, PausesGrow) {
    const Settings defaults;
    const std::vector<std::chrono::seconds> pauses{1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s};
    for (unsigned i = 0; i < pauses.size(); ++i)
        EXPECT_EQ(pauses[i], pauseAfter(i, defaults)) << i;
    EXPECT_EQ(60s, pauseAfter(4294967295U, defaults));
}

TEST_F(SessionTest, APauseFollowsEachLoss) {
    settings.firstPause = 10ms;
    settings.longestPause = 40ms;
    start();
    master.accept();
    for (const auto pause : {10ms, 20ms, 40ms, 40ms}) {
        const auto lost = std::chrono::steady_clock::now();
        master.close();
        master.accept();
        EXPECT_GE(std::chrono::steady_clock::now() - lost, pause);
    }
}

TEST_F(SessionTest, ASessionThatLastedStartsWithTheFirstPauseAgain) {
    settings.firstPause = 500ms;
    settings.longestPause = 1s;
    start();
    master.accept();
    master.close();
    master.establish(2);
    io.restart();
    io.run_for(1100ms);
    const auto lost = std::chrono::steady_clock::now();
    master.close();
    master.accept();
    EXPECT_LT(std::chrono::steady_clock::now() - lost, 1s);
}

TEST_F(SessionTest, EachReplyCarriesTheUpTimeOfTheMaster) {
    start();
    master.accept();
    master.reply(master.receive(), 0, 4242);
    master.isSilent();
    EXPECT_EQ(4242u, objects.upTime);
}

TEST_F(SessionTest, AReplyThatIsNotAwaitedIsIgnored) {
    establish();
    pdus::Head other;
    other.packet = 99;
    master.send(pdus::response(other, 1, 257));
    master.send(pdus::pdu(18, other, "")); // and malformed
    EXPECT_TRUE(master.isSilent());
    EXPECT_EQ(1u, log.size());
    EXPECT_EQ(0u, objects.upTime);
}

TEST_F(SessionTest, AStopClosesTheSessionAndLeavesNoWork) {
    establish();
    session->stop();
    const ReceivedPdu close = master.receive();
    EXPECT_EQ(PduType::close, close.header.type);
    EXPECT_EQ(7u, close.header.session);
    EXPECT_EQ(std::string("\5\0\0\0", 4), close.payload);
    EXPECT_TRUE(session->isClosed());
    master.awaitClose();
    io.restart();
    io.run();
    EXPECT_EQ(1u, log.size());
}

TEST_F(SessionTest, AStopWithoutASessionLeavesNoWork) {
    start();
    session->stop();
    io.run();
    start();
    io.restart();
    io.run_one(); // has begun to connect
    session->stop();
    io.run();
    start();
    master.accept(); // has not opened a session
    session->stop();
    master.awaitClose();
    master.stopListening();
    start();
    master.await([this] { return !log.empty(); }); // waits to connect again
    session->stop();
    io.restart();
    io.run();
}

TEST_F(SessionTest, AnEndOfTheProgramDuringARequestIsHarmless) {
    objects.holdsPreparations = true;
    head.context = "owb";
    establish();
    master.send(pdus::get(head, {oid(1)}));
    master.await([this] { return !objects.waiting.empty(); });
    session.reset();
    objects.waiting.at(0)();
    io.restart();
    io.run();
}

TEST(MasterAddress, IsAPathOrATcpAddress) {
    EXPECT_EQ("/var/agentx/master", masterAddress("/var/agentx/master")->text);
    EXPECT_EQ(AF_UNIX, masterAddress("/var/agentx/master")->endpoint.protocol().family());
    EXPECT_EQ(AF_INET, masterAddress("tcp:127.0.0.1:705")->endpoint.protocol().family());
    EXPECT_EQ(AF_INET6, masterAddress("tcp:[::1]:705")->endpoint.protocol().family());
    EXPECT_TRUE(masterAddress(std::string(107, 'x')));
    EXPECT_FALSE(masterAddress(std::string(108, 'x')));
    for (const char* const text : {"", "tcp:", "tcp:localhost:705", "tcp:127.0.0.1:", "tcp:127.0.0.1:65536"})
        EXPECT_FALSE(masterAddress(text)) << text;
}

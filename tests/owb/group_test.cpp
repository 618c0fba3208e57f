#include "OW_CIMClient.hpp"
#include "OW_ClientTimeouts.hpp"

#include "owb.h"

#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

using support::ScriptedPeer;
using support::Step;
namespace wire = support::wire;

std::string chassis(const std::string& model) {
    return wire::instance("QAV_K70Chassis", {wire::stringProperty("Model", model)});
}

std::string threeChassis() {
    return wire::chunkedReply(wire::enumeration({chassis("a"), chassis("b"), chassis("c")}));
}

Lines lastLines(const TraceLog& trace, std::size_t count) {
    const Lines all = trace.lines();
    return Lines(all.end() - static_cast<std::ptrdiff_t>(std::min(count, all.size())), all.end());
}

const Items threeItems = {"0/1/0/0=a", "0/1/1/0=b", "0/1/2/0=c"};

std::string line(const std::string& function, const std::string& message) {
    return "../../owb/src/OWB_getGroup.cpp:" + function + ":" + message;
}

TEST(Group, ABadGroupOrANullQueueIsRefusedWithoutTraceAndWithoutAConnection) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())});
    trace.run([&] {
        TestQueue q;
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(31, q.head()));
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(-1, q.head()));
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(0, nullptr));
    });
    EXPECT_EQ(Lines{}, trace.lines());
    EXPECT_EQ(0U, peer.connections());
}

TEST(Group, Group30IsAccepted) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(wire::chunkedReply(wire::enumeration({})))});
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(30, q.head()));
    });
}

TEST(Group, InstancesBecomeRowsInTheOrderOfTheirDelivery) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())});
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ(threeItems, q.items());
    });
}

TEST(Group, ItemsOfEarlierReadsStayInFront) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())});
    trace.run([&] {
        TestQueue q;
        OWB_itemAdd(q.head(), 5, 0, 0, 0, "mine");
        OWB_URLSet(peer.url().c_str());
        OWB_getGroup(0, q.head());
        EXPECT_EQ((Items{"5/0/0/0=mine", "0/1/0/0=a", "0/1/1/0=b", "0/1/2/0=c"}), q.items());
    });
    EXPECT_EQ("250: className: 'QAV_K70Chassis' q_p->size: 1", trace.linesOf("OWB_getGroup").at(0));
}

TEST(Group, TheRequestAsksForTheClassDeeplyAndForEveryProperty) {
    ScriptedPeer peer({Step::answer(threeChassis())});
    TraceLog trace;
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        OWB_getGroup(4, q.head());
    });
    const std::string request = peer.requests().at(0);
    const std::string yes = "h\x01";
    const std::string no("h\0", 2);
    EXPECT_EQ(std::string("\0\x2d\xc6\xc8\x19", 5) + "j\x0aroot/cimv2" + "j\x13QAV_OperatingSystem" + yes +
                  no + no + no + yes,
              request.substr(request.find("\r\n\r\n") + 4));
}

TEST(Group, AClassWithoutInstancesIsDoneAndLeavesTheQueue) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(wire::chunkedReply(wire::enumeration({})))});
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(14, q.head()));
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ(
        (Lines{line("OWB_URLSet", "149: Set URL: '" + peer.url() + "'"),
               line("OWB_getGroup", "250: className: 'QAV_UDPStatisticalData' q_p->size: 0"),
               line("OWB_connect", "206: new connection, URL: " + peer.url() + " namespace: /root/cimv2")}),
        trace.lines());
}

// Reads group 0 twice: the first time against a fault, the second time against a good answer.
class GroupFault : public testing::Test {
protected:
    void expectFaultThenRows(Step fault, const std::string& error) {
        ScriptedPeer peer({std::move(fault), Step::answer(threeChassis())});
        m_trace.run([&] {
            OpenWBEM::clientTimeouts().receive = std::chrono::milliseconds(200);
            OWB_URLSet(peer.url().c_str());
            TestQueue failed;
            EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, failed.head()));
            EXPECT_EQ(Items{}, failed.items()) << "an enumeration delivers all or nothing";
            TestQueue q;
            EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
            EXPECT_EQ(threeItems, q.items());
        });
        EXPECT_EQ((Lines{"206: new connection, URL: " + peer.url() + " namespace: /root/cimv2",
                         "211: use existing connection"}),
                  m_trace.linesOf("OWB_connect"))
            << "the client is kept";
        expectError(error);
    }

    void expectError(const std::string& error) {
        EXPECT_EQ("287: ERROR " + error, withoutPlaces(m_trace.linesOf("OWB_getGroup")).at(1));
    }

    TraceLog m_trace;
};

TEST_F(GroupFault, ACimErrorIsAnException) {
    expectFaultThenRows(Step::answer(wire::cimErrorReply(5, "/root/cimv2:QAV_K70Chassis")),
                        "CIMException PLACE  class does not exist (/root/cimv2:QAV_K70Chassis)");
}

TEST_F(GroupFault, ACimErrorInTheBodyIsAnException) {
    expectFaultThenRows(Step::answer(wire::plainReply(std::string("\x02\0\x07", 3) + wire::text("not here"))),
                        "CIMException PLACE  requested operation is not supported (not here)");
}

TEST_F(GroupFault, ATextErrorInTheBodyIsAnException) {
    expectFaultThenRows(Step::answer(wire::plainReply("\x01" + wire::text("it broke"))),
                        "IOException PLACE  it broke");
}

TEST_F(GroupFault, AReplyCutInMidEnumerationIsAnException) {
    const std::string whole = threeChassis();
    expectFaultThenRows(Step::answerAndClose(whole.substr(0, whole.size() - 60)),
                        "IOException PLACE  Failed reading data");
}

TEST_F(GroupFault, ABodyThatEndsInMidEnumerationIsAnException) {
    const std::string whole = wire::enumeration({chassis("a"), chassis("b")});
    expectFaultThenRows(Step::answer(wire::chunkedReply(whole.substr(0, whole.size() - 20))),
                        "IOException PLACE  Failed reading data");
}

TEST_F(GroupFault, AnErrorBehindPartOfTheInstancesIsAnException) {
    expectFaultThenRows(
        Step::answer(wire::chunkedReply(wire::enumeration({chassis("a")}),
                                        {"07-CIMStatusCode: 1", "07-CIMStatusDescription: mid "})),
        "CIMException PLACE  general error (mid)");
}

TEST_F(GroupFault, AConnectionClosedWithoutAnAnswerIsAnException) {
    expectFaultThenRows(Step::close(), "HTTPException PLACE  Unable to process request: ");
}

TEST_F(GroupFault, ASilentPeerIsAnExceptionAfterTheTimeout) {
    expectFaultThenRows(
        Step::staySilent(),
        "HTTPException PLACE  Unable to process request: Client receive timeout (0 seconds) expired.");
}

TEST_F(GroupFault, APeerThatFallsSilentInMidReplyIsAnException) {
    const std::string whole = threeChassis();
    expectFaultThenRows(Step::answer(whole.substr(0, whole.size() - 60)),
                        "IOException PLACE  Failed reading data");
}

TEST_F(GroupFault, ARefusalIsAnException) {
    expectFaultThenRows(Step::answer(wire::statusReply("403 Forbidden: not you")),
                        "HTTPException PLACE  Unable to process request: Forbidden: not you");
}

TEST_F(GroupFault, AnObjectManagerThatIsNotThereIsAnException) {
    TraceLog trace;
    trace.run([&] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://localhost:nobody");
        EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, q.head()));
    });
    EXPECT_EQ("287: ERROR SocketException PLACE  Failed to connect to: nobody: 2(No such file or directory)",
              withoutPlaces(trace.linesOf("OWB_getGroup")).at(1));
}

TEST(Group, AMalformedUrlIsAnExceptionAndTheNextReadTriesAgain) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())});
    trace.run([&] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://");
        EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, q.head()));
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
    });
    EXPECT_EQ("287: ERROR MalformedURLException PLACE  Invalid URL: owbinary.wbem://",
              withoutPlaces(trace.linesOf("OWB_getGroup")).at(1));
}

TEST(Group, ARestartedObjectManagerIsNotNoticed) {
    TraceLog trace;
    ScriptedPeer peer({Step::answerAndClose(threeChassis()), Step::answer(threeChassis())});
    trace.run([&] {
        OWB_URLSet(peer.url().c_str());
        for (int i = 0; i < 2; ++i) {
            TestQueue q;
            EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
            EXPECT_EQ(threeItems, q.items());
        }
    });
    EXPECT_EQ(2U, peer.connections());
    EXPECT_EQ(2U, peer.requests().size());
}

TEST(Group, AKilledClientClosesItsConnection) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())}); // serves one connection at a time
    trace.run([&] {
        TestQueue q;
        TestQueue again;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        OWB_connect(1);
        OpenWBEM::clientTimeouts().receive = std::chrono::seconds(5);
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, again.head()));
    });
    EXPECT_EQ(2U, peer.connections());
}

TEST(Group, ReadsShareOneConnection) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(threeChassis())});
    trace.run([&] {
        OWB_URLSet(peer.url().c_str());
        for (int i = 0; i < 3; ++i) {
            TestQueue q;
            EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        }
    });
    EXPECT_EQ(1U, peer.connections());
}

TEST(Group, APropertyThatComesTwiceIsReportedAsADuplicate) {
    ScriptedPeer peer({Step::answer(wire::chunkedReply(wire::enumeration({wire::instance(
        "QAV_K70Chassis", {wire::stringProperty("Model", "a"), wire::stringProperty("MODEL", "b")})})))});
    TraceLog trace;
    const std::string out = trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ((Items{"0/1/0/0=a", "0/1/0/0=b"}), q.items());
    });
    EXPECT_EQ(0U, out.find("ZUL: duplicate item 'Model' group: 0 nom: 1 row: 0 array: 0\n")) << out;
}

TEST(Group, TextsOfAnyLengthAreTracedAndReadWhole) {
    const std::string longText(200000, 'L');
    ScriptedPeer peer({Step::answer(wire::chunkedReply(
        wire::enumeration({wire::instance("QAV_K70Chassis", {wire::stringProperty("Model", longText),
                                                             wire::stringProperty(longText, "x")})})))});
    TraceLog trace;
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ(Items{"0/1/0/0=" + longText}, q.items());
    });
    const auto cut = [](const std::string& start, char fill) {
        const std::size_t length = 1023 - std::string("13:04:09:007: ").size() - 1;
        return start + std::string(length - start.size(), fill);
    };
    const std::string file = "../../owb/src/OWB_getInstanceData.cpp:";
    EXPECT_EQ(
        (Lines{file + "OWB_getInstanceData:229: got array of properties - size: 2",
               cut(file + "OWB_itemAdd:197: Add item 1: 'Model' group: 0 nom: 1 row: 0 array: 0 val '", 'L'),
               cut(file + "OWB_getInstanceData:263: Not handled: '", 'L')}),
        lastLines(trace, 3));
    EXPECT_EQ('\n', trace.raw().back());
}

} // namespace

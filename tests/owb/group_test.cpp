// The read of a group, against a scripted object manager.
#include "OW_CIMClient.hpp"
#include "OW_ClientTimeouts.hpp"

#include "owb.h"

#include "Agent.hpp"
#include "support/Wire.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

using support::Step;
namespace wire = support::wire;

std::string chassis(const std::string& model) {
    return wire::instance("QAV_K70Chassis", {wire::stringProperty("Model", model)});
}

Step answerOf(const std::vector<std::string>& instances) {
    return Step::answer(wire::chunkedReply(wire::enumeration(instances)));
}

std::string threeChassis() {
    return wire::chunkedReply(wire::enumeration({chassis("a"), chassis("b"), chassis("c")}));
}

const Items threeItems = {"0/1/0/0=a", "0/1/1/0=b", "0/1/2/0=c"};

// Reads group 0, whose object manager has three chassis.
void expectThreeItems() {
    TestQueue q;
    EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
    EXPECT_EQ(threeItems, q.items());
}

std::string line(const std::string& function, const std::string& message) {
    return "../../owb/src/OWB_getGroup.cpp:" + function + ":" + message;
}

std::string newConnection(const Agent& agent) {
    return "206: new connection, URL: " + agent.peer().url() + " namespace: /root/cimv2";
}

TEST(Group, ABadGroupOrANullQueueIsRejectedWithoutTraceAndConnection) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(31, q.head()));
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(-1, q.head()));
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getGroup(0, nullptr));
    });
    EXPECT_EQ(Lines{line("OWB_URLSet", "149: Set URL: '" + agent.peer().url() + "'")}, agent.trace().lines());
    EXPECT_EQ(0U, agent.peer().connections());
}

TEST(Group, Group30IsAccepted) {
    const Agent agent({answerOf({})});
    agent.run([](TestQueue& q) { EXPECT_EQ(OWB_DONE, OWB_getGroup(30, q.head())); });
}

TEST(Group, InstancesBecomeRowsInTheOrderOfTheirDelivery) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ(threeItems, q.items());
    });
}

TEST(Group, ItemsOfEarlierReadsStayInFront) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([](TestQueue& q) {
        OWB_itemAdd(q.head(), 5, 0, 0, 0, "mine");
        OWB_getGroup(0, q.head());
        EXPECT_EQ((Items{"5/0/0/0=mine", "0/1/0/0=a", "0/1/1/0=b", "0/1/2/0=c"}), q.items());
    });
    EXPECT_EQ("250: className: 'QAV_K70Chassis' q_p->size: 1", agent.tracedBy("OWB_getGroup").at(0));
}

TEST(Group, TheRequestAsksForSubclassesAndForEveryProperty) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([](TestQueue& q) { OWB_getGroup(4, q.head()); });
    const std::string yes = "h\x01";
    const std::string no("h\0", 2);
    EXPECT_EQ(Requests{std::string("\0\x2d\xc6\xc8\x19", 5) + "j\x0aroot/cimv2" + "j\x13QAV_OperatingSystem" +
                       yes + no + no + no + yes},
              agent.requests());
}

TEST(Group, AClassWithoutInstancesIsDoneAndLeavesTheQueue) {
    const Agent agent({answerOf({})});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_getGroup(14, q.head()));
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ((Lines{line("OWB_URLSet", "149: Set URL: '" + agent.peer().url() + "'"),
                     line("OWB_getGroup", "250: className: 'QAV_UDPStatisticalData' q_p->size: 0"),
                     line("OWB_connect", newConnection(agent))}),
              agent.trace().lines());
}

// The first of two reads fails; the second uses the same client.
void expectFaultThenRows(Step fault, const std::string& error) {
    const Agent agent({std::move(fault), Step::answer(threeChassis())});
    agent.run([](TestQueue& q) {
        OpenWBEM::clientTimeouts().receive = std::chrono::milliseconds(200);
        EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, q.head()));
        EXPECT_EQ(Items{}, q.items()) << "an enumeration delivers all or nothing";
        expectThreeItems();
    });
    EXPECT_EQ((Lines{newConnection(agent), "211: use existing connection"}), agent.tracedBy("OWB_connect"));
    EXPECT_EQ("287: ERROR " + error, agent.tracedBy("OWB_getGroup").at(1));
}

TEST(GroupFault, ACimErrorIsAnException) {
    expectFaultThenRows(Step::answer(wire::cimErrorReply(5, "/root/cimv2:QAV_K70Chassis")),
                        "CIMException PLACE  class does not exist (/root/cimv2:QAV_K70Chassis)");
}

TEST(GroupFault, ACimErrorInTheBodyIsAnException) {
    expectFaultThenRows(Step::answer(wire::plainReply(std::string("\x02\0\x07", 3) + wire::text("not here"))),
                        "CIMException PLACE  requested operation is not supported (not here)");
}

TEST(GroupFault, ATextErrorInTheBodyIsAnException) {
    expectFaultThenRows(Step::answer(wire::plainReply("\x01" + wire::text("it broke"))),
                        "IOException PLACE  it broke");
}

TEST(GroupFault, AReplyTruncatedInMidEnumerationIsAnException) {
    const std::string whole = threeChassis();
    expectFaultThenRows(Step::answerAndClose(whole.substr(0, whole.size() - 60)),
                        "IOException PLACE  Failed reading data");
}

TEST(GroupFault, ABodyThatEndsInMidEnumerationIsAnException) {
    const std::string whole = wire::enumeration({chassis("a"), chassis("b")});
    expectFaultThenRows(Step::answer(wire::chunkedReply(whole.substr(0, whole.size() - 20))),
                        "IOException PLACE  Failed reading data");
}

TEST(GroupFault, AnErrorAfterSomeInstancesIsAnException) {
    expectFaultThenRows(
        Step::answer(wire::chunkedReply(wire::enumeration({chassis("a")}),
                                        {"07-CIMStatusCode: 1", "07-CIMStatusDescription: mid "})),
        "CIMException PLACE  general error (mid)");
}

TEST(GroupFault, AConnectionClosedWithoutAReplyIsAnException) {
    expectFaultThenRows(Step::close(), "HTTPException PLACE  Unable to process request: ");
}

TEST(GroupFault, ASilentPeerIsAnExceptionAfterTheTimeout) {
    expectFaultThenRows(
        Step::staySilent(),
        "HTTPException PLACE  Unable to process request: Client receive timeout (0 seconds) expired.");
}

TEST(GroupFault, APeerThatFallsSilentInMidReplyIsAnException) {
    const std::string whole = threeChassis();
    expectFaultThenRows(Step::answer(whole.substr(0, whole.size() - 60)),
                        "IOException PLACE  Failed reading data");
}

TEST(GroupFault, AnErrorResponseIsAnException) {
    expectFaultThenRows(Step::answer(wire::statusReply("403 Forbidden: not you")),
                        "HTTPException PLACE  Unable to process request: Forbidden: not you");
}

TEST(GroupFault, AMissingSocketIsAnException) {
    TraceLog trace;
    trace.run([&] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://localhost:missing");
        EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, q.head()));
    });
    EXPECT_EQ("287: ERROR SocketException PLACE  Failed to connect to: missing: 2(No such file or directory)",
              withoutPlaces(trace.linesOf("OWB_getGroup")).at(1));
}

TEST(GroupFault, AMalformedUrlIsAnExceptionAndTheNextReadTriesAgain) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([&](TestQueue& q) {
        OWB_URLSet("owbinary.wbem://");
        EXPECT_EQ(OWB_EXCEPTION, OWB_getGroup(0, q.head()));
        OWB_URLSet(agent.peer().url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
    });
    EXPECT_EQ("287: ERROR MalformedURLException PLACE  Invalid URL: owbinary.wbem://",
              agent.tracedBy("OWB_getGroup").at(1));
}

TEST(GroupConnection, ARestartOfTheObjectManagerCausesNoError) {
    const Agent agent({Step::answerAndClose(threeChassis()), Step::answer(threeChassis())});
    agent.run([](TestQueue&) {
        expectThreeItems();
        expectThreeItems();
    });
    EXPECT_EQ(2U, agent.peer().connections());
    EXPECT_EQ(2U, agent.requests().size());
}

TEST(GroupConnection, AKilledClientClosesIt) {
    const Agent agent({Step::answer(threeChassis())}); // serves one connection at a time
    agent.run([](TestQueue&) {
        expectThreeItems();
        OWB_connect(1);
        OpenWBEM::clientTimeouts().receive = std::chrono::seconds(5);
        expectThreeItems();
    });
    EXPECT_EQ(2U, agent.peer().connections());
}

TEST(GroupConnection, ReadsShareIt) {
    const Agent agent({Step::answer(threeChassis())});
    agent.run([](TestQueue&) {
        for (int i = 0; i < 3; ++i)
            expectThreeItems();
    });
    EXPECT_EQ(1U, agent.peer().connections());
}

TEST(Group, APropertyThatComesTwiceIsReportedAsADuplicate) {
    const Agent agent({answerOf({wire::instance(
        "QAV_K70Chassis", {wire::stringProperty("Model", "a"), wire::stringProperty("MODEL", "b")})})});
    const std::string printed = agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ((Items{"0/1/0/0=a", "0/1/0/0=b"}), q.items());
    });
    EXPECT_EQ(0U, printed.find("ZUL: duplicate item 'Model' group: 0 nom: 1 row: 0 array: 0\n")) << printed;
}

TEST(Group, TextsOfAnyLengthAreReadCompletelyAndTracedTruncated) {
    const std::string longText(200000, 'L');
    const Agent agent({answerOf({wire::instance(
        "QAV_K70Chassis", {wire::stringProperty("Model", longText), wire::stringProperty(longText, "x")})})});
    agent.run([&](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ(Items{"0/1/0/0=" + longText}, q.items());
    });
    const auto truncated = [](const std::string& start, char fill) {
        const std::size_t length = 1023 - std::string("13:04:09:007: ").size() - 1;
        return start + std::string(length - start.size(), fill);
    };
    const std::string file = "../../owb/src/OWB_getInstanceData.cpp:";
    const Lines all = agent.trace().lines();
    ASSERT_LT(3U, all.size());
    EXPECT_EQ((Lines{file + "OWB_getInstanceData:229: got array of properties - size: 2",
                     truncated(file + "OWB_itemAdd:197: Add item 1: 'Model' group: 0 nom: 1 row: 0 array: 0 "
                                      "val '",
                               'L'),
                     truncated(file + "OWB_getInstanceData:263: Not handled: '", 'L')}),
              Lines(all.end() - 3, all.end()));
    EXPECT_EQ('\n', agent.trace().raw().back());
}

} // namespace

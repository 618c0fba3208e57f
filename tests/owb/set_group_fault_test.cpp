// The traces of a write, and its faults.
#include "GroupWrite.hpp"

#include <climits>
#include <gtest/gtest.h>
#include <string>

namespace {

using support::Step;
namespace wire = support::wire;

const Lines firstWritten = {"121: Found instance: 0", "162: Key name 'Tag'",
                            "162: Key name 'CreationClassName'", "175: Need to set item nominator 1 'a'",
                            "183: found CIM property name Model'"};
const Lines secondWritten = {"121: Found instance: 1", "162: Key name 'Tag'",
                             "162: Key name 'CreationClassName'", "175: Need to set item nominator 1 'b'",
                             "183: found CIM property name Model'"};

Lines joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// Writes the models "a" and "b" to two instances.
long writeTwo(TestQueue& q) {
    add(q, 0, 1, 0, "a");
    add(q, 0, 1, 1, "b");
    return OWB_setGroup(0, q.head());
}

const Requests bothWrites = chassisRequests({modelWrite("t0", "a"), modelWrite("t1", "b")});

Step twoInstances() {
    return instances({chassis("t0"), chassis("t1")});
}

TEST(SetGroupTrace, NamesEachInstanceItsKeysAndItsItems) {
    GroupWrite write({twoInstances(), done()});
    write.run([](TestQueue& q) { EXPECT_EQ(OWB_DONE, writeTwo(q)); });
    EXPECT_EQ(bothWrites, write.requests());
    Lines expected;
    for (const std::string& line : joined({firstWritten, secondWritten}))
        expected.push_back("../../owb/src/OWB_setGroup.cpp:OWB_setGroup:" + line);
    const Lines all = write.trace().lines();
    ASSERT_LT(expected.size(), all.size());
    EXPECT_EQ(expected, Lines(all.end() - static_cast<std::ptrdiff_t>(expected.size()), all.end()));
}

TEST(SetGroupTrace, NamesBothKeysWithoutAName) {
    GroupWrite write({wire::instance("QAV_System", {})});
    write.run([](TestQueue& q) {
        add(q, 1, 0, 0, "x");
        OWB_setGroup(1, q.head());
    });
    EXPECT_EQ(
        (Lines{"121: Found instance: 0", "162: Key name ''", "162: Key name ''",
               "175: Need to set item nominator 0 'x'", "183: found CIM property name LastChangeTime'"}),
        write.traced());
}

TEST(SetGroupTrace, NamesNoKeysOfAGroupBeyondTheKeys) {
    GroupWrite write({wire::instance("QAV_LANEndpointNetworkPortAssociation", {})});
    write.run([](TestQueue& q) {
        add(q, 8, 1, 0, "x");
        OWB_setGroup(8, q.head());
    });
    EXPECT_EQ((Lines{"121: Found instance: 0", "175: Need to set item nominator 1 'x'",
                     "183: found CIM property name Antecedent'"}),
              write.traced());
}

TEST(SetGroupArguments, ABadGroupOrANullQueueIsRejectedWithoutTraceAndConnection) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "x");
        for (const long group : {31L, 32L, -1L, LONG_MIN, LONG_MAX})
            EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_setGroup(group, q.head())) << group;
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_setGroup(0, nullptr));
    });
    EXPECT_EQ(2U, write.trace().lines().size()) << "the URL and the item";
    EXPECT_EQ(0U, write.peer().connections());
}

// The first of two modifications fails.
void expectOnlyTheFirstToFail(Step fault, const std::string& error, unsigned connections) {
    GroupWrite write({twoInstances(), std::move(fault), done()});
    write.run([](TestQueue& q) { EXPECT_EQ(OWB_DONE, writeTwo(q)); });
    EXPECT_EQ(bothWrites, write.requests()) << "each is sent once";
    EXPECT_EQ(
        joined(
            {firstWritten, {"207: Exception setting properties", "208: \n>>ERROR " + error}, secondWritten}),
        write.traced());
    EXPECT_EQ(connections, write.peer().connections());
}

TEST(SetGroupFault, ACimErrorOfAModificationIsTracedAndTheNextOneSent) {
    expectOnlyTheFirstToFail(
        Step::answer(wire::cimErrorReply(6, "/root/cimv2:QAV_K70Chassis")),
        "CIMException PLACE  requested object could not be found (/root/cimv2:QAV_K70Chassis)", 1);
}

TEST(SetGroupFault, ACimErrorInTheBodyIsTracedAndTheNextOneSent) {
    expectOnlyTheFirstToFail(
        Step::answer(wire::plainReply(std::string("\x02\0\x0d", 3) + wire::text("not a number"))),
        "CIMException PLACE  value supplied is incompatible with type (not a number)", 1);
}

TEST(SetGroupFault, ATextErrorInTheBodyIsTracedAndTheNextOneSent) {
    expectOnlyTheFirstToFail(Step::answer(wire::plainReply("\x01" + wire::text("it broke"))),
                             "IOException PLACE  it broke", 1);
}

TEST(SetGroupFault, AModificationOnAClosedConnectionIsNotSentAgainAndTheNextOneReconnects) {
    expectOnlyTheFirstToFail(Step::close(), "HTTPException PLACE  Unable to process request: ", 2);
}

TEST(SetGroupFault, AConnectionClosedBetweenTwoModificationsCausesNoError) {
    const std::string notice =
        wire::statusReply("408 Request timeout: idle"); // arrives before the client sends again
    GroupWrite write({twoInstances(), Step::answerAndClose(done().reply + notice), done()});
    write.run([](TestQueue& q) { EXPECT_EQ(OWB_DONE, writeTwo(q)); });
    EXPECT_EQ(bothWrites, write.requests());
    EXPECT_EQ(joined({firstWritten, secondWritten}), write.traced());
    EXPECT_EQ(2U, write.peer().connections());
}

TEST(SetGroupFault, EveryModificationMayFailAndTheWriteIsDone) {
    GroupWrite write({twoInstances(), Step::answer(wire::cimErrorReply(2, "no"))});
    write.run([](TestQueue& q) { EXPECT_EQ(OWB_DONE, writeTwo(q)); });
    const Lines failed = {
        "207: Exception setting properties",
        "208: \n>>ERROR CIMException PLACE  Access to CIM resource unavailable to client (no)"};
    EXPECT_EQ(joined({firstWritten, failed, secondWritten, failed}), write.traced());
}

// The enumeration fails; nothing is written, and the next write uses the same client.
void expectEnumerationToFail(Step fault, const std::string& error) {
    GroupWrite write({std::move(fault), twoInstances(), done()});
    write.run([](TestQueue& q) {
        add(q, 0, 7, 0, "x");
        q.at(0)->selected = 7;
        EXPECT_EQ(OWB_EXCEPTION, OWB_setGroup(0, q.head()));
        EXPECT_EQ(7, q.at(0)->selected);
        q.clear();
        EXPECT_EQ(OWB_DONE, writeTwo(q));
    });
    EXPECT_EQ(joined({{"216: \n>>ERROR " + error}, firstWritten, secondWritten}), write.traced());
    EXPECT_EQ(joined({{wire::enumerateRequest(chassisClass)}, bothWrites}), write.requests());
    EXPECT_EQ((Lines{"206: new connection, URL: " + write.peer().url() + " namespace: /root/cimv2",
                     "211: use existing connection"}),
              write.trace().linesOf("OWB_connect"));
}

TEST(SetGroupFault, ACimErrorOfTheEnumerationIsAnException) {
    expectEnumerationToFail(Step::answer(wire::cimErrorReply(5, "/root/cimv2:QAV_K70Chassis")),
                            "CIMException PLACE  class does not exist (/root/cimv2:QAV_K70Chassis)");
}

TEST(SetGroupFault, AnEnumerationThatBreaksOffIsAnExceptionAndNothingIsWritten) {
    const std::string whole = twoInstances().reply;
    expectEnumerationToFail(Step::answerAndClose(whole.substr(0, whole.size() - 20)),
                            "IOException PLACE  Failed reading data");
}

TEST(SetGroupFault, AMissingSocketIsAnException) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://localhost:missing");
        EXPECT_EQ(OWB_EXCEPTION, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(Lines{"216: \n>>ERROR SocketException PLACE  Failed to connect to: missing: 2(No such file or "
                    "directory)"},
              withoutPlaces(trace.linesOf("OWB_setGroup")));
}

TEST(SetGroupFault, AMalformedUrlIsAnException) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://");
        EXPECT_EQ(OWB_EXCEPTION, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(Lines{"216: \n>>ERROR MalformedURLException PLACE  Invalid URL: owbinary.wbem://"},
              withoutPlaces(trace.linesOf("OWB_setGroup")));
}

} // namespace

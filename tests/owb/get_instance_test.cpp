// The read of one instance by its path.
#include "owb.h"

#include "Agent.hpp"
#include "support/Wire.hpp"

#include <climits>
#include <gtest/gtest.h>
#include <string>

namespace {

using support::Step;
namespace wire = support::wire;
using wire::stringProperty;

const char hostPath[] = "QAV_System.Name=\"host\",CreationClassName=\"QAV_System\"";

Step answer(const std::string& instance) {
    return Step::answer(wire::plainReply(std::string(1, '\0') + instance));
}

// An instance with two properties of group 2 and another one.
Step host() {
    return answer(wire::instance(
        "QAV_System", {stringProperty("PrimaryOwnerContact", "ops"), stringProperty("Name", "host"),
                       wire::property("sysservices", wire::UINT16, wire::bigEndian(72, 2))}));
}

long getInstance(long group, std::string path, long row, TestQueue& q) {
    return OWB_getInstance(group, path.data(), row, q.head());
}

// The requests for a path.
Requests requestsOf(const std::string& path) {
    Agent agent({host()});
    agent.run([&](TestQueue& q) { EXPECT_EQ(OWB_DONE, getInstance(2, path, 0, q)) << path; });
    return agent.requests();
}

// A request for an instance of QAV_System on this host.
Requests requestFor(const std::string& nameSpace, const std::vector<std::string>& keys) {
    return {wire::getRequest(wire::objectPath(nameSpace, "HTTP://127.0.0.1:5988/cimom", "QAV_System", keys))};
}

TEST(GetInstance, RequestsTheInstanceOfThePathWithEveryProperty) {
    EXPECT_EQ(requestFor("root",
                         {stringProperty("Name", "host"), stringProperty("CreationClassName", "QAV_System")}),
              requestsOf(hostPath));
}

TEST(GetInstance, AcceptsThePathsOfTheClientLibrary) {
    const std::pair<const char*, Requests> examples[] = {
        {"  QAV_System.Name=host  ", requestFor("root", {stringProperty("Name", "host")})},
        {"QAV_System.Name=7,Up=true",
         requestFor("root", {stringProperty("Name", "7"), stringProperty("Up", "true")})},
        {"QAV_System.Name=\"a\\\"b\\\\c,d=e.f\"",
         requestFor("root", {stringProperty("Name", "a\"b\\c,d=e.f")})},
        {"QAV_System.Name=\"\"", requestFor("root", {stringProperty("Name", "")})},
        {"root/other:QAV_System.Name=\"a:b\"", requestFor("root/other", {stringProperty("Name", "a:b")})},
        {"/root/cimv2:QAV_System.Name=\"x\"", requestFor("root/cimv2", {stringProperty("Name", "x")})},
        {"http://far:99/root:QAV_System.Name=\"x\"",
         {wire::getRequest(
             wire::objectPath("root", "http://far:99/cimom", "QAV_System", {stringProperty("Name", "x")}))}}};
    for (const auto& [path, expected] : examples)
        EXPECT_EQ(expected, requestsOf(path)) << path;
}

TEST(GetInstance, AppendsTheItemsOfTheGroupWithTheRowOfTheAgent) {
    Agent agent({host()});
    agent.run([](TestQueue& q) {
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "mine");
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, 17, q));
        EXPECT_EQ((Items{"0/1/0/0=mine", "2/3/17/0=ops", "2/6/17/0=72"}), q.items());
        EXPECT_TRUE(q.isConsistent());
    });
    const std::string file = "../../owb/src/OWB_getInstanceData.cpp:";
    const Lines all = agent.trace().lines();
    ASSERT_EQ(7U, all.size());
    EXPECT_EQ(
        (Lines{file + "OWB_getInstanceData:229: got array of properties - size: 3",
               file + "OWB_itemAdd:197: Add item 2: 'PrimaryOwnerContact' group: 2 nom: 3 row: 17 array: 0 "
                      "val 'ops'",
               file + "OWB_getInstanceData:263: Not handled: 'Name'",
               file +
                   "OWB_itemAdd:197: Add item 3: 'SysServices' group: 2 nom: 6 row: 17 array: 0 val '72'"}),
        Lines(all.begin() + 3, all.end()));
    EXPECT_EQ(Lines{}, agent.tracedBy("OWB_getInstance")) << "it traces nothing itself";
}

TEST(GetInstance, TakesTheClassFromThePathAndTheItemsFromTheGroup) {
    Agent agent(
        {answer(wire::instance("Other", {stringProperty("Key", "k"), stringProperty("LocnXruType", "t")}))});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, getInstance(30, "Other.Key=\"k\"", 0, q));
        EXPECT_EQ((Items{"30/0/0/0=k", "30/1/0/0=t"}), q.items());
    });
    EXPECT_EQ(Requests{wire::getRequest(wire::objectPath("root", "HTTP://127.0.0.1:5988/cimom", "Other",
                                                         {stringProperty("Key", "k")}))},
              agent.requests());
}

TEST(GetInstance, AnInstanceWithoutPropertiesOfTheGroupIsDone) {
    Agent agent({host(), answer(wire::instance("QAV_System", {}))});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, getInstance(14, hostPath, 0, q));
        EXPECT_EQ(OWB_DONE, getInstance(14, hostPath, 0, q));
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ(Lines{}, agent.tracedBy("OWB_getInstance"));
}

TEST(GetInstance, TheHighestRowIsAccepted) {
    Agent agent({host()});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, LONG_MAX, q));
        EXPECT_EQ((Items{"2/3/2147483647/0=ops", "2/6/2147483647/0=72"}), q.items());
    });
}

TEST(GetInstance, BadArgumentsAreRejectedWithoutTraceAndConnection) {
    Agent agent({host()});
    agent.run([](TestQueue& q) {
        for (const long group : {31L, 32L, -1L, LONG_MIN, LONG_MAX})
            EXPECT_EQ(OWB_BAD_ARGUMENT, getInstance(group, hostPath, 0, q)) << group;
        EXPECT_EQ(OWB_BAD_ARGUMENT, getInstance(2, hostPath, -1, q));
        EXPECT_EQ(OWB_BAD_ARGUMENT, getInstance(2, hostPath, LONG_MIN, q));
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getInstance(2, nullptr, 0, q.head()));
        std::string path = hostPath;
        EXPECT_EQ(OWB_BAD_ARGUMENT, OWB_getInstance(2, path.data(), 0, nullptr));
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ(1U, agent.trace().lines().size()) << "the URL";
    EXPECT_EQ(0U, agent.peer().connections());
}

TEST(GetInstance, ReadTwiceReportsDuplicatesAndStillAppendsThem) {
    Agent agent({answer(wire::instance("QAV_System", {stringProperty("Description", "d")}))});
    const std::string printed = agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, 3, q));
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, 4, q));
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, 3, q));
        EXPECT_EQ((Items{"2/0/3/0=d", "2/0/4/0=d", "2/0/3/0=d"}), q.items());
    });
    EXPECT_EQ("ZUL: duplicate item 'Description' group: 2 nom: 0 row: 3 array: 0\n"
              "\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n",
              printed);
    EXPECT_EQ(3U, agent.requests().size());
    EXPECT_EQ(1U, agent.peer().connections());
}

TEST(GetInstance, AnInvalidPathIsAnExceptionBeforeAnyRequest) {
    const std::string invalid = "invalid parameter passed to method ";
    const std::pair<std::string, std::string> examples[] = {
        {"Foo", "CIMException PLACE  " + invalid + "(class name not found in instance name: Foo)"},
        {"Foo=@", "CIMException PLACE  " + invalid + "(class name not found in instance name: Foo=@)"},
        {"Foo.", "CIMException PLACE  " + invalid + "(No key values found in instance name: Foo.)"},
        {"Foo.bar", "CIMException PLACE  requested object could not be found (Bad key in string (bar))"},
        {"Foo.Name=\"a:b\"",
         "CIMException PLACE  " + invalid + "(class name not found in instance name: Foo.Name=\"a:b\")"},
        {"https://h:x/root:Foo.Name=\"x\"",
         "CIMException PLACE  " + invalid + "(Invalid port in Object Path)"},
        {"", "NULLCOWIntrusiveReferenceException PLACE  NULL COWReference dereferenced"},
        {"  ", "NULLCOWIntrusiveReferenceException PLACE  NULL COWReference dereferenced"}};
    Lines expected;
    for (const auto& example : examples)
        expected.push_back("109: ERROR " + example.second);
    Agent agent({host()});
    agent.run([&](TestQueue& q) {
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "mine");
        for (const auto& example : examples)
            EXPECT_EQ(OWB_EXCEPTION, getInstance(2, example.first, 0, q)) << example.first;
        EXPECT_EQ(Items{"0/1/0/0=mine"}, q.items());
    });
    EXPECT_EQ(expected, agent.tracedBy("OWB_getInstance"));
    EXPECT_EQ(expected.size(), agent.tracedBy("OWB_connect").size()) << "the client is created first";
    EXPECT_EQ(0U, agent.peer().connections());
}

// The first of two reads fails, the second uses the same client.
void expectFaultThenItems(Step fault, const std::string& error) {
    Agent agent({std::move(fault), host()});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_EXCEPTION, getInstance(2, hostPath, 0, q));
        EXPECT_EQ(Items{}, q.items());
        EXPECT_EQ(OWB_DONE, getInstance(2, hostPath, 0, q));
        EXPECT_EQ((Items{"2/3/0/0=ops", "2/6/0/0=72"}), q.items());
    });
    EXPECT_EQ(Lines{"109: ERROR " + error}, agent.tracedBy("OWB_getInstance"));
    EXPECT_EQ((Lines{"206: new connection, URL: " + agent.peer().url() + " namespace: /root/cimv2",
                     "211: use existing connection"}),
              agent.tracedBy("OWB_connect"));
}

TEST(GetInstance, AMissingInstanceIsAnException) {
    expectFaultThenItems(Step::answer(wire::cimErrorReply(6, "/root/cimv2:QAV_System")),
                         "CIMException PLACE  requested object could not be found (/root/cimv2:QAV_System)");
}

// A reply in CIM-XML with the given content.
Step xmlAnswer(const std::string& content) {
    return Step::answer(wire::plainReply(
        "<?xml version=\"1.0\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
        "PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE NAME=\"GetInstance\">" +
        content + "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>"));
}

TEST(GetInstance, AReplyWithoutAReturnValueIsNoInstance) {
    Agent agent({xmlAnswer("")});
    agent.run([&](TestQueue& q) {
        OWB_URLSet(agent.peer().url("http", "localhost").c_str());
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "mine");
        EXPECT_EQ(OWB_NO_INSTANCE, getInstance(2, hostPath, 0, q));
        EXPECT_EQ(Items{"0/1/0/0=mine"}, q.items());
    });
    EXPECT_EQ(Lines{"101: ERROR - no instances of class found in CIMOM database."},
              agent.tracedBy("OWB_getInstance"));
}

TEST(GetInstance, AReturnValueWithoutAnInstanceIsAnException) {
    Agent agent({xmlAnswer("<IRETURNVALUE/>")});
    agent.run([&](TestQueue& q) {
        OWB_URLSet(agent.peer().url("http", "localhost").c_str());
        EXPECT_EQ(OWB_EXCEPTION, getInstance(2, hostPath, 0, q));
    });
    EXPECT_EQ(Lines{"109: ERROR CIMException PLACE  invalid parameter passed to method (Not instance XML)"},
              agent.tracedBy("OWB_getInstance"));
}

TEST(GetInstance, AnErrorInTheBodyIsAnException) {
    expectFaultThenItems(Step::answer(wire::plainReply("\x01" + wire::text("it broke"))),
                         "IOException PLACE  it broke");
}

TEST(GetInstance, AReplyThatBreaksOffIsAnException) {
    const std::string whole = host().reply;
    expectFaultThenItems(Step::answerAndClose(whole.substr(0, whole.size() - 9)),
                         "IOException PLACE  Failed reading data");
}

TEST(GetInstance, AConnectionClosedWithoutAReplyIsAnException) {
    expectFaultThenItems(Step::close(), "HTTPException PLACE  Unable to process request: ");
}

TEST(GetInstance, AMalformedUrlIsAnException) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_URLSet("owbinary.wbem://");
        EXPECT_EQ(OWB_EXCEPTION, getInstance(2, hostPath, 0, q));
    });
    EXPECT_EQ("../../owb/src/OWB_getInstance.cpp:OWB_getInstance:109: ERROR MalformedURLException PLACE  "
              "Invalid URL: owbinary.wbem://",
              withoutPlaces(trace.lines()).back());
}

} // namespace

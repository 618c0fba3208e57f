// Faults that no peer can cause: a value that throws while it is read, a missing client. The test interposes
// functions of the libraries.
#include "OW_CIMClient.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"

#include "owb.h"

#include "GroupWrite.hpp"
#include "Instances.hpp"
#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/Descriptors.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>

namespace {

bool hasNoClient = false;
unsigned nameLookups = 0;

// A value whose text is "poison" or "foreign" throws when it is read, and when it is set as a property.
void throwFor(const OpenWBEM::String& text) {
    using OpenWBEM::CIMException;
    if (text == "poison")
        throw CIMException("poisoned.cpp", 99, CIMException::FAILED, "poison");
    if (text == "foreign")
        throw std::runtime_error("foreign");
}

} // namespace

OpenWBEM::String OpenWBEM::CIMValue::toString() const {
    const auto real =
        reinterpret_cast<String (*)(const CIMValue*)>(dlsym(RTLD_NEXT, "_ZNK8OpenWBEM8CIMValue8toStringEv"));
    const String text = real(this);
    throwFor(text);
    return text;
}

OpenWBEM::CIMInstance& OpenWBEM::CIMInstance::setProperty(const CIMName& name, const CIMValue& value) {
    using Function = CIMInstance& (*)(CIMInstance*, const CIMName&, const CIMValue&);
    const auto real = reinterpret_cast<Function>(
        dlsym(RTLD_NEXT, "_ZN8OpenWBEM11CIMInstance11setPropertyERKNS_7CIMNameERKNS_8CIMValueE"));
    if (value)
        throwFor(value.toString());
    return real(this, name, value);
}

__attribute__((visibility("default"))) OpenWBEM::CIMClient* OWB_connect(unsigned char kill) {
    if (hasNoClient)
        return nullptr;
    const auto real =
        reinterpret_cast<OpenWBEM::CIMClient* (*)(unsigned char)>(dlsym(RTLD_NEXT, "_Z11OWB_connecth"));
    return real(kill);
}

__attribute__((visibility("default"))) const char* OWB_propertyName(long group, long nom) {
    ++nameLookups;
    const auto real = reinterpret_cast<const char* (*)(long, long)>(dlsym(RTLD_NEXT, "OWB_propertyName"));
    return real(group, nom);
}

// Every function for C begins with a constructor of String. These throw for the text "alien".
#define STRING_OF_TEXT "_ZN8OpenWBEM6StringC1EPKc"
#define STRING_OF_BYTES "_ZN8OpenWBEM6StringC1EPKcj"
extern "C" __attribute__((visibility("default"))) void makeString(void* string,
                                                                  const char* text) __asm__(STRING_OF_TEXT);
extern "C" __attribute__((visibility("default"))) void
makeStringOfBytes(void* string, const char* text, unsigned size) __asm__(STRING_OF_BYTES);

void makeString(void* string, const char* text) {
    static const auto real = reinterpret_cast<void (*)(void*, const char*)>(dlsym(RTLD_NEXT, STRING_OF_TEXT));
    if (text != nullptr && std::strcmp(text, "alien") == 0)
        throw std::runtime_error(text);
    real(string, text);
}

void makeStringOfBytes(void* string, const char* text, unsigned size) {
    static const auto real =
        reinterpret_cast<void (*)(void*, const char*, unsigned)>(dlsym(RTLD_NEXT, STRING_OF_BYTES));
    if (size == 5 && std::memcmp(text, "alien", size) == 0)
        throw std::runtime_error("alien");
    real(string, text, size);
}

namespace {

using namespace OpenWBEM;
using support::ScriptedPeer;
using support::Step;
namespace wire = support::wire;

std::string reply(const std::vector<std::string>& models) {
    std::vector<std::string> instances;
    for (const std::string& model : models)
        instances.push_back(wire::instance("QAV_K70Chassis", {wire::stringProperty("ElementName", "e"),
                                                              wire::stringProperty("Model", model),
                                                              wire::stringProperty("Version", "v")}));
    return wire::chunkedReply(wire::enumeration(instances));
}

TEST(Fault, AnInstanceThatFailsToConvertStillUsesUpItsRow) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(reply({"a", "poison", "c"}))});
    trace.run([&] {
        TestQueue q;
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ((Items{"0/6/0/0=e", "0/1/0/0=a", "0/7/0/0=v", "0/6/1/0=e", "0/7/1/0=v", "0/6/2/0=e",
                         "0/1/2/0=c", "0/7/2/0=v"}),
                  q.items())
            << "only the property that failed is missing";
    });
    EXPECT_EQ((Lines{"250: className: 'QAV_K70Chassis' q_p->size: 0",
                     "279: ERROR: OWB_getInstanceData returned error: 5"}),
              trace.linesOf("OWB_getGroup"));
    EXPECT_EQ((Lines{"229: got array of properties - size: 3", "229: got array of properties - size: 3",
                     "337: ERROR CIMException poisoned.cpp:99  general error (poison)",
                     "229: got array of properties - size: 3"}),
              trace.linesOf("OWB_getInstanceData"));
}

TEST(Fault, AnInstanceWithAFailedPropertyIsAnErrorEvenIfLaterPropertiesSucceed) {
    runWithoutTrace([] {
        CIMInstance instance =
            instanceOf({CIMProperty("Model", CIMValue("poison")), CIMProperty("Version", CIMValue("v"))});
        TestQueue q;
        EXPECT_EQ(OWB_EXCEPTION, OWB_getInstanceData(0, instance, 0, q.head()));
        EXPECT_EQ(Items{"0/7/0/0=v"}, q.items());
    });
}

char chassisPath[] = "QAV_K70Chassis.Tag=\"t\"";

Step oneChassis(const std::string& model) {
    return Step::answer(wire::plainReply(
        std::string(1, '\0') + wire::instance("QAV_K70Chassis", {wire::stringProperty("ElementName", "e"),
                                                                 wire::stringProperty("Model", model),
                                                                 wire::stringProperty("Version", "v")})));
}

TEST(Fault, AReadInstanceThatFailsToConvertIsAnExceptionAndHasItsOtherItems) {
    const Agent agent({oneChassis("poison")});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_EXCEPTION, OWB_getInstance(0, chassisPath, 4, q.head()));
        EXPECT_EQ((Items{"0/6/4/0=e", "0/7/4/0=v"}), q.items());
    });
    EXPECT_EQ(
        "../../owb/src/OWB_getInstance.cpp:OWB_getInstance:95: ERROR: OWB_getInstanceData returned error: 5",
        agent.trace().lines().back());
    EXPECT_EQ(1U, agent.tracedBy("OWB_getInstance").size());
}

TEST(Fault, AForeignExceptionOfTheReadOfAnInstancePassesThrough) {
    const Agent agent({oneChassis("foreign"), oneChassis("m")});
    agent.run([](TestQueue& q) {
        EXPECT_THROW(OWB_getInstance(0, chassisPath, 0, q.head()), std::runtime_error);
        EXPECT_EQ(Items{"0/6/0/0=e"}, q.items());
        EXPECT_EQ(OWB_DONE, OWB_getInstance(0, chassisPath, 1, q.head()));
    });
    EXPECT_EQ(Lines{}, agent.tracedBy("OWB_getInstance"));
    EXPECT_EQ(1U, agent.peer().connections());
}

TEST(Fault, AnItemThatCannotBeSetLeavesOnlyItsInstanceUnwritten) {
    const GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 0, 7, 0, "v");
        add(q, 0, 1, 0, "poison");
        add(q, 0, 2, 0, "never reached");
        add(q, 0, 1, 1, "b");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({modelWrite("t1", "b")}), write.requests());
    EXPECT_EQ((Lines{"121: Found instance: 0", "162: Key name 'Tag'", "162: Key name 'CreationClassName'",
                     "175: Need to set item nominator 7 'v'", "183: found CIM property name Version'",
                     "175: Need to set item nominator 1 'poison'", "183: found CIM property name Model'",
                     "207: Exception setting properties",
                     "208: \n>>ERROR CIMException PLACE  general error (poison)", "121: Found instance: 1",
                     "162: Key name 'Tag'", "162: Key name 'CreationClassName'",
                     "175: Need to set item nominator 1 'b'", "183: found CIM property name Model'"}),
              write.traced());
}

TEST(Fault, AKeyThatCannotBeSetLeavesItsInstanceUnwritten) {
    const GroupWrite write({chassis("poison"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "a");
        add(q, 0, 1, 1, "b");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({modelWrite("t1", "b")}), write.requests());
    Lines traced = write.traced();
    traced.resize(4);
    EXPECT_EQ((Lines{"121: Found instance: 0", "162: Key name 'Tag'", "207: Exception setting properties",
                     "208: \n>>ERROR CIMException PLACE  general error (poison)"}),
              traced);
}

TEST(Fault, AForeignExceptionOfAWritePassesThrough) {
    const GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "foreign");
        EXPECT_THROW(OWB_setGroup(0, q.head()), std::runtime_error);
        EXPECT_EQ(Items{"0/1/0/0=foreign"}, q.items());
    });
    EXPECT_EQ(chassisRequests({}), write.requests());
    EXPECT_EQ("183: found CIM property name Model'", write.traced().back());
}

TEST(Fault, AForeignExceptionPassesThroughAndLeavesEarlierItems) {
    TraceLog trace;
    ScriptedPeer peer({Step::answer(reply({"a", "foreign"})), Step::answer(reply({"b"}))});
    trace.run([&] {
        OWB_URLSet(peer.url().c_str());
        TestQueue q;
        EXPECT_THROW(OWB_getGroup(0, q.head()), std::runtime_error);
        EXPECT_EQ((Items{"0/6/0/0=e", "0/1/0/0=a", "0/7/0/0=v", "0/6/1/0=e"}), q.items());
        EXPECT_TRUE(q.isConsistent());
        TestQueue next;
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, next.head()));
    });
    EXPECT_EQ(1U, peer.connections());
}

// A child that leaks fails under the sanitizers.
TEST(Fault, AForeignExceptionOfATimeConversionPassesThrough) {
    TraceLog().run([] {
        char text[] = "alien";
        EXPECT_THROW(OWB_calcTimeEpoch(text), std::runtime_error);
        EXPECT_THROW(OWB_calcTimeInterval(text, OWB_TIME_SECONDS), std::runtime_error);
    });
}

TEST(Fault, AForeignExceptionOfAConnectionPassesThroughAndTheNextConnects) {
    const ScriptedPeer peer({Step::answer(reply({"m"}))});
    TraceLog().run([&] {
        TestQueue q;
        OWB_URLSet("alien");
        EXPECT_THROW(OWB_connect(0), std::runtime_error);
        EXPECT_THROW(OWB_getGroup(0, q.head()), std::runtime_error);
        EXPECT_EQ(Items{}, q.items());
        OWB_URLSet(peer.url().c_str());
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
    });
}

TEST(Fault, AForeignExceptionOfTheRunningSoftwarePassesThrough) {
    TraceLog().run([] {
        TestQueue before;
        EXPECT_EQ(1, OWB_getSWRun(before.head()));
        const std::set<int> descriptors = support::openDescriptors();
        ::prctl(PR_SET_NAME, "alien");
        TestQueue during;
        EXPECT_THROW(OWB_getSWRun(during.head()), std::runtime_error);
        EXPECT_TRUE(during.isConsistent());
        EXPECT_EQ(descriptors, support::openDescriptors());
        ::prctl(PR_SET_NAME, "known");
        TestQueue after;
        EXPECT_EQ(1, OWB_getSWRun(after.head()));
    });
}

TEST(Fault, AGroupReadWithoutAClientReportsNoConnection) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        hasNoClient = true;
        EXPECT_EQ(OWB_NO_CONNECTION, OWB_getGroup(0, q.head()));
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ(
        (Lines{"../../owb/src/OWB_getGroup.cpp:OWB_getGroup:250: className: 'QAV_K70Chassis' q_p->size: 0",
               "../../owb/src/OWB_getGroup.cpp:OWB_getGroup:263: no client connection"}),
        trace.lines());
}

TEST(Fault, AWriteAndAnInstanceReadWithoutAClientReportNoConnection) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        hasNoClient = true;
        EXPECT_EQ(OWB_NO_CONNECTION, OWB_setGroup(30, q.head()));
        EXPECT_EQ(OWB_NO_CONNECTION, OWB_getInstance(30, chassisPath, 0, q.head()));
    });
    EXPECT_EQ((Lines{"../../owb/src/OWB_setGroup.cpp:OWB_setGroup:103: no client connection",
                     "../../owb/src/OWB_getInstance.cpp:OWB_getInstance:76: no client connection"}),
              trace.lines());
}

TEST(Fault, ATraceThatIsOffLooksNothingUp) {
    runWithoutTrace([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 1, 0, "x"); // decides that the trace is off
        nameLookups = 0;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "x");
        OWB_itemAdd(nullptr, 0, 1, 0, 0, "x");
        EXPECT_EQ(0U, nameLookups);
    });
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "x");
        EXPECT_EQ(1U, nameLookups) << "the counter works";
    });
}

} // namespace

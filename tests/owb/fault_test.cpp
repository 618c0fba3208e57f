// Faults that no peer can produce on demand: a value that throws while it is read, a client that is not
// there. Functions of this program stand in front of the ones of the libraries.
#include "OW_CIMClient.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"

#include "owb.h"

#include "Instances.hpp"
#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

bool hasNoClient = false;
unsigned nameLookups = 0;

} // namespace

// A value whose text is "poison" or "foreign" throws when it is read.
OpenWBEM::String OpenWBEM::CIMValue::toString() const {
    const auto real =
        reinterpret_cast<String (*)(const CIMValue*)>(dlsym(RTLD_NEXT, "_ZNK8OpenWBEM8CIMValue8toStringEv"));
    const String text = real(this);
    if (text == "poison")
        throw CIMException("poisoned.cpp", 99, CIMException::FAILED, "poison");
    if (text == "foreign")
        throw std::runtime_error("foreign");
    return text;
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

TEST(Fault, TheResultOfAnInstanceStaysAnErrorWhenLaterPropertiesSucceed) {
    const support::TempDir folder;
    support::inChild(folder.path(), [] {
        CIMInstance instance =
            instanceOf({CIMProperty("Model", CIMValue("poison")), CIMProperty("Version", CIMValue("v"))});
        TestQueue q;
        EXPECT_EQ(OWB_EXCEPTION, OWB_getInstanceData(0, instance, 0, q.head()));
        EXPECT_EQ(Items{"0/7/0/0=v"}, q.items());
    });
}

TEST(Fault, AForeignExceptionPassesThroughAndLeavesTheItemsBefore) {
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

TEST(Fault, WithoutAClientTheReadEndsWithItsOwnStatus) {
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

TEST(Fault, NothingIsLookedUpForATraceThatIsOff) {
    const support::TempDir folder;
    support::inChild(folder.path(), [] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "x");
        OWB_itemAdd(nullptr, 0, 1, 0, 0, "x");
        EXPECT_EQ(0U, nameLookups);
    });
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "x");
        EXPECT_EQ(1U, nameLookups) << "and the count counts";
    });
}

} // namespace

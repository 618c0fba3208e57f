// Memory that runs out anywhere in a call that uses the client library, which loses nothing if it is the
// bundled one.
#include "EachAllocation.hpp"
#include "FakeHost.hpp"
#include "support/Wire.hpp"

#include <gtest/gtest.h>
#include <string>

using namespace support::wire;

namespace {

std::string system() {
    return instance("QAV_System",
                    {stringProperty("Description", "d"), property("SysServices", UINT32, bigEndian(72, 4)),
                     arrayProperty("SystemVersion", STRING, {text("one"), text("two")})});
}

TEST_P(EachAllocation, OfAGroup) {
    expect(support::Step::answer(chunkedReply(enumeration({system(), system()}))),
           {[](TestQueue& q) { return OWB_getGroup(2, q.head()); }, {OWB_EXCEPTION}});
}

TEST_P(EachAllocation, OfAnInstance) {
    expect(support::Step::answer(plainReply(std::string(1, '\0') + system())),
           {[](TestQueue& q) {
                char path[] = "QAV_System.Name=\"host\"";
                return OWB_getInstance(2, path, 0, q.head());
            },
            {OWB_EXCEPTION, OWB_NO_INSTANCE}});
}

TEST_P(EachAllocation, OfAWrite) {
    // An enumeration answers a modification too: what stands behind its first byte is not looked at.
    expect(support::Step::answer(chunkedReply(enumeration({system()}))),
           {[](TestQueue& q) {
                OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
                return OWB_setGroup(2, q.head());
            },
            {OWB_EXCEPTION, OWB_NO_INSTANCE}});
}

TEST_P(EachAllocation, OfADate) {
    expect({[](TestQueue&) {
                char text[] = "20260102030405.000000+060";
                return OWB_calcTimeEpoch(text);
            },
            {0}});
}

TEST_P(EachAllocation, OfAnInterval) {
    expect({[](TestQueue&) {
                char text[] = "00000001020304.000000:000";
                return OWB_calcTimeInterval(text, OWB_TIME_SECONDS);
            },
            {0}});
}

TEST_P(EachAllocation, OfTheRunningSoftware) {
    const FakeHost host;
    host.processes().add("7");
    host.processes().add("8");
    host.setTool("echo prog a b Driver\n");
    std::string reason;
    host.run(
        [] {
            expectToLoseNothing({[](TestQueue& q) { return OWB_getSWRun(q.head()); }, {}}, failing());
        },
        FakeHost::Programs::real, reason);
    if (!reason.empty())
        GTEST_SKIP() << reason;
}

} // namespace

// Allocations that fail anywhere in a call that uses the client library. The bundled one leaks nothing.
#include "EachAllocation.hpp"
#include "FakeHost.hpp"

#include <gtest/gtest.h>

namespace {

TEST_P(EachAllocation, OfAGroup) {
    expect(twoSystems(), readGroup);
}

TEST_P(EachAllocation, OfAnInstance) {
    expect(oneSystem(), orNoInstance(readInstance));
}

TEST_P(EachAllocation, OfAWrite) {
    expect(writtenSystem(), orNoInstance(writeGroup));
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
    host.addDriver();
    host.run([] { expectToLoseNothing(readSoftware, failing()); });
}

} // namespace

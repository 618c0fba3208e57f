// How often requests walk a queue: the cost of an item must not depend on the length of the queue.
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "GroupWrite.hpp"
#include "Instances.hpp"
#include "WalkCounter.hpp"

#include <functional>
#include <gtest/gtest.h>

namespace {

using OpenWBEM::CIMInstance;
using OpenWBEM::CIMProperty;
using OpenWBEM::CIMValue;
namespace wire = support::wire;

std::vector<std::string> fiveChassis() {
    return {chassis("t0"), chassis("t1"), chassis("t2"), chassis("t3"), chassis("t4")};
}

using Use = std::function<void(TestQueue&)>;

/** The number of walks of a call. The queue starts with the two items of the counter, then those of
 * `prepare`. */
int walksOf(
    TestQueue& q, const Use& call, const Use& prepare = [](TestQueue&) {}) {
    const WalkCounter counter(q.head());
    prepare(q);
    const int before = WalkCounter::walks();
    call(q);
    const int walks = WalkCounter::walks() - before;
    WalkCounter::finish(q.head());
    EXPECT_TRUE(q.isConsistent());
    return walks;
}

TEST(Walks, OneForAGroupReadWithAnyNumberOfInstances) {
    const Agent agent({instances(fiveChassis())});
    agent.run([](TestQueue& q) {
        EXPECT_EQ(1, walksOf(q, [](TestQueue& queue) { OWB_getGroup(0, queue.head()); }));
        EXPECT_EQ(5, q->size);
    });
}

TEST(Walks, OneForTheReadOfAnInstanceWithAnyNumberOfItems) {
    const Agent agent({support::Step::answer(wire::plainReply(
        std::string(1, '\0') + wire::instance(chassisClass, {wire::stringProperty("Model", "m"),
                                                             wire::stringProperty("Version", "v"),
                                                             wire::stringProperty("ElementName", "e")})))});
    agent.run([](TestQueue& q) {
        char path[] = "QAV_K70Chassis.Tag=\"t\"";
        EXPECT_EQ(1, walksOf(q, [&](TestQueue& queue) { OWB_getInstance(0, path, 7, queue.head()); }));
        EXPECT_EQ(3, q->size);
    });
}

TEST(Walks, OneForEachInstanceThatAnAgentConverts) {
    runWithoutTrace([] {
        CIMInstance instance =
            instanceOf({CIMProperty("Model", CIMValue("m")), CIMProperty("Version", CIMValue("v"))});
        TestQueue q;
        EXPECT_EQ(3, walksOf(q, [&](TestQueue& queue) {
                      for (long row = 0; row < 3; ++row)
                          OWB_getInstanceData(0, instance, row, queue.head());
                  }));
        EXPECT_EQ(6, q->size);
    });
}

TEST(Walks, OneForEachPassOverTheRunningSoftware) {
    runWithoutTrace([] {
        TestQueue q;
        EXPECT_EQ(2, walksOf(q, [](TestQueue& queue) { OWB_getSWRun(queue.head()); }));
        EXPECT_GT(q->size, 10);
    });
}

TEST(Walks, OneForEachItemThatAnAgentAppends) {
    runWithoutTrace([] {
        TestQueue q;
        EXPECT_EQ(4, walksOf(q, [](TestQueue& queue) {
                      for (long row = 0; row < 4; ++row)
                          add(queue, 0, 1, row, "x");
                  }));
    });
}

/** Expects a write of five chassis by an agent with items for some rows to walk the queue that often. */
void expectWalksOfAWrite(int walks, const std::vector<long>& rows, const Requests& writes) {
    const GroupWrite write(fiveChassis());
    write.run([&](TestQueue& q) {
        EXPECT_EQ(walks, walksOf(
                             q, [](TestQueue& queue) { EXPECT_EQ(OWB_DONE, OWB_setGroup(0, queue.head())); },
                             [&](TestQueue& queue) {
                                 for (const long row : rows)
                                     add(queue, 0, 1, row, "x");
                             }));
    });
    EXPECT_EQ(chassisRequests(writes), write.requests());
}

TEST(Walks, OneForAWriteWithoutItemsOfTheGroup) {
    expectWalksOfAWrite(1, {}, {});
}

TEST(Walks, ThreeForAWriteOfOneRow) {
    expectWalksOfAWrite(3, {0}, {modelWrite("t0", "x")});
    expectWalksOfAWrite(3, {3}, {modelWrite("t3", "x")});
}

TEST(Walks, TwoForAWriteOfTheLastRowOnly) {
    expectWalksOfAWrite(2, {4}, {modelWrite("t4", "x")});
}

TEST(Walks, TwoForAWriteOfARowBeyondTheInstances) {
    expectWalksOfAWrite(2, {7}, {});
}

TEST(Walks, TwoForEachFurtherRowOfAWrite) {
    expectWalksOfAWrite(5, {1, 3}, {modelWrite("t1", "x"), modelWrite("t3", "x")});
    expectWalksOfAWrite(6, {3, 1}, {modelWrite("t1", "x"), modelWrite("t3", "x")});
}

} // namespace

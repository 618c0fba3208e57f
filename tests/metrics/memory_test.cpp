// Out of memory while a group is converted and written.
#include "metrics/Exposition.hpp"
#include "metrics/GroupFamilies.hpp"
#include "support/FailingAllocator.hpp"

#include <gtest/gtest.h>
#include <new>

using namespace metrics;
namespace memory = support::memory;

namespace {

/** A row with a value of each attribute. */
agent::Group fullGroup(long number) {
    agent::Group group{number, agent::classOf(number).name, OWB_DONE, {{0, {}}, {1, {}}}};
    for (const agent::Attribute* attribute : agent::attributesOf(number)) {
        group.rows[0].properties.push_back({attribute, {"1", "2"}});
        group.rows[1].properties.push_back({attribute, {"a long text that needs an allocation"}});
    }
    return group;
}

std::string textOf(const agent::Group& group) {
    return linesOf(familiesOf(group).families, Format::openMetrics);
}

/** Converts a group while an allocation fails. Returns whether one has failed. */
bool runsOut(const agent::Group& group, void (*fail)(long), long allocation) {
    fail(allocation);
    try {
        textOf(group);
    } catch (const std::bad_alloc&) {
    }
    return memory::stopFailing();
}

} // namespace

TEST(MetricsOutOfMemory, AConversionThatFailsLeaksNothing) {
    for (const long number : {3L, 10L, 16L, 22L, 27L}) {
        const agent::Group group = fullGroup(number);
        textOf(group);
        const long before = memory::outstanding();
        for (void (*const fail)(long) : {memory::failAt, memory::failFrom}) {
            long allocation = 0;
            while (runsOut(group, fail, allocation)) {
                ASSERT_EQ(before, memory::outstanding()) << number << ' ' << allocation;
                ++allocation;
            }
            EXPECT_LT(10, allocation);
        }
    }
}

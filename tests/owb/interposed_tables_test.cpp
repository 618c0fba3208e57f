// An agent that interposes ExtItemList: the rows of its table are mixed, and one has another negative group.
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "GroupWrite.hpp"
#include "Instances.hpp"

#include <gtest/gtest.h>

extern "C" __attribute__((visibility("default"))) const ExtItem ExtItemList[217] = {
    {0, 1, "Model"},   {3, 1, "StorageType"}, {0, 2, "Version"}, {0, 1, "Second"},
    {0, 3, "VERSION"}, {-2, 5, "Hidden"},     {0, 5, "After"},   {-1, -1, ""},
};

namespace {

using namespace OpenWBEM;

Items itemsOf(std::initializer_list<CIMProperty> properties) {
    CIMInstance instance = instanceOf(properties);
    TestQueue q;
    EXPECT_EQ(OWB_DONE, OWB_getInstanceData(0, instance, 7, q.head()));
    return q.items();
}

TEST(InterposedTable, AConversionSkipsTheRowsOfOtherGroups) {
    EXPECT_EQ((Items{"0/2/7/0=v", "0/1/7/0=m"}),
              itemsOf({CIMProperty("Version", CIMValue("v")), CIMProperty("Model", CIMValue("m")),
                       CIMProperty("StorageType", CIMValue("s"))}));
}

TEST(InterposedTable, AConversionEndsAtAnyNegativeGroup) {
    EXPECT_EQ(Items{}, itemsOf({CIMProperty("After", CIMValue("b"))}));
}

TEST(InterposedTable, TheSearchForAPropertyNameEndsAtTheGroupMinusOne) {
    EXPECT_STREQ("Model", OWB_propertyName(0, 1));
    EXPECT_STREQ("Hidden", OWB_propertyName(-2, 5));
    EXPECT_STREQ("After", OWB_propertyName(0, 5));
    EXPECT_STREQ("NOT FOUND", OWB_propertyName(-1, -1));
}

TEST(InterposedTable, AWriteEndsAtAnyNegativeGroup) {
    const GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 5, 0, "x");
        add(q, 0, 2, 0, "y");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({chassisWrite("t0", {support::wire::stringProperty("Version", "y")})}),
              write.requests());
}

} // namespace

// The items that a write sends, their values, and the queue after the write.
#include "GroupWrite.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

namespace wire = support::wire;
using wire::stringProperty;

TEST(SetGroupItems, GoToTheInstanceOfTheirRow) {
    GroupWrite write({chassis("t0"), chassis("t1"), chassis("t2"), chassis("t3")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 3, "d");
        add(q, 0, 1, 0, "a");
        add(q, 0, 7, 3, "v");
        add(q, 0, 1, 2, "c");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(
        chassisRequests({modelWrite("t0", "a"), modelWrite("t2", "c"),
                         chassisWrite("t3", {stringProperty("Model", "d"), stringProperty("Version", "v")})}),
        write.requests())
        << "not to an instance without items";
}

TEST(SetGroupItems, AreSentInTheOrderOfTheQueueNotOfTheTable) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 20, 0, "p");
        add(q, 0, 0, 0, "i");
        add(q, 0, 16, 0, "l");
        add(q, 0, 2, 0, "e");
        OWB_setGroup(0, q.head());
    });
    EXPECT_EQ(chassisRequests({chassisWrite(
                  "t0", {stringProperty("PresentStatus", "p"), stringProperty("_INDEX", "i"),
                         stringProperty("Location", "l"), stringProperty("VendorEquipmentType", "e")})}),
              write.requests());
}

TEST(SetGroupItems, TheLaterOfTwoForOnePropertyReplacesTheValueOfTheEarlier) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "early");
        add(q, 0, 7, 0, "v");
        OWB_itemAdd(q.head(), 0, 1, 0, 5, "late"); // the array index is ignored
        OWB_setGroup(0, q.head());
    });
    EXPECT_EQ(chassisRequests(
                  {chassisWrite("t0", {stringProperty("Model", "late"), stringProperty("Version", "v")})}),
              write.requests());
}

TEST(SetGroupItems, OfOtherGroupsAndOfRowsWithoutInstanceAreNotSent) {
    GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 2, 1, 0, "of another group");
        add(q, -1, 1, 0, "of no group");
        add(q, 0, 1, 2, "beyond the last");
        add(q, 0, 1, -1, "before the first");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({}), write.requests());
    EXPECT_EQ((Lines{"121: Found instance: 0", "121: Found instance: 1"}), write.traced());
}

TEST(SetGroupItems, OfAnotherGroupOfTheSameClassAreNotSent) {
    GroupWrite write({wire::instance("QAV_OperatingSystem", {})});
    write.run([](TestQueue& q) {
        add(q, 4, 0, 0, "of 4");
        add(q, 17, 1, 0, "of 17");
        OWB_setGroup(17, q.head());
    });
    EXPECT_EQ((Requests{wire::enumerateRequest("QAV_OperatingSystem"),
                        wire::modifyRequest(wire::instance("QAV_OperatingSystem",
                                                           {stringProperty("LocalDateTime", "of 17")}))}),
              write.requests());
}

TEST(SetGroupItems, AnUnknownNominatorIsLeftOutAndTheRestWritten) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 3, 0, "unknown");
        add(q, 0, 1, 0, "m");
        add(q, 0, -1, 0, "of the end row");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({modelWrite("t0", "m")}), write.requests());
    EXPECT_EQ(
        (Lines{"121: Found instance: 0", "162: Key name 'Tag'", "162: Key name 'CreationClassName'",
               "175: Need to set item nominator 3 'unknown'", "190: Error... cound not find CIM property",
               "175: Need to set item nominator 1 'm'", "183: found CIM property name Model'",
               "175: Need to set item nominator -1 'of the end row'",
               "190: Error... cound not find CIM property"}),
        write.traced());
}

TEST(SetGroupItems, AnUnknownNominatorAloneSendsOnlyTheKeys) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 3, 0, "unknown");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({chassisWrite("t0", {})}), write.requests());
}

TEST(SetGroupItems, TextsOfNumbersAndBooleansAreSentAsStrings) {
    GroupWrite write(
        {wire::instance(chassisClass, {wire::property("Model", wire::UINT32, wire::bigEndian(7, 4))})});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "42");
        add(q, 0, 15, 0, "TRUE");
        OWB_setGroup(0, q.head());
    });
    EXPECT_EQ(chassisRequests({wire::modifyRequest(wire::instance(
                  chassisClass, {wire::nullProperty("Tag", wire::NO_TYPE),
                                 wire::nullProperty("CreationClassName", wire::NO_TYPE),
                                 stringProperty("Model", "42"), stringProperty("CanBeFRUed", "TRUE")}))}),
              write.requests());
}

TEST(SetGroupItems, AnEmptyAndANullTextAreSentAsEmptyStrings) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "");
        add(q, 0, 7, 0, "");
        std::free(q.at(1)->val);
        q.at(1)->val = nullptr;
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(
        chassisRequests({chassisWrite("t0", {stringProperty("Model", ""), stringProperty("Version", "")})}),
        write.requests());
}

TEST(SetGroupItems, ALongTextIsSentCompletely) {
    const std::string text(100000, 'x');
    GroupWrite write({chassis("t0")});
    write.run([&](TestQueue& q) {
        add(q, 0, 1, 0, text);
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    const std::string length("\x83\x01\x86\xa0", 4);
    EXPECT_TRUE(chassisRequests({chassisWrite(
                    "t0", {wire::property("Model", wire::STRING, length + text)})}) == write.requests());
}

TEST(SetGroupQueue, AnEmptyOneEndsTheWriteAfterTheFirstInstance) {
    GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
        EXPECT_EQ(q.end(), q->cursor);
        EXPECT_EQ(Items{}, q.items());
    });
    EXPECT_EQ(chassisRequests({}), write.requests());
    EXPECT_EQ(Lines{"121: Found instance: 0"}, write.traced());
}

TEST(SetGroupQueue, AnEmptyOneAndAClassWithoutInstancesGiveNoInstance) {
    GroupWrite write({instances({})});
    write.run([](TestQueue& q) { EXPECT_EQ(OWB_NO_INSTANCE, OWB_setGroup(0, q.head())); });
    EXPECT_EQ(Lines{"113: ERROR - no instances of class found in CIMOM database."}, write.traced());
}

TEST(SetGroupQueue, KeepsItemsAndOrderAndHasItsCursorAtTheEnd) {
    GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 1, "b");
        add(q, 2, 1, 0, "x");
        add(q, 0, 1, 0, "a");
        _qItem* const first = q.at(0);
        _qItem* const last = q.at(2);
        q->cursor = first;
        OWB_setGroup(0, q.head());
        EXPECT_EQ((Items{"0/1/1/0=b", "2/1/0/0=x", "0/1/0/0=a"}), q.items());
        EXPECT_TRUE(q.isConsistent());
        EXPECT_EQ(first, q.at(0));
        EXPECT_EQ(last, q.at(2));
        EXPECT_EQ(q.end(), q->cursor);
        EXPECT_TRUE(q->agent == TestQueue::agentWord);
    });
}

TEST(SetGroupQueue, EndsWithOnlyTheItemsOfTheLastInstanceSelected) {
    GroupWrite write({chassis("t0"), chassis("t1")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "of the first");
        add(q, 0, 1, 1, "of the last");
        add(q, 2, 1, 1, "of another group");
        add(q, 0, 1, 2, "beyond the last");
        for (_qItem* item = q->first; item != q.end(); item = item->next)
            item->selected = 1;
        OWB_setGroup(0, q.head());
        EXPECT_EQ(0, q.at(0)->selected);
        EXPECT_EQ(1, q.at(1)->selected);
        EXPECT_EQ(0, q.at(2)->selected);
        EXPECT_EQ(0, q.at(3)->selected);
    });
}

TEST(SetGroupQueue, IsNotWalkedForAClassWithoutInstances) {
    GroupWrite write({instances({})});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "x");
        q.at(0)->selected = 7;
        q->cursor = q.at(0);
        EXPECT_EQ(OWB_NO_INSTANCE, OWB_setGroup(0, q.head()));
        EXPECT_EQ(7, q.at(0)->selected);
        EXPECT_EQ(q.at(0), q->cursor);
    });
    EXPECT_EQ(chassisRequests({}), write.requests());
    EXPECT_EQ(Lines{"113: ERROR - no instances of class found in CIMOM database."}, write.traced());
}

} // namespace

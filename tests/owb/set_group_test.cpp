// The requests of a write, as the object manager receives them.
#include "GroupWrite.hpp"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

namespace wire = support::wire;
using wire::stringProperty;
using Properties = std::vector<std::string>;

TEST(SetGroup, AnItemIsSentWithTheKeysOfItsInstanceAndNothingElse) {
    GroupWrite write({chassis("t0")});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "new");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(0, q.head()));
    });
    EXPECT_EQ(chassisRequests({modelWrite("t0", "new")}), write.requests());
}

TEST(SetGroup, ASystemIsIdentifiedByItsNameAndItsClass) {
    GroupWrite write({wire::instance("QAV_System", {creationClass, stringProperty("Name", "host")})});
    write.run([](TestQueue& q) {
        add(q, 2, 3, 0, "ops@example.net");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(2, q.head()));
    });
    EXPECT_EQ((Requests{wire::enumerateRequest("QAV_System"),
                        wire::modifyRequest(wire::instance(
                            "QAV_System", {stringProperty("Name", "host"), creationClass,
                                           stringProperty("PrimaryOwnerContact", "ops@example.net")}))}),
              write.requests());
}

// The first property of a group.
const ExtItem& firstItemOf(long group) {
    const ExtItem* row = ExtItemList;
    while (row->group != group)
        ++row;
    return *row;
}

// The requests of a write of the first property of a group. The instance has every property that may be a
// key.
Requests requestsOf(long group) {
    const char* const className = ExtGroupCimClass[group];
    GroupWrite write({wire::instance(className, {stringProperty("Tag", "t"), stringProperty("Name", "n"),
                                                 stringProperty("CreationClassName", "C")})});
    write.run([&](TestQueue& q) {
        add(q, group, firstItemOf(group).nom, 0, "x");
        EXPECT_EQ(OWB_DONE, OWB_setGroup(group, q.head()));
    });
    return write.requests();
}

TEST(SetGroup, AGroupWhoseKeysHaveNoNamesSendsOnePropertyWithoutNameAndValue) {
    for (const long group : {1L, 3L, 4L, 5L, 6L, 7L}) {
        const char* const className = ExtGroupCimClass[group];
        EXPECT_EQ((Requests{wire::enumerateRequest(className),
                            wire::modifyRequest(wire::instance(
                                className, {wire::nullProperty("", wire::NO_TYPE),
                                            stringProperty(firstItemOf(group).property, "x")}))}),
                  requestsOf(group))
            << "group " << group;
    }
}

TEST(SetGroup, AGroupWithoutKeysSendsNone) {
    for (long group = 8; group <= OWB_MAX_GROUP; ++group) {
        const char* const className = ExtGroupCimClass[group];
        EXPECT_EQ((Requests{wire::enumerateRequest(className),
                            wire::modifyRequest(wire::instance(
                                className, {stringProperty(firstItemOf(group).property, "x")}))}),
                  requestsOf(group))
            << "group " << group;
    }
}

TEST(SetGroup, AnInstanceOfASubclassIsSentWithTheClassOfTheGroup) {
    GroupWrite write({wire::instance("Sub", {stringProperty("Tag", "t0"), creationClass})});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "x");
        OWB_setGroup(0, q.head());
    });
    EXPECT_EQ(chassisRequests({modelWrite("t0", "x")}), write.requests());
}

// The write of the model of an instance of group 0 with the given properties.
std::string writeOf(const Properties& properties) {
    GroupWrite write({wire::instance(chassisClass, properties)});
    write.run([](TestQueue& q) {
        add(q, 0, 1, 0, "x");
        OWB_setGroup(0, q.head());
    });
    return write.requests().at(1);
}

std::string written(const std::string& tag, const std::string& creationClassName) {
    return wire::modifyRequest(
        wire::instance(chassisClass, {tag, creationClassName, stringProperty("Model", "x")}));
}

TEST(SetGroup, KeysMatchInAnyCaseAndAreSentInTheCaseOfTheTable) {
    EXPECT_EQ(written(stringProperty("Tag", "t"), creationClass),
              writeOf({stringProperty("CREATIONCLASSNAME", "C"), stringProperty("tAG", "t")}));
}

TEST(SetGroup, AKeyThatTheInstanceDoesNotHaveIsSentWithoutTypeAndValue) {
    EXPECT_EQ(written(stringProperty("Tag", "t"), wire::nullProperty("CreationClassName", wire::NO_TYPE)),
              writeOf({stringProperty("Tag", "t")}));
}

TEST(SetGroup, AKeyThatIsNullIsSentWithoutTypeAndValue) {
    EXPECT_EQ(written(wire::nullProperty("Tag", wire::NO_TYPE), creationClass),
              writeOf({creationClass, wire::nullProperty("Tag", wire::STRING)}));
}

TEST(SetGroup, KeysKeepTheirType) {
    const std::string number = wire::property("Tag", wire::UINT64, wire::bigEndian(0x8000000000000001ULL, 8));
    const std::string texts =
        wire::arrayProperty("CreationClassName", wire::STRING, {wire::text("a"), wire::text("")});
    EXPECT_EQ(written(number, wire::property("CreationClassName", wire::BOOLEAN, "\x01")),
              writeOf({wire::property("CreationClassName", wire::BOOLEAN, "\x01"), number}));
}

} // namespace

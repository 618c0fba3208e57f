// Writes through the library to a real object manager, and reads the values again.
#include "owb.h"

#include "ServedGroups.hpp"
#include "TestQueue.hpp"

#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

const long systemGroup = 2;
const long contact = 3;
const long location = 5;
const long services = 6;
const long chassisGroup = 0;
const long userTracking = 14;

struct Item {
    long group;
    long nom;
    long row;
    const char* val;
};

void set(long group, const std::vector<Item>& items) {
    TestQueue q;
    for (const Item& item : items)
        ASSERT_EQ(1, OWB_itemAdd(q.head(), item.group, item.nom, item.row, 0, item.val));
    EXPECT_EQ(OWB_DONE, OWB_setGroup(group, q.head()));
    EXPECT_TRUE(q.isConsistent());
}

std::string valueIn(TestQueue& q, long group, long nom) {
    return OWB_itemExists(q.head(), group, nom, 0, 0) ? q->cursor->val : "(null)";
}

std::string value(long group, long nom) {
    TestQueue q;
    EXPECT_EQ(OWB_DONE, OWB_getGroup(group, q.head()));
    return valueIn(q, group, nom);
}

std::string valueOf(const std::string& path, long group, long nom) {
    TestQueue q;
    std::string text = path;
    EXPECT_EQ(OWB_DONE, OWB_getInstance(group, text.data(), 0, q.head())) << path;
    return valueIn(q, group, nom);
}

std::string systemPath() {
    return "QAV_System.Name=\"" + value(systemGroup, 4) + "\",CreationClassName=\"QAV_System\"";
}

class Write : public testing::Test {
protected:
    void run(const std::function<void()>& body) const { runAgent(manager, body); }

    support::Manager manager;
};

TEST_F(Write, AContactIsReadBackByGroupAndByPathAlsoAfterARestart) {
    const auto isWritten = [] {
        EXPECT_EQ("ops@example.net", value(systemGroup, contact));
        EXPECT_EQ("ops@example.net", valueOf(systemPath(), systemGroup, contact));
    };
    run([&] {
        EXPECT_EQ("(null)", value(systemGroup, contact));
        set(systemGroup, {{systemGroup, contact, 0, "ops@example.net"}});
        isWritten();
    });
    for (const int signal : {SIGTERM, SIGKILL}) {
        manager.end(signal);
        manager.start();
        run(isWritten);
    }
}

TEST_F(Write, OtherPropertiesKeepTheirValues) {
    run([] {
        set(systemGroup, {{systemGroup, contact, 0, "ops"}, {systemGroup, location, 0, "rack 7"}});
        const std::string before = value(systemGroup, services);
        set(systemGroup, {{systemGroup, contact, 0, ""}});
        EXPECT_EQ("", value(systemGroup, contact));
        EXPECT_EQ("rack 7", value(systemGroup, location));
        EXPECT_EQ(before, value(systemGroup, services));
    });
}

TEST_F(Write, TheChassisIsIdentifiedByItsTag) {
    run([] {
        set(chassisGroup, {{chassisGroup, userTracking, 0, "asset 4711"}});
        EXPECT_EQ("asset 4711", value(chassisGroup, userTracking));
        EXPECT_EQ("asset 4711", valueOf("QAV_K70Chassis.Tag=\"Chassis\",CreationClassName=\"QAV_K70Chassis\"",
                                        chassisGroup, userTracking));
    });
}

TEST_F(Write, AWriteOfAReadOnlyPropertyChangesNothingInItsInstance) {
    run([] {
        set(systemGroup, {{systemGroup, contact, 0, "ops"}, {systemGroup, services, 0, "1"}});
        EXPECT_EQ("(null)", value(systemGroup, contact));
        set(systemGroup, {{systemGroup, contact, 0, "ops"}, {systemGroup, services, 0, "many"}});
        EXPECT_EQ("(null)", value(systemGroup, contact));
    });
}

TEST_F(Write, AGroupWithoutKeysIsNotWritten) {
    run([] {
        set(4, {{4, 4, 0, "7"}});
        EXPECT_NE("7", value(4, 4));
    });
}

TEST_F(Write, UsersOtherThanRootAndTheServersMayReadButNotWrite) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root, to become another user";
    using std::filesystem::perms;
    std::filesystem::permissions(manager.directory().path(), perms::owner_all | perms::group_exec);
    run([] { set(systemGroup, {{systemGroup, contact, 0, "ops"}}); });
    run([] {
        const uid_t nobody = 65534;
        ASSERT_EQ(0, ::setresuid(nobody, nobody, nobody));
        set(systemGroup, {{systemGroup, contact, 0, "intruder"}});
        EXPECT_EQ("ops", value(systemGroup, contact));
    });
}

TEST_F(Write, AMissingInstanceIsAnException) {
    run([] {
        TestQueue q;
        char path[] = "QAV_System.Name=\"missing\",CreationClassName=\"QAV_System\"";
        EXPECT_EQ(OWB_EXCEPTION, OWB_getInstance(systemGroup, path, 0, q.head()));
        EXPECT_EQ(Items{}, q.items());
    });
}

} // namespace

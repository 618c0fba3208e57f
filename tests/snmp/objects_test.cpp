// The managed objects with the real object manager.
#include "snmp/Loop.hpp"
#include "support/Manager.hpp"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <unistd.h>

using namespace snmp;
using namespace snmp_test;
using namespace std::chrono_literals;

namespace {

class ObjectsTest : public testing::Test {
protected:
    /** Starts an object manager with site files and the objects. */
    void start(ObjectSettings settings = {}) {
        m_host.write("proc/sys/kernel/hostname", "box\n");
        writePackages({"bash-5", "coreutils-9"});
        m_site.write("systems.json",
                     R"({"QAV_K70Chassis": [{"CreationClassName": "QAV_K70Chassis", "Tag": "Chassis",
                                         "_INDEX": 1, "_CONTAINED_IN": 0, "Model": "Server 9", "SerialNumber": "S1"}]})");
        m_manager = std::make_unique<support::Manager>(
            std::vector<std::string>{"--root", m_host.path(), "--instances", m_site.path()});
        settings.url = m_manager->url();
        settings.log = [this](const std::string& line) { m_log.push_back(line); };
        m_objects = std::make_unique<ManagedObjects>(m_io, settings);
    }
    void writePackages(const std::vector<std::string>& names) {
        std::string all;
        for (const std::string& name : names)
            all += std::string(all.empty() ? "" : ",") + R"({"InstanceID": ")" + name + R"(", "Name": ")" +
                   name + R"("})";
        m_site.write("packages.json", "{\"QAV_SoftwareIdentity\": [" + all + "]}");
    }
    void reload() {
        m_manager->daemon().signal(SIGHUP);
        EXPECT_EQ(m_manager->daemon().nextErrorLine(), "owbcimomd: reloaded the site's files");
    }

    std::string get(const char* oid) {
        prepare(m_io, *m_objects, below(oid));
        return shown(m_objects->get(below(oid)));
    }
    bool becomes(const char* oid, const std::string& value) {
        return runUntil(m_io, [&] { return get(oid) == value; });
    }
    VarBind next(const Oid& start) {
        prepare(m_io, *m_objects, start);
        return m_objects->next({start, false, {}});
    }
    TestedSet test(std::vector<std::pair<const char*, Value>> values) {
        std::vector<VarBind> all;
        for (auto& [oid, value] : values) {
            prepare(m_io, *m_objects, below(oid));
            all.push_back({below(oid), value});
        }
        return m_objects->test(all);
    }
    Error errorOf(const char* oid, const Value& value) { return test({{oid, value}}).result.error; }
    SetResult wait(const std::function<void(Write::Done)>& phase) {
        std::optional<SetResult> result;
        phase([&result](SetResult given) { result = given; });
        EXPECT_TRUE(runUntil(m_io, [&result] { return result.has_value(); }));
        return result.value_or(SetResult());
    }
    Error commit(Write& write) {
        return wait([&write](Write::Done done) { write.commit(std::move(done)); }).error;
    }
    Error undo(Write& write) {
        return wait([&write](Write::Done done) { write.undo(std::move(done)); }).error;
    }

    support::TempDir m_host;
    support::TempDir m_site;
    std::vector<std::string> m_log;
    std::unique_ptr<support::Manager> m_manager;
    boost::asio::io_context m_io{1};
    std::unique_ptr<ManagedObjects> m_objects;
};

Value octets(const std::string& text) {
    return {Type::octetString, text};
}

constexpr const char* contact = "1.4.0";
constexpr const char* location = "1.6.0";
constexpr const char* alias = "47.1.1.1.1.14.1";
constexpr const char* noSuchInstance = "type 129";

} // namespace

TEST_F(ObjectsTest, TheFirstRequestHasValues) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    EXPECT_TRUE(becomes("47.1.1.1.1.2.1", "Server 9"));
    EXPECT_TRUE(becomes("47.1.1.1.1.11.1", "S1"));
    EXPECT_TRUE(becomes("25.6.3.1.2.2", "coreutils-9"));
}

TEST_F(ObjectsTest, AWalkIsSortedAndHasTheValuesOfGets) {
    start();
    const std::vector<VarBind> all = walk(m_io, *m_objects, mib2);
    EXPECT_GT(all.size(), 50u);
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_TRUE(i == 0 || all[i - 1].oid < all[i].oid) << text(all[i].oid);
        EXPECT_EQ(m_objects->get(all[i].oid), all[i].value) << text(all[i].oid);
        EXPECT_LT(static_cast<int>(all[i].value.type), 128);
    }
}

TEST_F(ObjectsTest, ARangeOfNextEndsWithItsStart) {
    start();
    const VarBind end = m_objects->next({below("2"), false, below("2")});
    EXPECT_EQ(end.oid, below("2"));
    EXPECT_EQ(end.value.type, Type::endOfMibView);
}

TEST_F(ObjectsTest, SubtreesAreDisjointAndHaveAllObjects) {
    for (const bool registersTables : {false, true}) {
        ObjectSettings settings;
        settings.registersTables = registersTables;
        start(settings);
        const std::vector<Oid> subtrees = m_objects->subtrees();
        for (const Oid& one : subtrees) {
            for (const Oid& other : subtrees)
                EXPECT_TRUE(&one == &other || !startsWith(one, other)) << text(one) << " " << text(other);
        }
        for (const VarBind& object : walk(m_io, *m_objects, mib2)) {
            const auto holds = [&object](const Oid& subtree) { return startsWith(object.oid, subtree); };
            EXPECT_TRUE(std::any_of(subtrees.begin(), subtrees.end(), holds)) << text(object.oid);
        }
    }
}

TEST_F(ObjectsTest, TablesAndInstancesAreRegisteredBesideAMasterThatHasThem) {
    ObjectSettings settings;
    settings.registersTables = true;
    start(settings);
    const std::vector<Oid> subtrees = m_objects->subtrees();
    const auto holds = [&subtrees](const char* oid) {
        return std::find(subtrees.begin(), subtrees.end(), below(oid)) != subtrees.end();
    };
    EXPECT_TRUE(holds("25.4.2"));
    EXPECT_TRUE(holds("1.4.0"));
    EXPECT_FALSE(holds("1"));
}

TEST_F(ObjectsTest, ModulesAreBelowMib2) {
    start();
    EXPECT_EQ(m_objects->modules().size(), 6u);
    for (const Module& module : m_objects->modules())
        EXPECT_TRUE(startsWith(module.id, mib2));
}

TEST_F(ObjectsTest, AValueIsReadAgainAfterItsAge) {
    ObjectSettings settings;
    settings.ages.tables = settings.ages.counters = settings.ages.packages = 1s;
    start(settings);
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "bash-5"));
    writePackages({"apt-2", "bash-5"});
    reload();
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "apt-2"));
}

TEST_F(ObjectsTest, AWalkEndsInTheSnapshotThatItBeganIn) {
    ObjectSettings settings;
    settings.ages.packages = 0s;
    start(settings);
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "bash-5"));
    VarBind at = next(below("25.6.3.1.2"));
    EXPECT_EQ(shown(at.value), "bash-5");
    writePackages({"apt-2", "bash-5", "coreutils-9"});
    reload();
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "apt-2"));

    at = next(at.oid);
    EXPECT_EQ(text(at.oid), "1.3.6.1.2.1.25.6.3.1.2.2");
    EXPECT_EQ(shown(at.value), "coreutils-9");
    at = next(at.oid);
    EXPECT_EQ(text(at.oid), "1.3.6.1.2.1.25.6.3.1.3.1") << "the next column has the same rows";
    EXPECT_EQ(shown(next(below("25.6.3.1.2")).value), "apt-2") << "a new walk sees the new rows";
}

TEST_F(ObjectsTest, TheTimeOfTheLastChangeIsTheMastersAtTheChange) {
    ObjectSettings settings;
    settings.ages.packages = 0s;
    start(settings);
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "bash-5"));
    EXPECT_EQ(get("25.6.1.0"), "0");
    m_objects->setUpTime(500000);
    writePackages({"apt-2"});
    reload();
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "apt-2"));
    const unsigned long change = std::stoul(get("25.6.1.0"));
    EXPECT_GE(change, 500000u);
    EXPECT_LT(change, 501000u);
    m_objects->setUpTime(600000);
    EXPECT_EQ(get("25.6.1.0"), std::to_string(change));
    EXPECT_GE(std::stoul(get("25.6.2.0")), 600000u);
    m_objects->setUpTime(100); // the master has restarted
    EXPECT_LT(std::stoul(get("25.6.1.0")), 500u);
}

TEST_F(ObjectsTest, OldValuesServeUntilTheLongestAgeAndAreAbsentThen) {
    ObjectSettings settings;
    settings.ages = {0s, 0s, 0s, 2s};
    start(settings);
    EXPECT_TRUE(becomes(contact, ""));
    m_manager->end(SIGKILL);
    EXPECT_EQ(get(contact), "");
    EXPECT_TRUE(becomes(contact, noSuchInstance));
    EXPECT_TRUE(walk(m_io, *m_objects, below("1")).empty());
    EXPECT_EQ(errorOf(contact, octets("x")), Error::resourceUnavailable);
    m_manager->start();
    EXPECT_TRUE(becomes(contact, ""));
    ASSERT_EQ(m_log.size(), 2u) << testing::PrintToString(m_log);
    EXPECT_EQ(m_log[1], "object manager is back");
}

TEST_F(ObjectsTest, AHangingObjectManagerDoesNotDelayAnAnswer) {
    ObjectSettings settings;
    settings.ages.counters = 0s;
    start(settings);
    EXPECT_TRUE(becomes(contact, ""));
    m_manager->daemon().signal(SIGSTOP);
    for (int i = 0; i < 3; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(get(contact), "");
        EXPECT_LT(std::chrono::steady_clock::now() - begin, answerTime + 120ms);
    }
    m_manager->daemon().signal(SIGCONT);
}

TEST_F(ObjectsTest, NothingIsReadWhenNobodyAsks) {
    start();
    EXPECT_TRUE(becomes("25.6.3.1.2.1", "bash-5"));
    EXPECT_TRUE(becomes(contact, ""));
    m_io.restart();
    m_io.run_for(200ms);
    m_io.restart();
    EXPECT_EQ(m_io.run_for(4s), 0u) << "no handler runs, though values grow older than their ages";
}

TEST_F(ObjectsTest, AValueIsWrittenAndReadAtOnce) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    const TestedSet set = test({{contact, octets("ops")}, {location, octets("rack 7")}});
    ASSERT_EQ(set.result.error, Error::none);
    EXPECT_EQ(commit(*set.write), Error::none);
    EXPECT_EQ(shown(m_objects->get(below(contact))), "ops");
    EXPECT_EQ(shown(m_objects->get(below(location))), "rack 7");
}

TEST_F(ObjectsTest, TheAliasOfTheEnclosureIsWritten) {
    start();
    EXPECT_TRUE(becomes(alias, ""));
    const TestedSet set = test({{alias, octets("left one")}, {contact, octets("ops")}});
    ASSERT_EQ(set.result.error, Error::none);
    EXPECT_EQ(commit(*set.write), Error::none);
    EXPECT_EQ(get(alias), "left one");
    EXPECT_EQ(get(contact), "ops");
}

TEST_F(ObjectsTest, UndoWritesTheOldValuesBack) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    EXPECT_EQ(commit(*test({{contact, octets("ops")}}).write), Error::none);
    const TestedSet set = test({{contact, octets("noc")}, {alias, octets("left one")}});
    EXPECT_EQ(commit(*set.write), Error::none);
    EXPECT_EQ(get(contact), "noc");
    EXPECT_EQ(undo(*set.write), Error::none);
    EXPECT_EQ(get(contact), "ops");
    EXPECT_EQ(get(alias), "");
}

TEST_F(ObjectsTest, AValueThatIsNotTakenFailsTheCommitAndUndoRestoresTheOthers) {
    start();
    EXPECT_TRUE(becomes(alias, ""));
    const TestedSet set = test({{contact, octets("ops")}, {alias, octets("left one")}});
    m_manager->end(SIGKILL);
    const SetResult result = wait([&set](Write::Done done) { set.write->commit(std::move(done)); });
    EXPECT_EQ(result.error, Error::commitFailed);
    EXPECT_EQ(result.index, 1u);
    m_manager->start();
    EXPECT_EQ(undo(*set.write), Error::none);
    EXPECT_TRUE(becomes(contact, ""));
}

TEST_F(ObjectsTest, ACommitThatHangsFailsInTime) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    const TestedSet set = test({{contact, octets("ops")}});
    m_manager->daemon().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(commit(*set.write), Error::commitFailed);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
    m_manager->daemon().signal(SIGCONT);
    EXPECT_EQ(undo(*set.write), Error::none);
    EXPECT_TRUE(becomes(contact, ""));
}

TEST_F(ObjectsTest, ATestChecksTypeSizeAndEncoding) {
    start();
    EXPECT_TRUE(becomes(alias, ""));
    EXPECT_EQ(errorOf(contact, {Type::integer, std::uint64_t{1}}), Error::wrongType);
    EXPECT_EQ(errorOf(contact, octets(std::string(255, 'x'))), Error::none);
    EXPECT_EQ(errorOf(contact, octets(std::string(256, 'x'))), Error::wrongLength);
    EXPECT_EQ(errorOf(alias, octets(std::string(32, 'x'))), Error::none);
    EXPECT_EQ(errorOf(alias, octets(std::string(33, 'x'))), Error::wrongLength);
    EXPECT_EQ(errorOf(contact, octets("\xff")), Error::wrongValue);
    EXPECT_EQ(errorOf(contact, octets(std::string(1, '\0'))), Error::wrongValue);
}

TEST_F(ObjectsTest, ATestRefusesWhatCannotBeWritten) {
    start();
    EXPECT_TRUE(becomes(alias, ""));
    for (const char* oid :
         {"1.5.0", "4.1.0", "4.2.0", "25.1.2.0", "25.1.4.0", "47.1.1.1.1.7.1", "31.1.1.1.18.1", "1.3.0"})
        EXPECT_EQ(errorOf(oid, octets("x")), Error::notWritable) << oid;
    const std::string status = "25.4.2.1.7." + std::to_string(::getpid());
    EXPECT_EQ(errorOf(status.c_str(), {Type::integer, std::uint64_t{4}}), Error::notWritable);
    EXPECT_EQ(errorOf("1.4.1", octets("x")), Error::noCreation);
    EXPECT_EQ(errorOf("47.1.1.1.1.14.99", octets("x")), Error::noCreation);
}

TEST_F(ObjectsTest, OneBadValueFailsTheTestAndNamesItsVariable) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    const TestedSet set = test({{contact, octets("ops")}, {"1.5.0", octets("x")}});
    EXPECT_EQ(set.result.error, Error::notWritable);
    EXPECT_EQ(set.result.index, 2u);
    EXPECT_EQ(set.write, nullptr);
}

TEST_F(ObjectsTest, NothingCanBeWrittenIfTheObjectsAreReadOnly) {
    ObjectSettings settings;
    settings.isReadOnly = true;
    start(settings);
    EXPECT_TRUE(becomes(contact, ""));
    EXPECT_EQ(errorOf(contact, octets("ops")), Error::notWritable);
}

TEST_F(ObjectsTest, AWriteThatIsDestroyedCallsNothing) {
    start();
    EXPECT_TRUE(becomes(contact, ""));
    bool isCalled = false;
    {
        const TestedSet set = test({{contact, octets("ops")}});
        set.write->commit([&isCalled](SetResult) { isCalled = true; });
    }
    EXPECT_TRUE(becomes(contact, "ops") || get(contact).empty());
    m_io.restart();
    m_io.run_for(1s);
    EXPECT_FALSE(isCalled);
}

TEST_F(ObjectsTest, TheObjectsCanBeDestroyedWhileTheyRead) {
    start();
    bool isReady = false;
    m_objects->prepare({mib2}, [&isReady] { isReady = true; });
    m_objects.reset();
    m_io.restart();
    m_io.run_for(300ms);
    EXPECT_FALSE(isReady);
}

#include "support/Snmpd.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace support {
namespace {

const char* const sysDescr = ".1.3.6.1.2.1.1.1.0";
const char* const sysContact = ".1.3.6.1.2.1.1.4.0";

class SnmpdTest : public testing::Test {
protected:
    void SetUp() override {
        if (const std::string reason = snmpToolsMissing(); !reason.empty())
            GTEST_SKIP() << reason;
        snmpd.emplace();
    }

    std::optional<Snmpd> snmpd;
};

TEST_F(SnmpdTest, AnswersWithNumbers) {
    const ProgramResult got = snmpd->run("snmpget", v2c(""), {sysDescr});
    EXPECT_EQ(got.out.rfind(".1.3.6.1.2.1.1.1.0 = STRING: \"Linux ", 0), 0u) << got.out << got.err;
    EXPECT_EQ(got.exitCode, 0);
}

TEST_F(SnmpdTest, AcceptsSubagentsOnAPrivateSocket) {
    struct stat status {};
    ASSERT_EQ(::stat(snmpd->masterSocket().c_str(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
}

TEST_F(SnmpdTest, ServesTheContextOwbApartFromTheDefaultContext) {
    const std::string forward = "proxy -Cn owb -v 2c -c default " + snmpd->address() + " .1.3.6.1.2.1.1";
    const Snmpd front({forward, "sysContact front"});
    ASSERT_EQ(snmpd->run("snmpset", v2c(""), {sysContact, "s", "proxied"}).exitCode, 0);
    EXPECT_EQ(front.run("snmpget", v2c("owb"), {sysContact}).out,
              ".1.3.6.1.2.1.1.4.0 = STRING: \"proxied\"\n");
    EXPECT_EQ(front.run("snmpget", v3("owb"), {sysContact}).out,
              ".1.3.6.1.2.1.1.4.0 = STRING: \"proxied\"\n");
    EXPECT_EQ(front.run("snmpget", v3(""), {sysContact}).out, ".1.3.6.1.2.1.1.4.0 = STRING: \"front\"\n");
}

TEST_F(SnmpdTest, LetsAUserWithEncryptionWrite) {
    EXPECT_EQ(snmpd->run("snmpset", v3(""), {sysContact, "s", "ops"}).out,
              ".1.3.6.1.2.1.1.4.0 = STRING: \"ops\"\n");
    EXPECT_EQ(snmpd->run("snmpget", v2c(""), {sysContact}).out, ".1.3.6.1.2.1.1.4.0 = STRING: \"ops\"\n");
}

TEST_F(SnmpdTest, PrintsATableWithNamesOfColumns) {
    const ProgramResult got = snmpd->table(v2c(""), {"-Ci", "ifTable"});
    EXPECT_NE(got.out.find("index|ifIndex|ifDescr|ifType|"), std::string::npos) << got.out << got.err;
    EXPECT_NE(got.out.find("1|1|lo|softwareLoopback|"), std::string::npos) << got.out << got.err;
}

TEST_F(SnmpdTest, StartsAgainOnTheSamePortAndSocket) {
    const std::string address = snmpd->address();
    snmpd->kill();
    EXPECT_NE(snmpd->run("snmpget", v2c(""), {"-t", "0.1", "-r", "0", sysDescr}).exitCode, 0);
    snmpd->start();
    EXPECT_EQ(snmpd->address(), address);
    EXPECT_EQ(snmpd->run("snmpget", v2c(""), {sysDescr}).exitCode, 0);
}

} // namespace
} // namespace support

// The check of the SNMP master's socket.
#include "doctor/MasterCheck.hpp"
#include "support/TempDir.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace owbctl {
namespace {

class MasterCheckTest : public testing::Test {
protected:
    void install(const std::string& file = "etc/snmp/snmpd.conf.d/owb.conf") { root.write(file, ""); }
    std::string socketPath() const { return root.file("var/agentx/master"); }
    /** Binds the socket; returns its descriptor. */
    int bindSocket() const {
        std::filesystem::create_directories(root.file("var/agentx"));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        socketPath().copy(address.sun_path, sizeof address.sun_path - 1);
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(0, ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
        return descriptor;
    }
    Check check() const { return checkMaster(root.path()).value(); }

    support::TempDir root;
};

TEST_F(MasterCheckTest, WithoutThePackageThereIsNoCheck) {
    EXPECT_FALSE(checkMaster(root.path()).has_value());
}

TEST_F(MasterCheckTest, TheProgramOrItsSettingsAreThePackage) {
    install("usr/sbin/owb-agentx");
    EXPECT_TRUE(checkMaster(root.path()).has_value());
}

TEST_F(MasterCheckTest, AMissingSocketIsAWarningThatNamesTheMaster) {
    install();
    EXPECT_EQ(Check::Result::warn, check().result);
    EXPECT_EQ(socketPath() + ": No such file or directory", check().finding);
    EXPECT_NE(std::string::npos, check().advice.find("systemctl restart snmpd"));
}

TEST_F(MasterCheckTest, AFileIsNoSocket) {
    install();
    root.write("var/agentx/master", "");
    EXPECT_EQ(Check::Result::warn, check().result);
    EXPECT_EQ(socketPath() + ": not a socket", check().finding);
}

TEST_F(MasterCheckTest, ASocketWithoutAMasterIsAWarning) {
    install();
    const int descriptor = bindSocket();
    EXPECT_EQ(Check::Result::warn, check().result);
    EXPECT_EQ(socketPath() + ": Connection refused", check().finding);
    ::close(descriptor);
}

TEST_F(MasterCheckTest, ASocketWithoutPermissionIsAWarning) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may connect to each socket";
    install();
    const int descriptor = bindSocket();
    ::listen(descriptor, 1);
    std::filesystem::permissions(socketPath(), std::filesystem::perms::none);
    EXPECT_EQ(Check::Result::warn, check().result);
    EXPECT_EQ(socketPath() + ": Permission denied", check().finding);
    EXPECT_NE(std::string::npos, check().advice.find("owb-agentx"));
    ::close(descriptor);
}

TEST_F(MasterCheckTest, AMasterThatAcceptsConnectionsIsOk) {
    install();
    const int descriptor = bindSocket();
    ::listen(descriptor, 1);
    EXPECT_EQ(Check::Result::ok, check().result);
    EXPECT_EQ(socketPath() + ", of " + userName(::geteuid()) + ": the master accepts subagents",
              check().finding);
    ::close(descriptor);
}

} // namespace
} // namespace owbctl

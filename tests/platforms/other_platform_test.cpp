// Programs of this platform with those of another: OUR_PROGRAMS and OTHER_PROGRAMS are their directories.
#include "support/Certificates.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

using support::certificate;
using support::runProgram;

/** An object manager of either platform on a fake host, with a user who may write. */
class Manager {
public:
    Manager(const support::TempDir& directory, const std::string& programs) {
        directory.write("host/proc/sys/kernel/hostname", "box.example.org\n");
        directory.write("host/proc/1/stat", "");
        directory.write("site/all.json", R"({
            "QAV_System": [{"Name": "box", "CreationClassName": "QAV_System", "InstalledLocation": "\u00e9\u20ac",
                            "SysServices": 4294967295}],
            "QAV_TCPStatisticalData": [{"InstanceID": "tcp", "InSegs": 18446744073709551615}]})");
        const std::string user = "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5Rj/"
                                 "j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n"; // "secret"
        m_daemon = std::make_unique<support::Daemon>(std::vector<std::string>{
            programs + "/owbcimomd", "--socket", directory.file("socket"), "--state",
            directory.file("state.json"), "--root", directory.file("host"), "--instances",
            directory.file("site"), "--users", secret(directory, "users", user), "--listen", "127.0.0.1:0",
            "--tls-listen", "127.0.0.1:0", "--tls-cert", certificate("localhost.crt"), "--tls-key",
            secret(directory, "key", support::readFile(certificate("localhost.key")))});
        m_ready = m_daemon->nextErrorLine();
        EXPECT_EQ(0U, m_ready.find("owbcimomd: ready on ")) << m_ready;
    }
    ~Manager() {
        m_daemon->signal(SIGTERM);
        EXPECT_EQ(0, m_daemon->wait());
    }

    std::string url(const std::string& scheme) const {
        const bool isTls = scheme.back() == 's';
        const std::string address = "127.0.0.1:";
        const std::size_t first = m_ready.find(address) + address.size();
        const std::size_t port = isTls ? m_ready.find(address, first) + address.size() : first;
        return scheme + "://agent:secret@localhost:" + std::to_string(std::stoul(m_ready.substr(port)));
    }

private:
    static std::string secret(const support::TempDir& directory, const std::string& name,
                              const std::string& content) {
        const std::string path = directory.write(name, content);
        ::chmod(path.c_str(), 0600);
        return path;
    }

    std::unique_ptr<support::Daemon> m_daemon;
    std::string m_ready;
};

std::string owbctl(const std::string& programs, const std::string& url,
                   const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"/usr/bin/env", "OWB_TLS_CA=" + certificate("ca.crt"),
                                     programs + "/owbctl", "--url", url};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const support::ProgramResult result = runProgram(command);
    EXPECT_EQ(0, result.exitCode) << result.err;
    return result.out;
}

/** The parameter is the scheme of the URL: the protocol, with TLS or without. */
class OtherPlatform : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(OTHER_PROGRAMS "/owbcimomd") ||
            !std::filesystem::exists(OTHER_PROGRAMS "/owbctl"))
            GTEST_SKIP() << "no programs of another platform in " OTHER_PROGRAMS;
    }

    const support::TempDir& directory() const { return m_directory; }
    /** What an agent reads: all groups but those with the present time. */
    static std::string all(const std::string& programs, const Manager& manager) {
        return owbctl(programs, manager.url(GetParam()), {"get", "0-3,5-16,18-30", "-o", "csv"});
    }
    /** What an agent reads after another wrote it. */
    static std::string readAfterWrite(const std::string& reader, const std::string& writer,
                                      const Manager& manager) {
        owbctl(writer, manager.url(GetParam()), {"set", "2", "0", "PrimaryOwnerContact=ops@example.net"});
        return owbctl(reader, manager.url(GetParam()), {"get", "2"});
    }

private:
    support::TempDir m_directory;
};

class OtherPlatformState : public OtherPlatform {};

bool hasContact(const std::string& text) {
    return text.find("ops@example.net") != std::string::npos;
}

} // namespace

TEST_P(OtherPlatform, ReadsTheSameFromOurManager) {
    const Manager manager(directory(), OUR_PROGRAMS);
    const std::string ours = all(OUR_PROGRAMS, manager);
    EXPECT_NE(std::string::npos, ours.find("18446744073709551615")) << ours;
    EXPECT_EQ(ours, all(OTHER_PROGRAMS, manager));
}

TEST_P(OtherPlatform, ServesUsTheSame) {
    std::string ours;
    {
        const Manager manager(directory(), OUR_PROGRAMS);
        ours = all(OUR_PROGRAMS, manager);
    }
    const Manager manager(directory(), OTHER_PROGRAMS);
    EXPECT_EQ(ours, all(OUR_PROGRAMS, manager));
    EXPECT_EQ(ours, all(OTHER_PROGRAMS, manager));
}

TEST_P(OtherPlatform, WritesToOurManager) {
    const Manager manager(directory(), OUR_PROGRAMS);
    EXPECT_TRUE(hasContact(readAfterWrite(OUR_PROGRAMS, OTHER_PROGRAMS, manager)));
}

TEST_P(OtherPlatform, TakesWhatWeWrite) {
    const Manager manager(directory(), OTHER_PROGRAMS);
    EXPECT_TRUE(hasContact(readAfterWrite(OTHER_PROGRAMS, OUR_PROGRAMS, manager)));
}

INSTANTIATE_TEST_SUITE_P(Protocols, OtherPlatform,
                         testing::Values("http", "owbinary.wbem", "https", "owbinary.wbems"));

TEST_P(OtherPlatformState, IsReadByOurManagerAndTheReverse) {
    for (const auto& [writer, reader] :
         {std::pair(OTHER_PROGRAMS, OUR_PROGRAMS), std::pair(OUR_PROGRAMS, OTHER_PROGRAMS)}) {
        std::filesystem::remove(directory().file("state.json"));
        std::string written;
        {
            const Manager manager(directory(), writer);
            EXPECT_TRUE(hasContact(readAfterWrite(writer, writer, manager)));
            written = all(writer, manager);
        }
        const Manager manager(directory(), reader);
        EXPECT_EQ(written, all(reader, manager));
    }
}

INSTANTIATE_TEST_SUITE_P(Protocols, OtherPlatformState, testing::Values("http"));

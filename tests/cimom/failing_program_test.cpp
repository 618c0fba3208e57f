// Each system call of an object manager fails in turn. It reports why it cannot start, or continues to serve.
#include "Client.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"
#include "OW_WBEMFlags.hpp"
#include "binary/Request.hpp"
#include "support/Pattern.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <unistd.h>

using namespace OpenWBEM;
using support::Daemon;

namespace {

/** In memory if possible: on a disk, the test would wait for fsync(2) nine tenths of its time. */
std::string fastDirectory() {
    const char* const memory = "/dev/shm";
    return ::access(memory, W_OK) == 0 ? memory : std::filesystem::temp_directory_path().string();
}

class FailingManager {
public:
    /** @param call index of the call that fails, or -1 for none */
    FailingManager(long call, int error)
        : m_daemon({"/usr/bin/env", "LD_PRELOAD=" FAILING_PROGRAM, "FAIL_CALL=" + std::to_string(call),
                    "FAIL_ERROR=" + std::to_string(error), "FAIL_COUNT=" + m_directory.file("count"),
                    OWBCIMOMD, "--socket", socket(), "--state", state(), "--root", host()}) {}

    std::string socket() const { return m_directory.file("socket"); }
    std::string state() const { return m_directory.file("state.json"); }
    Daemon& daemon() { return m_daemon; }
    /** The number of its system calls, and the name of the failed one. Valid after its end. */
    std::pair<long, std::string> calls() const {
        std::pair<long, std::string> result(-1, "");
        std::ifstream(m_directory.file("count")) >> result.first >> result.second;
        return result;
    }

private:
    std::string host() const {
        m_directory.write("host/proc/sys/kernel/hostname", "box.example.org\n");
        m_directory.write("host/proc/1/stat", "");
        return m_directory.file("host");
    }

    support::TempDir m_directory{fastDirectory()};
    Daemon m_daemon;
};

/** Waits until the object manager is ready or has ended; returns its last line. */
std::string lastLine(Daemon& daemon) {
    std::string last;
    for (std::string line = daemon.nextErrorLine(); !line.empty(); line = daemon.nextErrorLine()) {
        last = line;
        if (line.rfind("owbcimomd: ready on ", 0) == 0)
            break;
    }
    return last;
}

/** Sends a request on a new connection. Returns the body of the reply, or "" if there is none. */
std::string ask(const std::string& socket, const std::string& body) {
    try {
        return Client(socket).exchange(httpRequest(body)).body;
    } catch (const std::runtime_error&) {
        return "";
    }
}

std::string writeBody(const std::string& tag) {
    CIMInstance chassis("QAV_K70Chassis");
    chassis.setProperty("Tag", CIMValue("Chassis"));
    chassis.setProperty("CreationClassName", CIMValue("QAV_K70Chassis"));
    chassis.setProperty("UserTracking", CIMValue(tag.c_str()));
    return binary::modifyInstance("root/cimv2", chassis, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr);
}

const std::string tags[] = {"first", "second", "third"};

/** The number of the last of the tags that a text contains, from 1; 0 if it contains none. */
std::size_t lastTagIn(const std::string& text) {
    for (std::size_t number = std::size(tags); number > 0; --number)
        if (text.find(tags[number - 1]) != std::string::npos)
            return number;
    return 0;
}

/** Expects at most one unanswered request, and no loss of an acknowledged write. */
void expectToServe(FailingManager& manager) {
    const std::string done(1, '\0');
    const std::string read = enumerateBody("QAV_K70Chassis");
    int unanswered = 0;
    std::size_t acknowledged = 0;
    for (std::size_t number = 1; number <= std::size(tags); ++number) {
        const bool isDone = ask(manager.socket(), writeBody(tags[number - 1])) == done;
        if (isDone)
            acknowledged = number;
        const std::string instances = ask(manager.socket(), read);
        const bool isRead = instances.size() > 1;
        if (isRead) {
            EXPECT_LE(acknowledged, lastTagIn(instances)) << "the acknowledged write is missing";
        }
        unanswered += !isDone + !isRead;
    }
    EXPECT_LE(unanswered, 1);
    manager.daemon().signal(SIGTERM);
    EXPECT_EQ(0, manager.daemon().wait());
    EXPECT_LE(acknowledged, lastTagIn(support::readFile(manager.state())))
        << "the acknowledged write is not saved";
}

/** Runs an object manager once. Returns the number of its system calls. */
long expectCalm(long call, int error) {
    FailingManager manager(call, error);
    const std::string line = lastLine(manager.daemon());
    if (line.rfind("owbcimomd: ready on ", 0) == 0) {
        expectToServe(manager);
    } else {
        EXPECT_EQ(1, manager.daemon().wait()) << line;
        EXPECT_TRUE(support::matches(line, "owbcimomd: .+: .+")) << line;
    }
    const auto [made, failed] = manager.calls();
    if (testing::Test::HasFailure())
        ADD_FAILURE() << "call " << call << " of " << made << ", " << failed << ": " << std::strerror(error);
    return made;
}

class ManagerWithoutACall : public testing::TestWithParam<int> {};

TEST_P(ManagerWithoutACall, ReportsWhyItCannotStartOrServes) {
    const long calls = expectCalm(-1, 0);
    EXPECT_LT(100, calls);
    for (long call = 0; call < calls && !HasFailure(); ++call)
        expectCalm(call, GetParam());
}

INSTANTIATE_TEST_SUITE_P(For, ManagerWithoutACall, testing::Values(EINTR, EMFILE, ENOSPC, EIO, ENOMEM),
                         [](const auto& error) { return std::string(::strerrorname_np(error.param)); });

} // namespace

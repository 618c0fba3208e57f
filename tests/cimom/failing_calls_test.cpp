// An object manager of whose system calls each one fails in turn: it says why it cannot start, or serves all
// the same.
#include "Client.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMValue.hpp"
#include "OW_WBEMFlags.hpp"
#include "binary/Request.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <regex>

using namespace OpenWBEM;
using support::Daemon;

namespace {

const int errors[] = {EINTR, EMFILE, ENOSPC, EIO, ENOMEM};

class FailingManager {
public:
    FailingManager(long call, int error)
        : m_daemon({"/usr/bin/env", "LD_PRELOAD=" FAILING_CALLS, "FAIL_CALL=" + std::to_string(call),
                    "FAIL_ERROR=" + std::to_string(error), "FAIL_COUNT=" + m_folder.file("count"), OWBCIMOMD,
                    "--socket", socket(), "--state", state(), "--root", host()}) {}

    std::string socket() const { return m_folder.file("socket"); }
    std::string state() const { return m_folder.file("state.json"); }
    Daemon& daemon() { return m_daemon; }
    /** Calls of the system that it made; once it has ended. */
    long calls() const {
        long count = 0;
        std::ifstream(m_folder.file("count")) >> count;
        return count;
    }
    std::string failedCall() const {
        std::string count;
        std::string name;
        std::ifstream(m_folder.file("count")) >> count >> name;
        return name;
    }

private:
    std::string host() const {
        m_folder.write("host/proc/sys/kernel/hostname", "box.example.org\n");
        m_folder.write("host/proc/1/stat", "");
        return m_folder.file("host");
    }

    support::TempDir m_folder;
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

/** Sends a request on a connection of its own; the body of the reply, or nothing when none came. */
std::optional<std::string> ask(const std::string& socket, const std::string& body) {
    try {
        return Client(socket).exchange(httpRequest(body)).body;
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

std::string writeBody(const std::string& tag) {
    CIMInstance chassis("QAV_K70Chassis");
    chassis.setProperty("Tag", CIMValue("Chassis"));
    chassis.setProperty("CreationClassName", CIMValue("QAV_K70Chassis"));
    chassis.setProperty("UserTracking", CIMValue(tag.c_str()));
    return binary::modifyInstance("root/cimv2", chassis, WBEMFlags::E_INCLUDE_QUALIFIERS, nullptr);
}

const std::string done(1, '\0');

/** At most one request in a row of them may suffer from one failure. */
void expectToServe(FailingManager& manager) {
    const std::string read = enumerateBody("QAV_K70Chassis");
    int unanswered = 0;
    std::string kept; // what may be in the state file: the last one acknowledged, or a later one
    for (const char* const tag : {"first", "second", "third"}) {
        const auto written = ask(manager.socket(), writeBody(tag));
        const auto instances = ask(manager.socket(), read);
        unanswered += (written == done ? 0 : 1) + (instances && instances->size() > 1 ? 0 : 1);
        if (written == done)
            kept.clear();
        kept += (kept.empty() ? "" : "|") + std::string(tag);
        if (written == done && instances && instances->size() > 1) {
            EXPECT_NE(std::string::npos, instances->find(tag)) << "written, and not there";
        }
    }
    EXPECT_LE(unanswered, 1);
    manager.daemon().signal(SIGTERM);
    EXPECT_EQ(0, manager.daemon().wait());
    EXPECT_TRUE(std::regex_search(support::readFile(manager.state()), std::regex(kept))) << kept;
}

/** One run; the calls that it made. */
long expectCalm(long call, int error) {
    FailingManager manager(call, error);
    const std::string line = lastLine(manager.daemon());
    if (line.rfind("owbcimomd: ready on ", 0) == 0) {
        expectToServe(manager);
    } else {
        EXPECT_EQ(1, manager.daemon().wait()) << line;
        EXPECT_TRUE(std::regex_match(line, std::regex("owbcimomd: .+: .+"))) << line;
    }
    if (testing::Test::HasFailure())
        ADD_FAILURE() << "call " << call << ", " << manager.failedCall() << ": " << std::strerror(error);
    return manager.calls();
}

// Each call fails with one of the errors, and each error at one call of five: a test for each fifth of the
// calls.
class ManagerWithoutACall : public testing::TestWithParam<int> {};

TEST_P(ManagerWithoutACall, SaysWhyItCannotStartOrServes) {
    long calls = GetParam() + 1;
    for (long call = GetParam(); call < calls && !HasFailure(); call += std::size(errors))
        calls =
            expectCalm(call, errors[static_cast<std::size_t>(call / std::size(errors)) % std::size(errors)]);
}

INSTANTIATE_TEST_SUITE_P(InFifths, ManagerWithoutACall, testing::Range(0, 5));

} // namespace

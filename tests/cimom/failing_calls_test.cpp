// System calls of the object manager that fail: each call of an action in turn, with each error.
#include "http/NetworkAddress.hpp"
#include "http/UnixSocket.hpp"
#include "state/StateFile.hpp"
#include "support/FailingCalls.hpp"
#include "support/TempDir.hpp"
#include "users/PasswordCheck.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace calls = support::calls;
using namespace cimom;

namespace {

using Names = std::set<std::string>;

Names namesIn(const std::string& directory) {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.insert(entry.path().filename().string());
    return names;
}

/** Creates a socket file without a listening process. */
void leaveSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(0, ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    ::close(descriptor);
}

class FailingCall : public testing::TestWithParam<int> {
protected:
    std::string file(const std::string& name) const { return m_directory.file(name); }
    Names names() const { return namesIn(m_directory.path()); }

    /** Repeats an action. In the n-th run its n-th call fails; in the last run none does. The message of an
     * exception must be `<name>: <reason>`. */
    void forEachCall(const std::string& name, const std::function<void()>& action,
                     const std::function<void(const std::string& failed, bool isThrown)>& check) const {
        bool hasFailed = true;
        for (long n = 0; hasFailed && !HasFailure(); ++n) {
            std::string error;
            calls::failAt(n, GetParam());
            try {
                action();
            } catch (const std::runtime_error& e) {
                error = e.what();
            }
            hasFailed = calls::stopFailing();
            SCOPED_TRACE(std::string("call ") + std::to_string(n) + ", " + calls::failed());
            EXPECT_TRUE(error.empty() || (hasFailed && error.find(name) == 0)) << error;
            check(calls::failed(), !error.empty());
        }
    }

    const support::TempDir m_directory;
};

std::string nameOf(const testing::TestParamInfo<int>& info) {
    return ::strerrorname_np(info.param);
}

INSTANTIATE_TEST_SUITE_P(With, FailingCall, testing::Values(EINTR, EIO, ENOSPC, EMFILE, EACCES), nameOf);

TEST_P(FailingCall, OfAReplacementLeavesTheOldContentOrTheNewOne) {
    const StateFile state(file("state"));
    const auto check = [&](const std::string& failed, bool isThrown) {
        const std::string content = state.read().value();
        // The new content with an exception: the flush of the directory after the renaming has failed.
        EXPECT_TRUE(content == "new" || (content == "old" && isThrown)) << content;
        if (GetParam() == EINTR && failed == "write") {
            EXPECT_FALSE(isThrown) << "an interruption is not a failure";
        }
        EXPECT_EQ((Names{"state", "state.lock"}), names());
        state.replace("old");
    };
    state.replace("old");
    forEachCall(
        file("state").substr(0, file("state").rfind('/')), [&] { state.replace("new"); }, check);
}

TEST_P(FailingCall, OfAReadIsReportedOrTheContentIsWhole) {
    const StateFile state(file("state"));
    state.replace("content");
    std::string content;
    forEachCall(
        file("state"), [&] { content = state.read().value(); },
        [&](const std::string& failed, bool isThrown) {
            EXPECT_EQ(isThrown ? "" : "content", content);
            if (GetParam() == EINTR && failed == "read") {
                EXPECT_FALSE(isThrown) << "an interruption is not a failure";
            }
            content.clear();
        });
}

TEST_P(FailingCall, OfAUnixSocketLeavesNothingInTheWayOfTheNext) {
    const std::string path = file("socket");
    std::unique_ptr<http::UnixSocket> socket;
    leaveSocket(path);
    forEachCall(
        path, [&] { socket = std::make_unique<http::UnixSocket>(path, 0600); },
        [&](const std::string& failed, bool isThrown) {
            EXPECT_EQ(isThrown, socket == nullptr);
            if (failed == "chmod" || failed == "listen") {
                EXPECT_EQ(Names{}, names()) << "the socket that it created";
            }
            socket.reset();
            EXPECT_NO_THROW(http::UnixSocket(path, 0600));
            EXPECT_EQ(Names{}, names());
            leaveSocket(path);
        });
}

TEST_P(FailingCall, OfANetworkSocketIsReportedWithItsAddress) {
    const http::NetworkAddress address = http::networkAddress("127.0.0.1:0").value();
    int descriptor = -1;
    forEachCall(
        "127.0.0.1:0: ", [&] { descriptor = http::listenOn(address).descriptor; },
        [&](const std::string&, bool isThrown) {
            EXPECT_EQ(isThrown, descriptor < 0);
            if (descriptor >= 0)
                ::close(descriptor);
            descriptor = -1;
        });
}

TEST_P(FailingCall, OfTheStartOfAPasswordCheckLeavesItUnchecked) {
    boost::asio::io_context io(1);
    const Users users("bob:$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                      "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/");
    PasswordCheck passwords(io, users);
    // No later call: the child would inherit the rest of the count.
    for (const char* const call : {"pipe2", "fork"}) {
        Verdict verdict = Verdict::mayWrite;
        calls::failAt(std::strcmp(call, "fork") == 0 ? 1 : 0, GetParam());
        passwords.check("bob", "secret", [&](Verdict result) { verdict = result; });
        calls::stopFailing();
        ASSERT_STREQ(call, calls::failed());
        io.run();
        io.restart();
        EXPECT_EQ(Verdict::unchecked, verdict);
        passwords.check("bob", "secret", [&](Verdict result) { verdict = result; });
        io.run();
        io.restart();
        EXPECT_EQ(Verdict::mayWrite, verdict);
    }
}

} // namespace

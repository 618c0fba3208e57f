// Reads and writes that fail: messages and exit statuses.
#include "Owbctl.hpp"
#include "support/Manager.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace owbctl_test {
namespace {

using namespace support::wire;

const std::string doctorHint = "try 'owbctl doctor' with the same URL\n";

/** Expects the whole screen of a failed `get 4`. */
void expectFailure(const std::string& url, const std::string& reason) {
    const support::ProgramResult result = owbctl({"--url", url, "get", "4"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: group 4: " + reason);
}

void expectFailure(const support::Step& answer, const std::string& reason) {
    const support::ScriptedPeer peer({answer});
    expectFailure(peer.url(), reason);
}

std::string tcpUrl(const support::ScriptedPeer& peer, const std::string& login = "") {
    return peer.url("http", login + "127.0.0.1");
}

/** URL of a TCP port on which nothing listens any more. */
std::string closedPortUrl() {
    return tcpUrl(support::ScriptedPeer({instances({})}, support::Listening::ipv4));
}

std::string peerOf(const std::string& url) {
    return "127.0.0.1 port " + url.substr(url.rfind(':') + 1);
}

TEST(Failure, AMissingSocketIsNamed) {
    const support::TempDir directory;
    const std::string path = directory.file("missing");
    expectFailure(support::urlOf(path), "no such file or directory: " + path + "\n" + doctorHint);
}

TEST(Failure, ASocketWithoutAListenerRefusesTheConnection) {
    support::Manager manager;
    manager.end(SIGKILL);
    expectFailure(manager.url(), "connection refused: " + manager.socketPath() + "\n" + doctorHint);
}

TEST(Failure, APortWithoutAListenerRefusesTheConnection) {
    const std::string url = closedPortUrl();
    expectFailure(url, "connection refused: " + peerOf(url) + "\n" + doctorHint);
}

TEST(Failure, ASocketOfAnotherUserDeniesPermission) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can change its user";
    const support::ScriptedPeer peer({instances({})});
    ::chmod(peer.socketPath().c_str(), 0600);
    const support::ProgramResult result =
        shell("setpriv --reuid=65534 --clear-groups \"$OWBCTL\" --url " + peer.url() + " get 4");
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.err, "owbctl: group 4: permission denied: " + peer.socketPath() + "\n" + doctorHint);
}

TEST(Failure, AFileThatIsNoSocketRefusesTheConnection) {
    const support::TempDir directory;
    const std::string path = directory.write("file", "");
    expectFailure(support::urlOf(path), "connection refused: " + path + "\n" + doctorHint);
}

TEST(Failure, TooManyOpenFilesAreNoFailureOfTheConnection) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs file descriptors";
#endif
    const support::ScriptedPeer peer({instances({})});
    // The program has one descriptor besides the standard streams, even if the parent of the test left others
    // open.
    const support::ProgramResult result = shell(
        "exec 3>&- 4>&- 5>&- 6>&- 7>&- 8>&- 9>&-; ulimit -n 4; \"$OWBCTL\" --url " + peer.url() + " get 4");
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.err, "owbctl: group 4: too many open files\n");
}

TEST(Failure, AnUnknownHostIsNamed) {
    expectFailure("http://no..such.host", "unknown host: no..such.host\n");
}

TEST(Failure, AMalformedUrlIsInvalid) {
    expectFailure("owbinary.wbem://", "invalid URL: owbinary.wbem://\n" + doctorHint);
    expectFailure("owbinary.wbem://localhost:%zz", "invalid URL: invalid escape: %zz\n" + doctorHint);
}

TEST(Failure, AServerThatClosesTheConnectionGivesNoAnswer) {
    const support::ScriptedPeer peer({support::Step::close()});
    expectFailure(peer.url(),
                  "connection closed without a valid answer: " + peer.socketPath() + "\n" + doctorHint);
}

TEST(Failure, AServerOfAnotherProtocolGivesNoValidAnswer) {
    const support::ScriptedPeer peer({support::Step::answerAndClose("SSH-2.0-OpenSSH_9.2\r\n")});
    expectFailure(peer.url(),
                  "connection closed without a valid answer: " + peer.socketPath() + "\n" + doctorHint);
    expectFailure(support::Step::answerAndClose("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n"),
                  "request rejected: Not Found\n");
}

TEST(Failure, AReplyThatIsTruncatedIsMalformed) {
    const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n";
    expectFailure(support::Step::answerAndClose(head + std::string(1, '\0') + "o"),
                  "malformed reply: it is truncated, or its encoding is invalid\n");
    expectFailure(support::Step::answerAndClose(head + "abc"),
                  "malformed reply: it begins with an unknown result\n");
}

TEST(Failure, AReplyThatIsNotXmlIsMalformed) {
    const support::ScriptedPeer peer({support::Step::answer(plainReply("<html></html>"))},
                                     support::Listening::ipv4);
    expectFailure(tcpUrl(peer), "malformed reply: Invalid XML. <CIM> not found.\n");
}

TEST(Failure, ARejectedLoginIsReportedWithTheWordsOfTheServer) {
    const std::string challenge = "WWW-Authenticate: Basic realm=\"x\"";
    const support::ScriptedPeer peer(
        {support::Step::answer(statusReply("401 Unauthorized", {challenge})),
         support::Step::answer(statusReply("401 Unauthorized: wrong name or password", {challenge})),
         support::Step::answer(statusReply("401 Unauthorized", {challenge})),
         support::Step::answer(statusReply("401 Unauthorized: wrong name or password", {challenge}))},
        support::Listening::ipv4);
    expectFailure(tcpUrl(peer, "me:secret@"), "login rejected: wrong name or password\n" + doctorHint);
}

TEST(Failure, ALoginThatTheUrlDoesNotHaveIsRequired) {
    const support::ScriptedPeer peer(
        {support::Step::answer(statusReply("401 Unauthorized", {"WWW-Authenticate: Basic realm=\"x\""}))},
        support::Listening::ipv4);
    expectFailure(tcpUrl(peer), "login required, and the URL has no user\n");
}

TEST(Failure, AnErrorOfTheObjectManagerIsShownWithItsDescription) {
    expectFailure(support::Step::answer(cimErrorReply(5, "")), "the class is not known there\n");
    expectFailure(support::Step::answer(cimErrorReply(5, "QAV_OperatingSystem")),
                  "the class is not known there: QAV_OperatingSystem\n");
    expectFailure(support::Step::answer(cimErrorReply(1, "the disk \xc2\x9b failed")),
                  "the disk \\xc2\\x9b failed\n");
}

TEST(Failure, TheRealObjectManagerNamesAnUnknownClassOrInstance) {
    const support::Manager manager;
    const auto instance = [&manager](const std::string& path) {
        return owbctl({"--url", manager.url(), "instance", "--group", "4", path});
    };
    const support::ProgramResult noClass = instance("Other_Class.Name=\"x\"");
    EXPECT_EQ(noClass.exitCode, 15);
    EXPECT_EQ(noClass.err, "owbctl: group 4: the class is not known there: /root/cimv2:Other_Class\n");
    EXPECT_EQ(instance("QAV_System.CreationClassName=\"QAV_System\",Name=\"x\"").err,
              "owbctl: group 4: no such instance: "
              "/root/cimv2:QAV_System.Name=\"x\",CreationClassName=\"QAV_System\"\n");
}

TEST(Failure, GroupsAfterAFailureAreRead) {
    const support::Step error = support::Step::answer(cimErrorReply(5, "no such class"));
    const support::ProgramResult result = get({error, error, instances({})}, {"4", "14"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.out, "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
}

TEST(Failure, AReadIsAttemptedAtMostTwice) {
    const support::ScriptedPeer peer({support::Step::answer(cimErrorReply(5, "no such class"))});
    EXPECT_EQ(owbctl({"--url", peer.url(), "get", "14"}).exitCode, 15);
    EXPECT_EQ(peer.requests().size(), 2u);
}

TEST(Failure, AReadThatSucceedsIsNotRepeated) {
    const support::ScriptedPeer peer({instances({})});
    EXPECT_EQ(owbctl({"--url", peer.url(), "get", "14"}).exitCode, 0);
    EXPECT_EQ(peer.requests().size(), 1u);
}

TEST(Failure, AReadThatFailsOnlyOnceIsShown) {
    const support::ProgramResult result =
        get({support::Step::close(), instanceOf({stringProperty("_INIT_LOAD_PARAMETERS", "quiet")})},
            {"4", "-oline"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "4 QAV_OperatingSystem[0]._INIT_LOAD_PARAMETERS = quiet\n");
    EXPECT_EQ(result.err, "");
}

TEST(Failure, AReadThatFailsEverySecondTimeHasNoReason) {
    const support::Step error = support::Step::answer(cimErrorReply(1, "busy"));
    const support::ProgramResult result = get({error, instances({}), error}, {"4"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.err, "owbctl: group 4: no answer, or an error without a reason\n" + doctorHint);
}

TEST(Failure, SeveralFailedGroupsGiveOneLineEachAndOneHint) {
    const std::string url = closedPortUrl();
    const std::string reason = "connection refused: " + peerOf(url) + "\n";
    EXPECT_EQ(owbctl({"--url", url, "get", "4", "14"}).err,
              "owbctl: group 4: " + reason + "owbctl: group 14: " + reason + doctorHint);
}

TEST(Failure, APasswordIsNotShown) {
    EXPECT_EQ(owbctl({"--url", "http://me:secret@", "get", "4"}).err,
              "owbctl: group 4: invalid URL: http://me:***@\n" + doctorHint);
}

TEST(Failure, TheTraceHasBothAttempts) {
    const support::ProgramResult result = owbctl({"--url", deadUrl(), "get", "14", "--trace", "-"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_NE(result.err.find(":OWB_getGroup:287: ERROR SocketException "), std::string::npos) << result.err;
}

TEST(Failure, AFullDiskGivesStatus1AndAMessage) {
    for (const char* const arguments : {"groups", "groups -o json", "--help", "--version"}) {
        const support::ProgramResult result = shell("\"$OWBCTL\" " + std::string(arguments) + " >/dev/full");
        EXPECT_EQ(result.exitCode, 1) << arguments;
        EXPECT_EQ(result.err, "owbctl: cannot write standard output: No space left on device\n") << arguments;
    }
}

TEST(Failure, AFullDiskFailsGet) {
    const support::ScriptedPeer peer({instances({})});
    EXPECT_EQ(shell("\"$OWBCTL\" --url " + peer.url() + " get 14 >/dev/full").exitCode, 1);
}

TEST(Failure, AClosedStandardErrorDoesNotChangeTheExitStatus) {
    const support::ScriptedPeer peer({instances({})});
    const std::string program = "\"$OWBCTL\" --url " + peer.url() + " ";
    const support::ProgramResult groups = shell(program + "groups 2>&-");
    EXPECT_EQ(groups.exitCode, 0);
    EXPECT_EQ(groups.out, shell(program + "groups").out);
    EXPECT_EQ(shell(program + "get 14 2>&-").exitCode, 0);
    EXPECT_EQ(shell(program + "get 14 0<&- 2>&-").out,
              "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
    EXPECT_EQ(shell(program + "get 99 2>&-").exitCode, 2);
    EXPECT_EQ(shell("\"$OWBCTL\" --url " + deadUrl() + " get 4 2>&-").exitCode, 15);
    EXPECT_EQ(shell(program + "groups >&- 2>&-").exitCode, 1);
}

#ifndef __SANITIZE_ADDRESS__ // reserves more memory than any such limit
/** Runs owbctl with less and less memory, down to too little for the dynamic linker, which ends with 127.
 * Returns whether there were limits between, at which it has the memory to say so. */
bool reportsLackOfMemory(const std::string& arguments, int expected) {
    bool isReported = false;
    support::ProgramResult result{};
    for (int limit = 16000; limit > 1000 && result.exitCode != 127; limit -= 50) {
        result = shell("ulimit -v " + std::to_string(limit) + "; exec \"$OWBCTL\" " + arguments);
        if (result.exitCode == 1) {
            EXPECT_EQ(result.err, "owbctl: out of memory\n") << limit << " kB";
            isReported = true;
        } else if (result.exitCode != 127) {
            EXPECT_EQ(result.exitCode, expected) << limit << " kB: " << result.err;
        }
    }
    return isReported;
}

TEST(Failure, TooLittleMemoryGivesStatus1AndAMessage) {
    EXPECT_TRUE(reportsLackOfMemory("-o json groups", 0));
    EXPECT_TRUE(reportsLackOfMemory("get 31", 2));
}
#endif

TEST(Failure, AClosedStandardOutputGivesStatus1) {
    const support::ProgramResult result = shell("\"$OWBCTL\" groups >&-");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: cannot use standard output: Bad file descriptor\n");
}

} // namespace
} // namespace owbctl_test

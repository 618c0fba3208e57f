// Behaviour that the bundled client library guarantees and an installed OpenWBEM does not: repeated requests,
// and answers without an instance.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

using namespace support::wire;

// An answer without an instance, in CIM-XML, to the message of the given number.
support::Step nothing(const std::string& message) {
    return support::Step::answer(plainReply(
        "<?xml version=\"1.0\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"" + message +
        "\" PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE NAME=\"GetInstance\">"
        "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>"));
}

TEST(Failure, AFailedReadIsRepeatedOnceOnANewConnection) {
    const support::ScriptedPeer peer({support::Step::answer("nonsense\r\n\r\n"), instances({})});
    const support::ProgramResult result = owbctl({"--url", peer.url(), "get", "14"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(peer.connections(), 2u);
}

TEST(Instance, AnAnswerWithoutAnInstanceGivesStatus12) {
    const support::ScriptedPeer peer({nothing("1")});
    const std::string url = peer.url("http", "localhost");
    const support::ProgramResult result = owbctl({"--url", url, "instance", "QAV_K70Chassis.Tag=\"x\""});
    EXPECT_EQ(result.exitCode, 12);
    EXPECT_EQ(result.err, "owbctl: group 0: no such instance\n");
}

TEST(Instance, TheFirstFailureDeterminesTheExitStatus) {
    const support::Step notFound = support::Step::answer(statusReply("404 Not Found"));
    const support::ScriptedPeer peer({notFound, notFound, nothing("2")});
    const std::string url = peer.url("http", "localhost");
    const support::ProgramResult result = owbctl({"--url", url, "instance", "QAV_System.Name=\"x\""});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.err, "owbctl: group 1: request rejected: Not Found\n"
                          "owbctl: group 2: no such instance\n");
}

} // namespace
} // namespace owbctl_test

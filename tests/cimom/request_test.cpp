// Replies to the recorded client and to other clients.
#include "Client.hpp"
#include "RunningDaemon.hpp"
#include "support/Wire.hpp"

#include <gtest/gtest.h>

using support::wire::text;

namespace {

class Requests : public RunningDaemon {
protected:
    Reply replyTo(const std::string& request) { return Client(socketPath()).exchange(request); }
    static std::string recorded(const std::string& conversation) {
        return support::readFile(TEST_DATA "/captures/ow-uds-anon/" + conversation + "/c2s.bin");
    }
};

} // namespace

TEST_F(Requests, TheRecordedClientGetsTheOperatingSystem) {
    const Reply reply = replyTo(recorded("enum_OperatingSystem"));
    EXPECT_EQ(200u, reply.status);
    const auto found = instancesIn(reply.body);
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ("QAV_OperatingSystem", found[0].getClassName());
    EXPECT_EQ("box.example.org", found[0].getPropertyValue("Name").toString());
    EXPECT_EQ("1", found[0].getPropertyValue("NumberOfProcesses").toString());
    EXPECT_EQ("32768", found[0].getPropertyValue("MaxNumberOfProcesses").toString());
    EXPECT_FALSE(found[0].getPropertyValue("LastBootUpTime"));
}

TEST_F(Requests, AGoodReplyHasTheHeadThatClientsExpect) {
    const Reply reply = replyTo(recorded("enum_OperatingSystem"));
    EXPECT_EQ(0u, reply.bytes.find("HTTP/1.1 200 Ok\r\nDate: "));
    EXPECT_TRUE(reply.hasLine("Cache-Control: no-cache"));
    EXPECT_TRUE(reply.hasLine("Server: owbcimomd/" OWBCIMOMD_VERSION " (CIMOM)"));
    EXPECT_TRUE(reply.hasLine("Content-Type: application/x-owbinary; charset=\"utf-8\""));
    EXPECT_TRUE(reply.hasLine("Ext: "));
    EXPECT_TRUE(reply.hasLine("Man: http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=01"));
    EXPECT_TRUE(reply.hasLine("Transfer-Encoding: chunked"));
    EXPECT_TRUE(reply.hasLine("01-CIMOperation: MethodResponse"));
    EXPECT_TRUE(reply.hasLine("Trailer: 01-CIMError, 01-CIMStatusCode, 01-CIMStatusDescription"));
    EXPECT_EQ(std::string::npos, reply.bytes.find("Connection:"));
    EXPECT_EQ("\r\n0\r\n\r\n", reply.bytes.substr(reply.bytes.size() - 7));
}

TEST_F(Requests, TrailersReportAnUnknownClassAfterAnEmptyBody) {
    const Reply reply = replyTo(recorded("enum_badclass"));
    EXPECT_EQ(200u, reply.status);
    EXPECT_EQ("", reply.body);
    const std::string end =
        "\r\n\r\n0\r\n01-CIMStatusCode: 5\r\n01-CIMStatusDescription: /root/cimv2:QAV_Nope\r\n\r\n";
    ASSERT_LT(end.size(), reply.bytes.size());
    EXPECT_EQ(end, reply.bytes.substr(reply.bytes.size() - end.size()));
}

TEST_F(Requests, TrailersReportAnUnknownNamespace) {
    const Reply reply = replyTo(recorded("enum_badnamespace"));
    EXPECT_EQ(200u, reply.status);
    EXPECT_TRUE(reply.hasLine("01-CIMStatusCode: 3"));
    EXPECT_TRUE(reply.hasLine("01-CIMStatusDescription: root/nosuch"));
}

TEST_F(Requests, TrailersReportAnUnsupportedOperation) {
    const Reply reply = replyTo(httpRequest(operationBody(20)));
    EXPECT_EQ(200u, reply.status);
    EXPECT_TRUE(reply.hasLine("01-CIMStatusCode: 7"));
    EXPECT_TRUE(reply.hasLine("01-CIMStatusDescription: DeleteClass"));
}

TEST_F(Requests, AnUnknownOperationGetsAnEmptyBodyWithoutTrailers) {
    const Reply chunked = replyTo(httpRequest(operationBody(99)));
    EXPECT_EQ("\r\n\r\n0\r\n\r\n", chunked.bytes.substr(chunked.bytes.size() - 9));
    EXPECT_TRUE(replyTo(httpRequest(operationBody(99), "")).hasLine("Content-Length: 0"));
}

TEST_F(Requests, WithoutTrailersTheBodyReportsAnError) {
    const Reply reply = replyTo(httpRequest(enumerateBody("QAV_Nope"), ""));
    const std::string body = std::string("\2\0\5", 3) + text("class does not exist (/root/cimv2:QAV_Nope)");
    EXPECT_EQ(200u, reply.status);
    EXPECT_EQ(body, reply.body);
    EXPECT_TRUE(reply.hasLine("Content-Length: " + std::to_string(body.size())));
    EXPECT_EQ(std::string::npos, reply.bytes.find("CIMStatusCode"));
    EXPECT_EQ(std::string::npos, reply.bytes.find("Transfer-Encoding"));
}

TEST_F(Requests, WithoutTrailersAGoodReplyHasALength) {
    const Reply reply = replyTo(httpRequest(enumerateBody("QAV_System"), ""));
    EXPECT_TRUE(reply.hasLine("Content-Length: " + std::to_string(reply.body.size())));
    EXPECT_EQ(1u, instancesIn(reply.body).size());
}

TEST_F(Requests, LineEndsInANameAddNoLinesToTheReply) {
    const Reply reply = replyTo(httpRequest(enumerateBody("Q\r\n01-CIMError: x")));
    EXPECT_TRUE(reply.hasLine("01-CIMStatusDescription: /root/cimv2:Q  01-CIMError: x"));
    EXPECT_FALSE(reply.hasLine("01-CIMError: x"));
}

TEST_F(Requests, ADescriptionInTrailersIsCutAfter1024Bytes) {
    const std::string name(70000, 'x');
    const Reply unknownClass = replyTo(httpRequest(enumerateBody(name)));
    EXPECT_EQ(200u, unknownClass.status);
    EXPECT_TRUE(unknownClass.hasLine("01-CIMStatusDescription: /root/cimv2:" + name.substr(0, 1024 - 12)));
    const Reply unknownNamespace = replyTo(httpRequest(enumerateBody("QAV_System", name)));
    EXPECT_TRUE(unknownNamespace.hasLine("02-CIMStatusDescription: " + name.substr(0, 1024)));
    EXPECT_EQ(200u, replyTo(httpRequest(enumerateBody("QAV_System"))).status);
}

TEST_F(Requests, ClassesOfOneInstanceAreServed) {
    Client client(socketPath());
    for (const char* const name :
         {"QAV_System", "QAV_OperatingSystem", "QAV_TCPStatisticalData", "QAV_TCPProtocolEndpoint",
          "QAV_UDPStatisticalData", "QAV_IPStatisticalData", "QAV_IPProtocolEndpoint",
          "QAV_ICMPStatisticalData"}) {
        const auto found = instancesIn(client.exchange(httpRequest(enumerateBody(name))).body);
        ASSERT_EQ(1u, found.size()) << name;
        EXPECT_EQ(name, found[0].getClassName());
    }
}

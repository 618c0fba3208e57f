// HTTP requests and connections of the object manager.
#include "Client.hpp"
#include "RunningDaemon.hpp"

#include <gtest/gtest.h>

namespace {

const std::string good = httpRequest(enumerateBody("QAV_System"));

class Http : public RunningDaemon {
protected:
    /** Expects an error response with this status line, and the end of the connection. */
    void expectRefusal(const std::string& statusLine, const std::string& request) {
        Client client(socketPath());
        const Reply reply = client.exchange(request);
        EXPECT_EQ(statusLine, reply.bytes.substr(0, reply.bytes.find("\r\n")));
        EXPECT_TRUE(reply.hasLine("Connection: close"));
        EXPECT_TRUE(reply.hasLine("Content-Length: 0"));
        EXPECT_TRUE(client.isClosedByPeer());
        expectService();
    }
    void expectService() { EXPECT_EQ(1u, instancesIn(Client(socketPath()).exchange(good).body).size()); }
};

std::string with(std::string request, const std::string& old, const std::string& replacement) {
    return request.replace(request.find(old), old.size(), replacement);
}

} // namespace

TEST_F(Http, AConnectionServesOneRequestAfterTheOther) {
    Client client(socketPath());
    EXPECT_TRUE(client.exchange(good).hasLine("Man: http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=01"));
    EXPECT_TRUE(client.exchange(httpRequest(enumerateBody("QAV_Nope"))).hasLine("02-CIMStatusCode: 5"));
    EXPECT_EQ(1u, instancesIn(client.exchange(good).body).size());
}

TEST_F(Http, ThePrefixOfTheExtensionFieldsWrapsAfter99) {
    Client client(socketPath());
    for (int i = 1; i < 99; ++i)
        client.exchange(good);
    EXPECT_TRUE(client.exchange(good).hasLine("99-CIMOperation: MethodResponse"));
    EXPECT_TRUE(client.exchange(good).hasLine("00-CIMOperation: MethodResponse"));
}

TEST_F(Http, AnIncompleteRequestBlocksNoOtherClient) {
    Client inHead(socketPath());
    inHead.send(good.substr(0, 30));
    Client inBody(socketPath());
    inBody.send(good.substr(0, good.size() - 5));
    expectService();
    EXPECT_EQ(1u, instancesIn(inHead.exchange(good.substr(30)).body).size());
    EXPECT_EQ(1u, instancesIn(inBody.exchange(good.substr(good.size() - 5)).body).size());
}

TEST_F(Http, ClientsThatCloseInMidRequestDoNoHarm) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{30}, good.size() - 1, good.size()})
        Client(socketPath()).send(good.substr(0, size));
    expectService();
}

TEST_F(Http, BytesThatAreNoRequestCloseTheConnection) {
    expectRefusal("HTTP/1.0 400 Bad request: There was a problem parsing the request Header",
                  std::string("\0\1\2\377 nonsense\r\n\r\n", 18));
    expectRefusal("HTTP/1.0 400 Bad request: There was a problem parsing the request Header",
                  "POST /cimom HTTP/1.1\r\nno colon\r\n\r\n");
    expectRefusal("HTTP/1.0 505 HTTP version not supported: Only HTTP/1.0 and HTTP/1.1 are supported.",
                  "POST /cimom HTTP/3.0\r\n\r\n");
}

TEST_F(Http, OtherMethodsAreNotAllowed) {
    expectRefusal("HTTP/1.1 405 Method not allowed: Method not allowed by server: GET",
                  "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    expectRefusal("HTTP/1.1 405 Method not allowed: Method not allowed by server: post",
                  with(good, "M-POST", "post"));
}

TEST_F(Http, TheErrorResponseToAMethodNamesTheAllowedOnes) {
    const Reply reply = Client(socketPath()).exchange("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_TRUE(reply.hasLine("Allow: POST, M-POST"));
}

TEST_F(Http, TheBodyReportsAnErrorInXmlToAClientThatReadsTrailersToo) {
    const std::string argument =
        "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"QAV_Nope\"/></IPARAMVALUE>";
    const Reply reply =
        Client(socketPath()).exchange(xmlRequest("EnumerateInstances", argument, "TE: trailers\r\n"));
    EXPECT_NE(std::string::npos,
              reply.body.find("<ERROR CODE=\"5\" DESCRIPTION=\"/root/cimv2:QAV_Nope\"></ERROR>"));
    EXPECT_EQ(std::string::npos, reply.bytes.find("CIMStatusCode:"));
}

TEST_F(Http, AHeadThatContradictsTheBodyIsRefused) {
    const auto exchange = [this](const std::string& method, const std::string& lines) {
        return Client(socketPath())
            .exchange(with(xmlRequest("EnumerateClassNames", "", lines), "POST", method));
    };
    EXPECT_EQ(200u, exchange("POST", "CIMMethod: EnumerateClassNames\r\nCIMObject: %72oot/cimv2\r\n").status);
    EXPECT_EQ(400u, exchange("POST", "CIMMethod: EnumerateClass\r\n").status);
    const std::string man = "Man: http://www.dmtf.org/cim/mapping/http/v1.0;ns=01\r\n";
    EXPECT_EQ(200u,
              exchange("M-POST", man + "01-CIMObject: root%2fcimv2\r\nCIMMethod: of no meaning\r\n").status);
    const Reply refused = exchange("M-POST", man + "01-CIMObject: root%2Fcimv3\r\n");
    EXPECT_EQ(400u, refused.status);
    EXPECT_TRUE(refused.hasLine("CIMError: header-mismatch"));
}

TEST_F(Http, OtherContentTypesAreNotSupported) {
    const std::string type = "application/x-owbinary";
    expectRefusal("HTTP/1.1 415 Unsupported media type: Content-Type \"text/plain; a=b\" is not supported.",
                  with(good, type, "text/plain; a=b"));
    expectRefusal(
        "HTTP/1.1 415 Unsupported media type: Content-Type \"application/x-owbinary2\" is not supported.",
        with(good, type, type + "2"));
    expectRefusal("HTTP/1.1 415 Unsupported media type: Content-Type \"\" is not supported.",
                  with(good, "Content-Type: " + type + "\r\n", ""));
}

TEST_F(Http, EncodingsAreNotSupported) {
    expectRefusal("HTTP/1.1 501 Not implemented: Transfer-Encoding \"gzip, chunked\" is not supported.",
                  with(good, "Content-Length: ", "Transfer-Encoding: gzip, chunked\r\nX-Length: "));
    expectRefusal("HTTP/1.1 406 Not acceptable: Content-Encoding \"deflate\" is not supported.",
                  with(good, "TE: trailers", "Content-Encoding: deflate"));
    EXPECT_EQ(200u,
              Client(socketPath()).exchange(with(good, "TE: trailers", "Content-Encoding: Identity")).status);
}

TEST_F(Http, WhiteSpaceAroundAContentTypeIsIgnored) {
    const std::string type = "application/x-owbinary";
    const std::string spaced = with(good, type, "Application/X-owbinary\t ; charset=\"utf-8\"");
    EXPECT_EQ(200u, Client(socketPath()).exchange(spaced).status);
}

TEST_F(Http, TheDetailOfAnErrorResponseIsCutAfter1024Bytes) {
    const std::string type(10000, 'x');
    expectRefusal("HTTP/1.1 415 Unsupported media type: Content-Type \"" + type.substr(0, 1024 - 14),
                  with(good, "application/x-owbinary", type));
}

TEST_F(Http, AnErrorResponseToHttp10IsInHttp11OnceTheHeadIsRead) {
    expectRefusal("HTTP/1.1 405 Method not allowed: Method not allowed by server: GET",
                  "GET / HTTP/1.0\r\n\r\n");
}

TEST_F(Http, ARequestWithoutABodyIsRefused) {
    expectRefusal("HTTP/1.1 411 Length required: No Content-Length or Transfer-Encoding was specified.",
                  "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/x-owbinary\r\n\r\n");
    expectRefusal("HTTP/1.1 400 Bad request: The request has no body", httpRequest(""));
}

TEST_F(Http, ATooLargeHeadOrBodyIsRefused) {
    expectRefusal("HTTP/1.0 431 Request header fields too large: The header exceeds 16384 bytes.",
                  with(good, "localhost", std::string(17000, 'x')));
    expectRefusal("HTTP/1.0 413 Request entity too large: The body exceeds 1048576 bytes.",
                  with(good, "Content-Length: ", "Content-Length: 99999999"));
}

TEST_F(Http, TheReplyToAPostHasNoFieldExt) {
    Client client(socketPath());
    const Reply reply = client.exchange(httpRequest(enumerateBody("QAV_System"), "TE: trailers\r\n", "POST"));
    EXPECT_EQ(1u, instancesIn(reply.body).size());
    EXPECT_FALSE(reply.hasLine("Ext: "));
    EXPECT_TRUE(reply.hasLine("Man: http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=01"));
}

TEST_F(Http, EachPathIsAccepted) {
    EXPECT_EQ(200u, Client(socketPath()).exchange(with(good, "/cimom", "/anything?else")).status);
}

TEST_F(Http, ABodyMayComeInChunks) {
    const std::string body = enumerateBody("QAV_System");
    const std::string head = "M-POST /cimom HTTP/1.1\r\nHost: localhost\r\nTE: trailers\r\n"
                             "Content-Type: application/x-owbinary; charset=\"utf-8\"\r\n"
                             "Transfer-Encoding: chunked\r\n\r\n";
    Client client(socketPath());
    client.send(head + "5\r\n" + body.substr(0, 5) + "\r\n1\r\n" + body.substr(5, 1) + "\r\n");
    const std::string rest = body.substr(6);
    char size[16];
    std::snprintf(size, sizeof size, "%zx\r\n", rest.size());
    EXPECT_EQ(1u, instancesIn(client.exchange(size + rest + "\r\n0\r\n\r\n").body).size());
    EXPECT_EQ(200u, client.exchange(good).status);
}

TEST_F(Http, MalformedChunksAreRefused) {
    expectRefusal(
        "HTTP/1.1 400 Bad request: There was a problem parsing the chunks of the request",
        "POST / HTTP/1.1\r\nContent-Type: application/x-owbinary\r\nTransfer-Encoding: chunked\r\n\r\n"
        "zz\r\n");
}

TEST_F(Http, ATooLongTrailerEndsItsConnectionOnly) {
    Client other(socketPath());
    EXPECT_EQ(200u, other.exchange(good).status);
    Client client(socketPath());
    client.send(
        "POST / HTTP/1.1\r\nContent-Type: application/x-owbinary\r\nTransfer-Encoding: chunked\r\n\r\n"
        "1\r\nx\r\n0\r\nX: " +
        std::string(70000, 'x') + "\r\n\r\n");
    EXPECT_TRUE(client.isClosedByPeer());
    EXPECT_EQ("owbcimomd: connection closed: field value too large", daemon().nextErrorLine());
    EXPECT_EQ(200u, other.exchange(good).status);
    expectService();
}

TEST_F(Http, ConnectionCloseEndsTheConnectionAfterTheReply) {
    Client client(socketPath());
    const Reply reply =
        client.exchange(httpRequest(enumerateBody("QAV_System"), "TE: trailers\r\nConnection: close\r\n"));
    EXPECT_EQ(1u, instancesIn(reply.body).size());
    EXPECT_EQ(std::string::npos, reply.bytes.find("Connection: close"));
    EXPECT_TRUE(client.isClosedByPeer());
}

TEST_F(Http, AReplyToHttp10HasALengthAndEndsTheConnection) {
    Client client(socketPath());
    const Reply reply = client.exchange(with(good, "HTTP/1.1", "HTTP/1.0"));
    EXPECT_TRUE(reply.hasLine("Content-Length: " + std::to_string(reply.body.size())));
    EXPECT_EQ(1u, instancesIn(reply.body).size());
    EXPECT_TRUE(client.isClosedByPeer());
}

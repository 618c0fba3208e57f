// Reading and writing single instances in both protocols.
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Clients.hpp"

namespace {

const std::string one =
    wire::chunkedReply(std::string(1, '\0') + wire::instance("Foo", {wire::stringProperty("x", "y")}));
const std::string done = wire::chunkedReply(std::string(1, '\0'));

CIMObjectPath somePath() {
    return CIMObjectPath::parse("Foo.Name=\"a\"");
}

CIMInstance someInstance() {
    CIMInstance instance("Foo");
    instance.setProperty("Name", CIMValue("a"));
    return instance;
}

// A reply in CIM-XML to the first request of a client.
std::string xmlReply(const std::string& method, const std::string& content) {
    return wire::plainReply(
        "<?xml version=\"1.0\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
        "PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE NAME=\"" +
        method + "\">" + content + "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>");
}

TEST(GetInstance, ReadsOneInstance) {
    ScriptedPeer peer({Step::answer(one)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ("instance of Foo {\nx = y;\n}\n", client.getInstance(somePath()).toString());
}

TEST(GetInstance, IsRepeatedIfAKeptConnectionIsClosed) {
    ScriptedPeer peer({Step::answer(one), Step::close(), Step::answer(one)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    client.getInstance(somePath());
    EXPECT_TRUE(client.getInstance(somePath()));
    EXPECT_EQ(3U, peer.requests().size());
}

TEST(GetInstance, OfANullPathThrowsAndSendsNothing) {
    ScriptedPeer peer({Step::answer(one)});
    for (const char* scheme : {"owbinary.wbem", "http"}) {
        CIMClient client(peer.url(scheme, "localhost").c_str(), "root/cimv2");
        EXPECT_EQ("NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced",
                  failureOf([&] { client.getInstance(CIMObjectPath::parse("")); }));
    }
    EXPECT_EQ(0U, peer.requests().size());
}

TEST(GetInstance, ThatReturnsAnotherObjectIsAnError) {
    ScriptedPeer peer({Step::answer(wire::chunkedReply(std::string("\0C\3Foo", 6)))});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ(
        "IOException: Signature does not match. In CIMBase::readSig. signature read: C, expected: I or i",
        failureOf([&] { client.getInstance(somePath()); }));
}

TEST(GetInstance, InCimXmlIsNullIfTheReplyHasNoReturnValue) {
    ScriptedPeer peer({Step::answer(xmlReply("GetInstance", ""))});
    CIMClient client(peer.url("http", "localhost").c_str(), "root/cimv2");
    EXPECT_FALSE(client.getInstance(somePath()));
}

TEST(GetInstance, InCimXmlIsAnErrorIfTheReturnValueHasNoInstance) {
    for (const char* value : {"<IRETURNVALUE/>", "<IRETURNVALUE></IRETURNVALUE>",
                              "<IRETURNVALUE><CLASSNAME NAME=\"C\"/></IRETURNVALUE>"}) {
        ScriptedPeer peer({Step::answer(xmlReply("GetInstance", value))});
        CIMClient client(peer.url("http", "localhost").c_str(), "root/cimv2");
        EXPECT_EQ("CIMException: invalid parameter passed to method (Not instance XML)",
                  failureOf([&] { client.getInstance(somePath()); }))
            << value;
    }
}

TEST(ModifyInstance, IsNeverSentTwice) {
    const std::pair<Step, const char*> ends[] = {
        {Step::close(), "HTTPException: Unable to process request: "},
        {Step::answerAndClose(wire::statusReply("408 Request Timeout")),
         "HTTPException: Unable to process request: Request Timeout"},
    };
    for (const char* scheme : {"owbinary.wbem", "http"})
        for (const auto& [end, message] : ends) {
            ScriptedPeer peer({Step::answer(done), end});
            CIMClient client(peer.url(scheme, "localhost").c_str(), "root/cimv2");
            failureOf([&] { client.modifyInstance(someInstance()); }); // leaves a connection
            EXPECT_EQ(message, failureOf([&] { client.modifyInstance(someInstance()); })) << scheme;
            EXPECT_EQ(2U, peer.requests().size()) << scheme;
        }
}

TEST(ModifyInstance, ReportsAnErrorInTheTrailersDespiteAGoodStatus) {
    ScriptedPeer peer({Step::answer(
        wire::chunkedReply(std::string(1, '\0'), {"07-CIMStatusCode: 6", "07-CIMStatusDescription: gone"}))});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    EXPECT_EQ("CIMException: requested object could not be found (gone)",
              failureOf([&] { client.modifyInstance(someInstance()); }));
}

TEST(ModifyInstance, InCimXmlRejectsAPropertyWithoutAName) {
    ScriptedPeer peer({Step::answer(done)});
    CIMClient client(peer.url("http", "localhost").c_str(), "root/cimv2");
    CIMInstance instance = someInstance();
    instance.setProperty("", CIMValue("x"));
    EXPECT_EQ("CIMException: general error (property must have a name)",
              failureOf([&] { client.modifyInstance(instance); }));
    EXPECT_EQ(0U, peer.requests().size());
}

TEST(CimXml, NumbersTheMessagesOfEachClientFromOne) {
    ScriptedPeer peer({Step::close()});
    for (int clients = 0; clients < 2; ++clients) {
        CIMClient client(peer.url("http", "localhost").c_str(), "root/cimv2");
        messageOfReading(client);
        messageOfReading(client);
    }
    const char* const ids[] = {"1", "2", "1", "2"};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NE(std::string::npos,
                  peer.requests().at(i).find(std::string("<MESSAGE ID=\"") + ids[i] + "\""))
            << i;
}

TEST(Namespace, LosesLeadingSlashesInTheBinaryProtocol) {
    ScriptedPeer peer({Step::answer(good)});
    for (const char* nameSpace : {"root/cimv2", "/root/cimv2", "//root\\cimv2"}) {
        CIMClient client(peer.url().c_str(), nameSpace);
        read(client);
        EXPECT_EQ(nameSpace, client.getNameSpace()) << "it is kept as it was given";
        const std::string request = peer.requests().back();
        EXPECT_NE(std::string::npos, request.find("-CIMObject: root%2Fcimv2\r\n")) << nameSpace;
        EXPECT_NE(std::string::npos, request.find("j\x0aroot/cimv2")) << nameSpace;
    }
}

TEST(Namespace, IsTheOneSetLast) {
    ScriptedPeer peer({Step::answer(one)});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    client.setNameSpace("root/other");
    EXPECT_EQ("root/other", client.getNameSpace());
    client.getInstance(somePath());
    EXPECT_NE(std::string::npos, peer.requests().at(0).find("root/other"));
    EXPECT_EQ(std::string::npos, peer.requests().at(0).find("root/cimv2"));
}

TEST(Namespace, IsSentUnchangedInTheHeadInCimXml) {
    ScriptedPeer peer({Step::close()});
    CIMClient client(peer.url("http", "localhost").c_str(), "/root/cimv2");
    messageOfReading(client);
    const std::string request = peer.requests().at(0);
    EXPECT_NE(std::string::npos, request.find("-CIMObject: %2Froot%2Fcimv2\r\n"));
    EXPECT_NE(std::string::npos, request.find("<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\">"));
}

TEST(Enumeration, RejectsAnInstanceOfANewerVersionAtItsNextByte) {
    const std::string body = std::string("\0oi\3", 4) + wire::text("Foobar") + std::string("\0\0\0\0\0", 5);
    EXPECT_EQ("IOException: Received invalid signature. Got: 6 Expected: 152",
              messageOfReply(wire::chunkedReply(body)));
}

} // namespace

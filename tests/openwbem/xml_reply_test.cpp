// The envelope of replies, and malformed and truncated replies.
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Record.hpp"
#include "Xml.hpp"
#include "io/Window.hpp"
#include "xml/Reply.hpp"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <utility>

namespace {

using namespace OpenWBEM;
using xml_test::repeated;

// The return value of a reply, in the form of the recording.
std::string understood(const std::string& body) {
    io::Window window(body.data(), body.size());
    xml::Reply reply(window, 1, "EnumerateInstances");
    std::ostringstream out;
    CIMInstance instance(CIMNULL);
    while (reply.next(instance))
        record::print(out, instance);
    reply.finish();
    return out.str();
}

std::string failure(const std::string& body) {
    return failureOf([&body] { understood(body); });
}

const char* const name = "<INSTANCENAME CLASSNAME=\"C\"></INSTANCENAME>";
const char* const instance = "<INSTANCE CLASSNAME=\"C\"></INSTANCE>";
const char* const printed = "INSTANCE class=C\n  [keys:]\n";

std::string named(const std::string& content = std::string(name) + instance) {
    return "<VALUE.NAMEDINSTANCE>" + content + "</VALUE.NAMEDINSTANCE>";
}

std::string response(const std::string& content) {
    return "<?xml version=\"1.0\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
           "PROTOCOLVERSION=\"1.0\">"
           "<SIMPLERSP><IMETHODRESPONSE NAME=\"EnumerateInstances\">" +
           content + "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>";
}

std::string returning(const std::string& content) {
    return response("<IRETURNVALUE>" + content + "</IRETURNVALUE>");
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(Reply, ReturnsOneInstanceAfterTheOther) {
    EXPECT_EQ(std::string(printed) + printed, understood(returning(named() + named())));
}

TEST(Reply, ReturnsAnInstanceWithoutAName) {
    EXPECT_EQ(printed, understood(returning(instance)));
}

TEST(Reply, MayHaveNoReturnValue) {
    EXPECT_EQ("", understood(returning("")));
    EXPECT_EQ("", understood(response("")));
    EXPECT_EQ("", understood(response("<IRETURNVALUE/>")));
}

TEST(Reply, SkipsElementsThatAreNotInstances) {
    EXPECT_EQ(printed,
              understood(response("<PARAMVALUE NAME=\"x\"><VALUE>1</VALUE></PARAMVALUE><IRETURNVALUE>"
                                  "<CLASSNAME NAME=\"C\"/>" +
                                  named() + "</IRETURNVALUE><PARAMVALUE NAME=\"y\"/>")));
}

TEST(Reply, LeavesTheInstanceUnchangedAtTheEnd) {
    const std::string body = returning(named());
    io::Window window(body.data(), body.size());
    xml::Reply reply(window, 1, "EnumerateInstances");
    CIMInstance last(CIMNULL);
    EXPECT_TRUE(reply.next(last));
    EXPECT_FALSE(reply.next(last));
    EXPECT_EQ(String("C"), last.getClassName());
    EXPECT_FALSE(reply.next(last));
}

TEST(Reply, MayBeFinishedBeforeItsEnd) {
    const std::string body = returning(named() + named());
    PieceSource source(body, 10);
    io::Window window(source);
    xml::Reply reply(window, 1, "EnumerateInstances");
    CIMInstance first(CIMNULL);
    reply.next(first);
    reply.finish();
    EXPECT_FALSE(reply.next(first));
    EXPECT_EQ(0U, window.size());
}

TEST(Reply, OfKnownVersionsIsAccepted) {
    const std::pair<const char*, const char*> versions[] = {
        {"CIMVERSION=\"2.0\"", "CIMVERSION=\"2.1\""},
        {"CIMVERSION=\"2.0\"", "CIMVERSION=\"2.2\""},
        {"DTDVERSION=\"2.0\"", "DTDVERSION=\"2.1\""},
        {"PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.1\""},
        {"\"EnumerateInstances\"", "\"enumerateINSTANCES\""},
    };
    for (const auto& [what, with] : versions)
        EXPECT_EQ(printed, understood(replaced(returning(named()), what, with))) << with;
}

TEST(Reply, OfAnotherVersionOrToAnotherRequestIsRejected) {
    const struct {
        const char* what;
        const char* with;
        const char* description;
    } examples[] = {
        {"CIMVERSION=\"2.0\"", "CIMVERSION=\"2.3\"", "Return is for CIMVERSION 2.3"},
        {"CIMVERSION=\"2.0\"", "", "Return is for CIMVERSION "},
        {"DTDVERSION=\"2.0\"", "DTDVERSION=\"2.2\"", "Return is for DTDVERSION 2.2"},
        {"ID=\"1\"", "ID=\"2\"", "Return messageid=2, expected=1"},
        {"ID=\"1\"", "ID=\"01\"", "Return messageid=01, expected=1"},
        {"PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.2\"", "Return is for PROTOCOLVERSION 1.2"},
        {"\"EnumerateInstances\"", "\"GetInstance\"",
         "Called EnumerateInstances but response was for GetInstance"},
    };
    for (const auto& example : examples)
        EXPECT_EQ(std::string("CIMException: invalid parameter passed to method (") + example.description +
                      ")",
                  failure(replaced(returning(named()), example.what, example.with)));
}

TEST(Reply, ReportsTheOutermostErrorFirst) {
    std::string body = replaced(returning(named()), "\"EnumerateInstances\"", "\"X\"");
    EXPECT_NE(std::string::npos, failure(body).find("Called EnumerateInstances"));
    body = replaced(body, "PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"9\"");
    EXPECT_NE(std::string::npos, failure(body).find("PROTOCOLVERSION 9"));
    body = replaced(body, "ID=\"1\"", "ID=\"9\"");
    EXPECT_NE(std::string::npos, failure(body).find("messageid=9"));
    body = replaced(body, "DTDVERSION=\"2.0\"", "DTDVERSION=\"9\"");
    EXPECT_NE(std::string::npos, failure(body).find("DTDVERSION 9"));
    body = replaced(body, "CIMVERSION=\"2.0\"", "CIMVERSION=\"9\"");
    EXPECT_NE(std::string::npos, failure(body).find("CIMVERSION 9"));
}

TEST(Reply, WithoutItsElementsIsRejected) {
    const auto notFound = [](const char* element) {
        return std::string("CIMException: general error (Invalid XML. <") + element + "> not found.)";
    };
    EXPECT_EQ(notFound("CIM"), failure(""));
    EXPECT_EQ(notFound("CIM"), failure("<?xml version=\"1.0\"?>\r\n"));
    EXPECT_EQ(notFound("CIM"), failure("<html><body>no</body></html>"));
    EXPECT_EQ(notFound("MESSAGE"), failure("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"></CIM>"));
    EXPECT_EQ(notFound("SIMPLERSP"), failure(replaced(response(""), "<SIMPLERSP>", "<SIMPLEEXPRSP>")));
    EXPECT_EQ(notFound("IMETHODRESPONSE"),
              failure(replaced(response(""), "<IMETHODRESPONSE", "<METHODRESPONSE")));
}

TEST(Reply, InABatchIsRejected) {
    EXPECT_EQ("CIMException: general error (Invalid XML. <SIMPLERSP> not found. Batches of replies are not "
              "understood.)",
              failure(replaced(response(""), "<SIMPLERSP>", "<MULTIRSP><SIMPLERSP>")));
}

TEST(Reply, ThrowsTheErrorOfTheObjectManager) {
    try {
        understood(response("\r\n<ERROR CODE=\"6\" DESCRIPTION=\"gone &amp; away\"></ERROR>\r\n"));
        FAIL() << "no exception";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIMException::NOT_FOUND, e.getErrNo());
        EXPECT_STREQ("gone & away", e.getDescription());
        EXPECT_STREQ("requested object could not be found (gone & away)", e.getMessage());
    }
}

TEST(Reply, ThrowsAnErrorWithoutDescription) {
    try {
        understood(response("<ERROR CODE=\"5\"/>"));
        FAIL() << "no exception";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIMException::INVALID_CLASS, e.getErrNo());
        EXPECT_STREQ("", e.getDescription());
    }
}

TEST(Reply, ThrowsAGeneralErrorForAnInvalidCode) {
    for (const char* code : {"", " CODE=\"x\"", " CODE=\"-1\"", " CODE=\"99999999999\""})
        EXPECT_EQ("CIMException: general error (d)",
                  failure(response(std::string("<ERROR") + code + " DESCRIPTION=\"d\"/>")));
    EXPECT_EQ("CIMException: unknown error (d)",
              failure(response("<ERROR CODE=\"200\" DESCRIPTION=\"d\"/>")));
}

TEST(Reply, ThrowsForAValueThatIsNotOfItsType) {
    EXPECT_EQ(
        "CIMException: invalid parameter passed to method (Unable to convert \"300\" into UInt8)",
        failure(returning("<INSTANCE CLASSNAME=\"C\"><PROPERTY NAME=\"p\" TYPE=\"uint8\"><VALUE>300</VALUE>"
                          "</PROPERTY></INSTANCE>")));
}

TEST(Reply, FollowedByTextIsRejected) {
    EXPECT_EQ(printed, understood(returning(named()) + "\r\n <!-- end -->"));
    EXPECT_EQ("XMLParseException: Line 2: Text after the document: x", failure(returning(named()) + "\nx"));
}

TEST(Reply, NestedWithoutEndIsRejected) {
    for (const char* element :
         {"<X>", "<VALUE.NAMEDINSTANCE>", "<INSTANCE CLASSNAME=\"C\">", "<IRETURNVALUE>"})
        EXPECT_EQ("XMLParseException: Line 1: Too deep: elements are nested too deeply",
                  failure(response("<IRETURNVALUE>" + repeated(element, 200000))))
            << element;
}

TEST(Reply, WithEndlessIgnoredMarkupIsRejected) {
    const std::string head =
        "<?xml version=\"1.0\" ?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
        "PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE NAME=\"EnumerateInstances\">"
        "<IRETURNVALUE>";
    for (const char* nothing : {" ", "<!-- nothing -->", "<Nothing/>", "<?nothing?>"}) {
        EndlessSource source(head, xml_test::repeated(nothing, 10000));
        io::Window window(source);
        xml::Reply reply(window, 1, "EnumerateInstances");
        CIMInstance none;
        EXPECT_EQ("IOException: Failed reading data: an object is too long",
                  failureOf([&] { reply.next(none); }))
            << nothing;
    }
}

} // namespace

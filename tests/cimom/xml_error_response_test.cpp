// Documents that are not requests, and requests that contradict their head.
#include "XmlCalls.hpp"

using namespace cimom;
using namespace OpenWBEM;
using namespace xml_calls;

namespace {

/** `<status> <reason>: <CIMError>` of the error response to a document. */
std::string errorResponseTo(const std::string& document) {
    try {
        replyTo(document);
        return "none";
    } catch (const UnreadableRequest& e) {
        return std::to_string(e.status()) + " " + e.reason() + ": " + e.what();
    }
}

} // namespace

TEST(XmlErrorResponse, ABodyThatContradictsItsHeadIsRefused) {
    const auto answerTo = [](std::optional<std::string> method, std::optional<std::string> object) {
        ObjectManager manager = lampManager({"red"});
        try {
            XmlHandler(manager).handle(good, Access::read, {std::move(method), std::move(object)});
            return std::string("answered");
        } catch (const UnreadableRequest& e) {
            return std::to_string(e.status()) + " " + e.reason() + ": " + e.what();
        }
    };
    const std::string mismatch = "400 Bad request: header-mismatch";
    EXPECT_EQ("answered", answerTo(std::nullopt, std::nullopt));
    EXPECT_EQ("answered", answerTo("enumerateinstances", "/Root/cimv2"));
    EXPECT_EQ(mismatch, answerTo("GetInstance", "root/cimv2"));
    EXPECT_EQ(mismatch, answerTo("", std::nullopt));
    EXPECT_EQ(mismatch, answerTo("EnumerateInstances", "root/cimv3"));
    EXPECT_EQ(mismatch, answerTo(std::nullopt, ""));
}

TEST(XmlErrorResponse, ADocumentThatIsNotWellFormedIsRefused) {
    EXPECT_EQ("400 Bad request: request-not-well-formed",
              errorResponseTo(replaced(good, "</SIMPLEREQ>", "")));
    EXPECT_EQ("400 Bad request: request-not-well-formed", errorResponseTo("CIM"));
    EXPECT_EQ("400 Bad request: request-not-well-formed", errorResponseTo(good + "<CIM/>"));
}

TEST(XmlErrorResponse, ADocumentThatIsNotARequestIsRefused) {
    const std::string loosely = "400 Bad request: request-not-loosely-valid";
    EXPECT_EQ(loosely, errorResponseTo(""));
    EXPECT_EQ(loosely, errorResponseTo("<HTML/>"));
    EXPECT_EQ(loosely, errorResponseTo("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"/>"));
    EXPECT_EQ(loosely, errorResponseTo("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE/></CIM>"));
    EXPECT_EQ(loosely, errorResponseTo(replaced(replaced(good, "<SIMPLEREQ>", "<SIMPLERSP>"), "</SIMPLEREQ>",
                                                "</SIMPLERSP>")));
    EXPECT_EQ(loosely, errorResponseTo(
                           replaced(replaced(good, "<IMETHODCALL", "<CALL"), "</IMETHODCALL>", "</CALL>")));
}

TEST(XmlErrorResponse, OtherVersionsAndBatchesAreNotImplemented) {
    EXPECT_EQ("501 Not implemented: unsupported-cim-version",
              errorResponseTo(replaced(good, "CIMVERSION=\"2.0\"", "CIMVERSION=\"1.0\"")));
    for (const char* const version : {"3.0", "20.1", "2", "2.", "2.x", ""})
        EXPECT_EQ("501 Not implemented: unsupported-dtd-version",
                  errorResponseTo(
                      replaced(good, "DTDVERSION=\"2.0\"", "DTDVERSION=\"" + std::string(version) + "\"")))
            << version;
    EXPECT_EQ("501 Not implemented: multiple-requests-unsupported",
              errorResponseTo(
                  replaced(replaced(good, "<SIMPLEREQ>", "<MULTIREQ>"), "</SIMPLEREQ>", "</MULTIREQ>")));
}

TEST(XmlErrorResponse, EachMinorVersionOfVersionTwoIsAccepted) {
    for (const char* const version : {"2.0", "2.1", "2.4", "2.3.1", "2.10"}) {
        const auto with = [version](const char* attribute) {
            return attribute + ("=\"" + std::string(version)) + "\"";
        };
        EXPECT_EQ("none", errorResponseTo(replaced(replaced(good, "CIMVERSION=\"2.0\"", with("CIMVERSION")),
                                                   "DTDVERSION=\"2.0\"", with("DTDVERSION"))))
            << version;
    }
}

TEST(XmlErrorResponse, AnIncompleteWriteIsNotCarriedOut) {
    const std::string whole = modification(lampName("red"), room);
    ObjectManager manager = lampManager({"red"});
    const XmlHandler handler(manager);
    const std::size_t end = whole.find_last_of('>');
    for (std::size_t size = 0; size <= end; ++size)
        EXPECT_THROW(handler.handle(whole.substr(0, size), Access::write), UnreadableRequest) << size;
    const CIMObjectPath path = CIMObjectPath::parse("QAV_Lamp.Colour=\"red\"");
    EXPECT_FALSE(manager.getProperty("root/cimv2", path, "Room"));
    handler.handle(whole.substr(0, end + 1), Access::write);
    EXPECT_EQ("hall", manager.getProperty("root/cimv2", path, "Room").toString());
}

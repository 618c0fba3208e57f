// Sends every recorded request to our object manager. The client library must decode our reply to the same
// result as the recorded reply. Where our reply differs, a comment at the test gives the reason.
#include "RecordedSchema.hpp"
#include "SessionRun.hpp"
#include "Understood.hpp"
#include "openwbem/Record.hpp"
#include "schema/Namespace.hpp"
#include "support/Pattern.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

using namespace cimom;
using namespace OpenWBEM;
using record::Conversation;

namespace {

struct Exchange {
    std::string request;
    std::string reply;
};

/** The requests of a conversation and their replies, without replies with status 401: our object manager
 * never sends it to a local client, whose user the kernel reports. */
std::vector<Exchange> exchanges(const Conversation& conversation) {
    const std::vector<std::string> requests = record::splitReplies(conversation.sent());
    const std::vector<std::string> replies = record::splitReplies(conversation.received());
    EXPECT_EQ(requests.size(), replies.size());
    std::vector<Exchange> all;
    for (std::size_t i = 0; i < std::min(requests.size(), replies.size()); ++i) {
        if (replies[i].find("HTTP/1.1 401 ") != 0)
            all.push_back({requests[i], replies[i]});
    }
    return all;
}

/** The replies of our object manager to all requests, sent at once. */
std::vector<std::string> ourReplies(ObjectManager& manager, const std::vector<Exchange>& all) {
    std::string sent;
    for (const Exchange& each : all)
        sent += each.request;
    return record::splitReplies(SessionRun(manager).answerTo(sent));
}

Understood ourAnswer(ObjectManager& manager, const std::string& request) {
    return understood(request, SessionRun(manager).answerTo(request));
}

/** The path of an instance and its recorded form, with the properties sorted by name: in the recorded object
 * manager a write changes the order of properties. */
std::string text(const CIMInstance& instance) {
    std::ostringstream printed;
    record::print(printed, instance);
    std::istringstream in(printed.str());
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    std::string result =
        CIMObjectPath(instance.getClassName(), instance.getKeyValuePairs()).modelPath().c_str();
    for (const std::string& line : lines)
        result += "\n" + line;
    return result;
}

std::vector<std::string> texts(const std::vector<CIMInstance>& instances) {
    std::vector<std::string> all;
    for (const CIMInstance& each : instances)
        all.push_back(text(each));
    return all;
}

/** Expects exactly equal values of the instances. */
void expectSameValues(const CIMInstance& expected, const CIMInstance& found) {
    for (const CIMProperty& property : expected.getProperties()) {
        const CIMValue value = found.getPropertyValue(property.getName());
        ASSERT_EQ(static_cast<bool>(property.getValue()), static_cast<bool>(value));
        EXPECT_TRUE(!value || property.getValue() == value) << property.getName();
    }
}

/** Our object manager has no subclasses: its enumeration of a class (enum_Base, enum_shallow) contains only
 * instances of the class itself. */
bool isOfSubclass(const CIMInstance& instance) {
    return instance.getClassName() == "QAV_Derived";
}

void expectSame(Understood expected, const Understood& found) {
    expected.instances.erase(
        std::remove_if(expected.instances.begin(), expected.instances.end(), isOfSubclass),
        expected.instances.end());
    EXPECT_EQ(expected.error, found.error);
    ASSERT_EQ(texts(expected.instances), texts(found.instances));
    for (std::size_t i = 0; i < found.instances.size(); ++i)
        expectSameValues(expected.instances[i], found.instances[i]);
}

/** The conversations with at least one answered request. */
std::vector<Conversation> answeredConversations() {
    std::vector<Conversation> chosen;
    for (const Conversation& each : record::conversations()) {
        if (!exchanges(each).empty())
            chosen.push_back(each);
    }
    return chosen;
}

const Conversation bareWrites[] = {{"ow-uds-anon/modify_bare_ok"}, {"xml-tcp-anon/modify_bare_ok"}};

/** A property of the instance that the recorded client writes to. */
std::string written(const ObjectManager& manager, const char* property) {
    const CIMInstance chassis = manager.getInstance(
        servedNamespace,
        CIMObjectPath::parse("QAV_K70Chassis.Tag=\"chassis-1\",CreationClassName=\"QAV_K70Chassis\""),
        nullptr);
    const CIMValue value = chassis.getPropertyValue(property);
    return value ? value.toString().c_str() : "NULL";
}

std::string replaced(std::string text, const std::string& part, const std::string& with) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? text : text.replace(at, part.size(), with);
}

/** Turns a recorded write of ElementName into a write of CanBeFRUed. */
std::string writingABoolean(const std::string& request) {
    std::string body = record::bodyOf(request);
    std::string head = request.substr(0, request.size() - body.size());
    const std::string length = "Content-Length: ";
    head = replaced(head, length + std::to_string(body.size()), length + std::to_string(body.size() - 1));
    body = replaced(body,
                    "\x0b"
                    "ElementName",
                    "\x0a"
                    "CanBeFRUed");
    return head + replaced(body, "\"ElementName\"", "\"CanBeFRUed\"");
}

/** The instances that earlier conversations have changed. A conversation that writes reads them first. */
std::vector<CIMInstance> leftByWritesBefore(const Conversation& conversation, const Exchange& first) {
    if (conversation.directory.find("/modify_") == std::string::npos)
        return {};
    return understood(first.request, first.reply).instances;
}

class RecordedRequest : public testing::TestWithParam<Conversation> {};

} // namespace

TEST_P(RecordedRequest, IsAnsweredAsRecorded) {
    const std::vector<Exchange> all = exchanges(GetParam());
    ObjectManager manager = recordedManager(recordedClasses(), leftByWritesBefore(GetParam(), all[0]));
    const std::vector<std::string> replies = ourReplies(manager, all);
    ASSERT_EQ(all.size(), replies.size());
    for (std::size_t i = 0; i < all.size(); ++i)
        expectSame(understood(all[i].request, all[i].reply), understood(all[i].request, replies[i]));
}

INSTANTIATE_TEST_SUITE_P(Conversations, RecordedRequest, testing::ValuesIn(answeredConversations()),
                         [](const auto& test) {
                             return support::replacedAll(test.param.directory, "[^A-Za-z0-9]", "_");
                         });

TEST(RecordedRequests, AreAllThere) {
    std::size_t requests = 0;
    std::size_t instances = 0;
    std::size_t errors = 0;
    for (const Conversation& conversation : answeredConversations()) {
        for (const Exchange& each : exchanges(conversation)) {
            const Understood answer = understood(each.request, each.reply);
            ++requests;
            instances += answer.instances.size();
            errors += answer.error.empty() ? 0 : 1;
        }
    }
    EXPECT_EQ(63u, answeredConversations().size());
    EXPECT_EQ(75u, requests);
    EXPECT_EQ(3084u, instances);
    EXPECT_EQ(15u, errors);
}

TEST(RecordedRequests, OfALocalClientAreAnsweredWhateverItsLogin) {
    const Conversation anonymous{"ow-uds-anon/enum_OperatingSystem"};
    for (const char* const group : {"ow-uds-basic-badpw", "ow-uds-nocreds-refused"}) {
        const Conversation refused{std::string(group) + "/enum_OperatingSystem"};
        EXPECT_TRUE(exchanges(refused).empty());
        ObjectManager manager = recordedManager(recordedClasses());
        for (const std::string& request : record::splitReplies(refused.sent()))
            expectSame(understood(anonymous.sent(), anonymous.received()), ourAnswer(manager, request));
    }
}

// The recorded object manager replaces the whole instance: it clears properties that the write does not name.
TEST(RecordedRequests, AWriteChangesWhatItNamesAndNothingElse) {
    for (const Conversation& conversation : bareWrites) {
        ObjectManager manager = recordedManager(recordedClasses());
        EXPECT_EQ("NULL", written(manager, "ElementName")) << conversation;
        EXPECT_EQ("", ourAnswer(manager, conversation.sent()).error) << conversation;
        EXPECT_EQ("bare", written(manager, "ElementName")) << conversation;
        EXPECT_EQ("false", written(manager, "CanBeFRUed")) << conversation;
    }
}

// The recorded object manager accepts writes to any property.
TEST(RecordedRequests, AWriteOfTheHostsStateIsRefused) {
    for (const Conversation& conversation : bareWrites) {
        std::vector<ClassDeclaration> classes = recordedClasses();
        for (ClassDeclaration& declaration : classes) {
            for (PropertyDeclaration& property : declaration.properties)
                property.role = property.role == Role::site ? Role::state : property.role;
        }
        ObjectManager manager = recordedManager(std::move(classes));
        EXPECT_EQ("7 ElementName", ourAnswer(manager, conversation.sent()).error) << conversation;
        EXPECT_EQ("NULL", written(manager, "ElementName")) << conversation;
    }
}

// The recorded object manager reports code 1. The recorded client rejects such a value itself and sends
// nothing.
TEST(RecordedRequests, AWriteOfAValueThatDoesNotConvertIsRefused) {
    for (const Conversation& conversation : bareWrites) {
        ObjectManager manager = recordedManager(recordedClasses());
        EXPECT_EQ("13 CanBeFRUed: general error (Unable to convert \"bare\" into bool)",
                  ourAnswer(manager, writingABoolean(conversation.sent())).error)
            << conversation;
        EXPECT_EQ("false", written(manager, "CanBeFRUed")) << conversation;
    }
}

// Compares the requests of an independent CIM-XML client with those of the client library.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Record.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"

#include <gtest/gtest.h>
#include <regex>
#include <string>

namespace {

using namespace OpenWBEM;
using record::Conversation;
using support::ScriptedPeer;
using support::Step;

const Conversation reading{"http-tcp-anon/get_ok"};
const Conversation writing{"xml-tcp-anon/modify_ok"};
const char readPath[] =
    "QAV_OperatingSystem.CreationClassName=\"QAV_OperatingSystem\",Name=\"linux-box.example.org\"";
const char writePath[] = "QAV_K70Chassis.Tag=\"chassis-1\",CreationClassName=\"QAV_K70Chassis\"";

std::string header(const std::string& request, const std::string& name) {
    std::smatch found;
    const std::regex line("\r\n(?:[0-9][0-9]-)?" + name + ": ([^\r]*)\r\n");
    return std::regex_search(request, found, line) ? found[1].str() : "none";
}

std::string replacedAll(const std::string& text, const char* pattern, const char* with) {
    return std::regex_replace(text, std::regex(pattern), with);
}

// Normalizes a request: operation and document, without layout, message ID, and arguments that equal their
// defaults (DSP0200, default values of the parameters).
std::string meaning(const std::string& request) {
    std::string text = header(request, "CIMOperation") + ' ' + header(request, "CIMMethod") + ' ' +
                       header(request, "CIMObject") + ' ' + header(request, "Content-Type") + '\n';
    std::string body = request.substr(request.find("\r\n\r\n") + 4);
    body = replacedAll(body, ">[ \r\n]+<", "><");
    body = replacedAll(body, "[ \r\n]+$", "");
    body = replacedAll(body, " >", ">");
    body = replacedAll(body, "MESSAGE ID=\"[0-9]+\"", "MESSAGE");
    for (const char* argument : {"DeepInheritance\"><VALUE>TRUE", "IncludeQualifiers\"><VALUE>FALSE"})
        body = replacedAll(
            body, (std::string("<IPARAMVALUE NAME=\"") + argument + "</VALUE></IPARAMVALUE>").c_str(), "");
    return text + body;
}

// The replies of a recorded conversation, with the message IDs of the client under test.
std::vector<Step> steps(const Conversation& conversation, const std::string& number) {
    std::vector<Step> all;
    for (const std::string& reply : record::splitReplies(conversation.received())) {
        const std::string body = replacedAll(record::bodyOf(reply), "MESSAGE ID=\"[0-9]+\"",
                                             ("MESSAGE ID=\"" + number + "\"").c_str());
        all.push_back(Step::answer("HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=\"utf-8\"\r\n"
                                   "CIMOperation: MethodResponse\r\nContent-Length: " +
                                   std::to_string(body.size()) + "\r\n\r\n" + body));
    }
    return all;
}

std::vector<std::string> requestsOfWbemcli(const Conversation& answers,
                                           const std::vector<std::string>& command, const std::string& path) {
    ScriptedPeer peer(steps(answers, "4711"), support::Listening::ipv4); // its constant message ID
    std::vector<std::string> arguments{WBEMCLI};
    arguments.insert(arguments.end(), command.begin(), command.end());
    arguments.push_back("http://127.0.0.1:" + std::to_string(peer.port()) + "/root/cimv2:" + path);
    if (command[0] == "mi")
        arguments.push_back("Model=changed");
    support::runProgram(arguments);
    return peer.requests();
}

TEST(Wbemcli, EnumeratesInstancesLikeTheClientLibrary) {
    const auto theirs = requestsOfWbemcli(reading, {"ei"}, "QAV_OperatingSystem");
    ScriptedPeer peer({Step::close()}, support::Listening::ipv4);
    CIMClient client(peer.url("http", "127.0.0.1").c_str(), "root/cimv2");
    EXPECT_ANY_THROW(client.enumInstancesE("QAV_OperatingSystem", WBEMFlags::E_DEEP,
                                           WBEMFlags::E_NOT_LOCAL_ONLY, WBEMFlags::E_EXCLUDE_QUALIFIERS,
                                           WBEMFlags::E_INCLUDE_CLASS_ORIGIN));
    EXPECT_EQ(meaning(theirs.at(0)), meaning(peer.requests().at(0)));
}

TEST(Wbemcli, GetsAnInstanceLikeTheClientLibrary) {
    const auto theirs = requestsOfWbemcli(reading, {"gi"}, readPath);
    ScriptedPeer peer({Step::close()}, support::Listening::ipv4);
    CIMClient client(peer.url("http", "127.0.0.1").c_str(), "root/cimv2");
    EXPECT_ANY_THROW(client.getInstance(CIMObjectPath::parse(readPath), WBEMFlags::E_NOT_LOCAL_ONLY,
                                        WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_INCLUDE_CLASS_ORIGIN));
    EXPECT_EQ(meaning(theirs.at(0)), meaning(peer.requests().at(0)));
}

TEST(Wbemcli, ModifiesAnInstanceLikeTheClientLibrary) {
    const auto theirs = requestsOfWbemcli(writing, {"mi"}, writePath);
    const std::vector<std::string> replies = record::splitReplies(writing.received());
    ScriptedPeer peer({Step::answer(replies.at(0)), Step::answer(replies.at(1))}, support::Listening::ipv4);
    CIMClient client(peer.url("http", "127.0.0.1").c_str(), "root/cimv2");
    const CIMObjectPath path = CIMObjectPath::parse(writePath);
    CIMInstance instance = client.getInstance(path);
    client.modifyInstance(instance.setKeys(path.getKeys()).setProperty("Model", CIMValue("changed")));
    EXPECT_EQ(meaning(theirs.at(1)), meaning(peer.requests().at(1)));
}

} // namespace

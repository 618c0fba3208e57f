// Replays every recorded conversation. The requests of the client library equal the recorded ones except for
// variable parts, and it decodes the recorded replies like the recorded client.
#include "OW_CIMClass.hpp"
#include "OW_CIMClient.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Record.hpp"
#include "support/Pattern.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"
#include "types/ObjectData.hpp"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/stat.h>

namespace {

using namespace OpenWBEM;
using record::Conversation;
using support::ScriptedPeer;
using support::Step;
using Arguments = std::vector<std::string>;

// Masks the parts that differ between two runs of a conversation. Each request has its own pair of digits.
std::string withoutWhatVaries(std::string requests) {
    const std::pair<const char*, const char*> varying[] = {
        {"User-Agent: [^\r]*\r\n", ""},
        {"uid=\"[0-9]+\"", "uid=\"0\""},
        {"ns=[0-9][0-9]\r\n", "ns=NN\r\n"},
        {"\n[0-9][0-9]-CIM", "\nNN-CIM"},
        {"<MESSAGE ID=\"[0-9]+\"", "<MESSAGE ID=\"N\""},
    };
    for (const auto& [pattern, replacement] : varying)
        requests = support::replacedAll(requests, pattern, replacement);
    // The length includes the digits of the message ID.
    if (requests.find("<MESSAGE ID") != std::string::npos)
        requests = support::replacedAll(requests, "Content-Length: [0-9]+", "Content-Length: N");
    return requests;
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

std::string textBetween(const std::string& text, const std::string& before, const std::string& after) {
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
}

// The cookie file that the recorded replies name.
class Cookie {
public:
    explicit Cookie(const Conversation& conversation)
        : m_received(conversation.received()) {
        const std::string before = "cookiefile=\"";
        if (m_received.find(before) == std::string::npos)
            return;
        const std::string path = m_directory.file("cookie");
        std::ofstream(path) << textBetween(conversation.sent(), "cookie=\"", "\"");
        ::chmod(path.c_str(), S_IRUSR);
        m_received = replaced(m_received, textBetween(m_received, before, "\""), path);
    }
    /** The recorded replies, with the path of this file. */
    std::string received() const { return m_received; }

private:
    support::TempDir m_directory;
    std::string m_received;
};

std::vector<Step> stepsOf(const std::string& received) {
    std::vector<Step> steps;
    for (const std::string& reply : record::splitReplies(received))
        steps.push_back(reply.find("\r\nConnection: close") == std::string::npos
                            ? Step::answer(reply)
                            : Step::answerAndClose(reply));
    return steps;
}

// A key property as the recorded client created it: the qualifier has only a name and a value.
CIMProperty keyProperty(const CIMProperty& key) {
    Qualifier qualifier;
    qualifier.name = "Key";
    qualifier.value = CIMValue(true);
    qualifier.type = ObjectAccess::dataType(CIMDataType::CIMNULL, 0, 0, String());
    qualifier.typeFlavors.push_back(1);
    qualifier.typeFlavors.push_back(4);
    auto* const data = new Declaration(ObjectAccess::declaration(key));
    const detail::Shared<Declaration> declaration(data);
    data->qualifiers.push_back(qualifier);
    return ObjectAccess::property(declaration, key.getValue());
}

// Runs the operation of the recorded command.
void runOperation(CIMClient& client, const Arguments& arguments, std::ostream& out) {
    const std::string& operation = arguments[3];
    const String target = arguments[4].c_str();
    if (operation == "enum") {
        record::print(out, client.enumInstancesE(target));
    } else if (operation == "enumflags") {
        const auto flag = [&arguments](std::size_t i) { return arguments[5 + i] == "1"; };
        record::print(out,
                      client.enumInstancesE(
                          target, flag(0) ? WBEMFlags::E_DEEP : WBEMFlags::E_SHALLOW,
                          flag(1) ? WBEMFlags::E_LOCAL_ONLY : WBEMFlags::E_NOT_LOCAL_ONLY,
                          flag(2) ? WBEMFlags::E_INCLUDE_QUALIFIERS : WBEMFlags::E_EXCLUDE_QUALIFIERS,
                          flag(3) ? WBEMFlags::E_INCLUDE_CLASS_ORIGIN : WBEMFlags::E_EXCLUDE_CLASS_ORIGIN));
    } else if (operation == "get") {
        record::print(out, client.getInstance(CIMObjectPath::parse(target)));
    } else {
        const CIMObjectPath path = CIMObjectPath::parse(target);
        const bool isBare = operation == "modifybare";
        CIMInstance instance =
            isBare ? CIMClass(path.getClassName().c_str()).newInstance() : client.getInstance(path);
        if (isBare) {
            CIMPropertyArray keys;
            const CIMPropertyArray parsed = path.getKeys();
            for (const CIMProperty& key : parsed) {
                keys.push_back(keyProperty(key));
                instance.setProperty(keyProperty(key));
            }
            instance.setKeys(keys);
        }
        instance.setProperty(arguments[5].c_str(),
                             CIMValue::createSimpleValue(arguments[6].c_str(), arguments[7].c_str()));
        client.modifyInstance(instance,
                              isBare ? WBEMFlags::E_EXCLUDE_QUALIFIERS : WBEMFlags::E_INCLUDE_QUALIFIERS);
        out << "MODIFY OK\n";
        if (!isBare)
            record::print(out, client.getInstance(path));
    }
    out << "rc=0\n";
}

std::string decoded(const std::string& url, const Arguments& arguments) {
    std::ostringstream out;
    try {
        CIMClient client(url.c_str(), arguments[2].c_str());
        runOperation(client, arguments, out);
    } catch (const CIMException& e) {
        record::print(out, e);
        out << "\n   CIMException errno=" << e.getErrNo() << " codeStr? description=[" << e.getDescription()
            << "]\nrc=1\n";
    } catch (const Exception& e) {
        record::print(out, e);
        out << "\nrc=1\n";
    }
    return out.str();
}

// Removes the source locations of the recorded client.
std::string comparable(const std::string& result) {
    return support::replacedAll(result, " file=[^\n]*", "");
}

class Capture : public testing::TestWithParam<Conversation> {};

TEST_P(Capture, IsSentAndDecodedAsRecorded) {
    const Arguments arguments = GetParam().command();
    const Cookie cookie(GetParam());
    const bool isTcp = arguments[1].find(":15988") != std::string::npos;
    ScriptedPeer peer(stepsOf(cookie.received()),
                      isTcp ? support::Listening::ipv4 : support::Listening::unixDomain);
    const std::string address = peer.url().substr(peer.url().rfind(':') + 1);
    const std::string url = replaced(arguments[1], isTcp ? "15988" : "%2ftmp%2fOW_PROXY_UDS", address);

    EXPECT_EQ(comparable(GetParam().result()), decoded(url, arguments));
    std::string requests;
    for (const std::string& request : peer.requests())
        requests += request;
    EXPECT_EQ(withoutWhatVaries(GetParam().sent()), withoutWhatVaries(requests));
}

INSTANTIATE_TEST_SUITE_P(Conversations, Capture, testing::ValuesIn(record::conversations()),
                         [](const auto& test) {
                             return support::replacedAll(test.param.directory, "[^A-Za-z0-9]", "_");
                         });

TEST(Captures, AreComplete) {
    EXPECT_EQ(65U, record::conversations().size());
}

} // namespace

// Recorded conversations: our request equals the recorded one but for what varies by nature, and we
// understand of the recorded answer what the recorded client did.
#include "OW_CIMClient.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Enumeration.hpp"

#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>

namespace {

using namespace OpenWBEM;
using support::readFile;
using support::ScriptedPeer;
using support::Step;

const char* text(bool value) {
    return value ? "true" : "false";
}

void print(std::ostream& out, const CIMProperty& property) {
    const CIMDataType type = property.getDataType();
    out << "  " << property.getName() << " dt=" << type.toString() << '(' << type.getType()
        << ") dtArray=" << text(type.isArrayType()) << " isKey=false";
    const CIMValue value = property.getValue();
    if (!value) {
        out << " NULL\n";
        return;
    }
    const String valueText = value.toString();
    out << " vtype=" << value.getType() << " isArray=" << text(value.isArray())
        << " n=" << value.getArraySize() << " toString=["
        << std::string(valueText.c_str(), valueText.length()) << "]\n";
}

void print(std::ostream& out, const CIMInstance& instance) {
    out << "INSTANCE class=" << instance.getClassName() << '\n';
    const CIMPropertyArray properties = instance.getProperties();
    for (const CIMProperty& property : properties)
        print(out, property);
    out << "  [keys:";
    const CIMPropertyArray keys = instance.getKeyValuePairs();
    for (const CIMProperty& key : keys)
        out << ' ' << key.getName();
    out << "]\n";
}

struct Conversation {
    const char* folder;
    const char* className;
    const char* nameSpace;
    WBEMFlags::EDeepFlag deep;
};

std::ostream& operator<<(std::ostream& out, const Conversation& conversation) {
    return out << conversation.folder;
}

// What differs between two runs of one conversation, and what this build of the client does not offer yet.
std::string withoutWhatVaries(std::string request) {
    const std::pair<const char*, const char*> varying[] = {
        {"User-Agent: [^\r]*\r\n", ""},   {"Accept-Encoding: deflate\r\n", ""}, // compression is not built in
        {"uid=\"[0-9]+\"", "uid=\"0\""},  {"ns=[0-9][0-9]\r\n", "ns=NN\r\n"},
        {"\n[0-9][0-9]-CIM", "\nNN-CIM"},
    };
    for (const auto& [pattern, replacement] : varying)
        request = std::regex_replace(request, std::regex(pattern), replacement);
    return request;
}

class Capture : public testing::TestWithParam<Conversation> {
protected:
    static std::string recorded(const std::string& file) {
        return readFile(std::string(TEST_DATA "/captures/") + GetParam().folder + "/" + file);
    }

    // Everything that the client understood, in the words of the record.
    static std::string replay(const std::string& url) {
        std::ostringstream out;
        CIMClient client(url.c_str(), GetParam().nameSpace);
        CIMInstanceEnumeration instances = client.enumInstancesE(GetParam().className, GetParam().deep);
        const std::size_t count = instances.numberOfElements();
        while (instances.hasMoreElements())
            print(out, instances.nextElement());
        out << "COUNT " << count << "\nrc=0\n";
        return out.str();
    }
};

class GoodCapture : public Capture {};

TEST_P(GoodCapture, IsSentAndUnderstoodAsRecorded) {
    ScriptedPeer peer({Step::answer(recorded("s2c.bin"))});
    EXPECT_EQ(recorded("out.txt"), replay(peer.url()));
    EXPECT_EQ(withoutWhatVaries(recorded("c2s.bin")), withoutWhatVaries(peer.requests().at(0)));
}

INSTANTIATE_TEST_SUITE_P(
    Conversations, GoodCapture,
    testing::Values(
        Conversation{"enum_AllTypes", "QAV_AllTypes", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_AllArrays", "QAV_AllArrays", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_Base", "QAV_Base", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_K70Chassis", "QAV_K70Chassis", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_Many", "QAV_Many", "/root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_MediaAccessDevice", "QAV_MediaAccessDevice", "//root\\cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_OperatingSystem", "QAV_OperatingSystem", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_noinstances", "QAV_Empty", "root/cimv2", WBEMFlags::E_DEEP},
        Conversation{"enum_shallow", "QAV_Base", "root/cimv2", WBEMFlags::E_SHALLOW}));

class BadCapture : public Capture {};

TEST_P(BadCapture, IsTheRecordedError) {
    ScriptedPeer peer({Step::answer(recorded("s2c.bin"))});
    try {
        replay(peer.url());
        FAIL() << "no exception";
    } catch (const CIMException& e) {
        const std::string out = recorded("out.txt");
        EXPECT_NE(std::string::npos, out.find("getMessage()=[" + std::string(e.getMessage()) + "]"))
            << e.getMessage();
        EXPECT_NE(std::string::npos, out.find(" code=" + std::to_string(e.getErrorCode()) + " "));
        EXPECT_NE(std::string::npos, out.find("description=[" + std::string(e.getDescription()) + "]"));
        EXPECT_STREQ("CIMException", e.type());
    }
    EXPECT_EQ(withoutWhatVaries(recorded("c2s.bin")), withoutWhatVaries(peer.requests().at(0)));
}

INSTANTIATE_TEST_SUITE_P(Conversations, BadCapture,
                         testing::Values(Conversation{"enum_badclass", "QAV_Nope", "root/cimv2",
                                                      WBEMFlags::E_DEEP},
                                         Conversation{"enum_badnamespace", "QAV_OperatingSystem",
                                                      "root/nosuch", WBEMFlags::E_DEEP}));

} // namespace

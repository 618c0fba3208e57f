// Memory that runs out while a reply is read.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_Exception.hpp"

#include "Record.hpp"
#include "support/FailingAllocator.hpp"
#include "support/ScriptedPeer.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
namespace memory = support::memory;
using support::ScriptedPeer;
using support::Step;

enum class Outcome { read, refused, foreign };

// Reads with a new client. Memory is short from one allocation on until the read has ended.
Outcome readWithout(long allocation, const char* url, const char* className) {
    CIMClient client(url, "root/cimv2");
    const String name(className);
    memory::failFrom(allocation);
    Outcome outcome = Outcome::read;
    try {
        client.enumInstancesE(name);
    } catch (const Exception&) {
        outcome = Outcome::refused;
    } catch (...) {
        outcome = Outcome::foreign;
    }
    memory::stopFailing();
    return outcome;
}

// Lets one allocation after the other be the first that fails, until the read gets by without it.
void expectExceptionsOnly(const char* conversation, const char* scheme, const char* className) {
    const std::string reply = record::Conversation{conversation}.received();
    const ScriptedPeer peer({Step::answer(reply)});
    const std::string url = peer.url(scheme, "localhost");
    ASSERT_EQ(Outcome::read, readWithout(-1, url.c_str(), className));
    const long before = memory::outstanding();
    long allocation = 0;
    while (readWithout(allocation, url.c_str(), className) == Outcome::refused) {
        ASSERT_EQ(before, memory::outstanding()) << "allocation " << allocation;
        ++allocation;
    }
    EXPECT_EQ(Outcome::read, readWithout(allocation, url.c_str(), className)) << "allocation " << allocation;
    EXPECT_LT(100, allocation);
}

TEST(OutOfMemory, InABinaryReplyIsAnExceptionAndLosesNothing) {
    expectExceptionsOnly("ow-uds-anon/enum_AllTypes", "owbinary.wbem", "QAV_AllTypes");
}

TEST(OutOfMemory, InACimXmlReplyIsAnExceptionAndLosesNothing) {
    expectExceptionsOnly("xml-uds-anon/enum_OperatingSystem", "cimxml.wbem", "QAV_OperatingSystem");
}

} // namespace

// Out of memory while a reply is read.
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

enum class Outcome { read, rejected, foreign };

// Reads with a new client. All allocations from a given one on fail until the read returns.
Outcome readWithout(long allocation, const char* url, const char* className) {
    CIMClient client(url, "root/cimv2");
    const String name(className);
    memory::failFrom(allocation);
    Outcome outcome = Outcome::read;
    try {
        client.enumInstancesE(name);
    } catch (const Exception&) {
        outcome = Outcome::rejected;
    } catch (...) {
        outcome = Outcome::foreign;
    }
    memory::stopFailing();
    return outcome;
}

// Fails from the first, the second, ... allocation on, until the read succeeds.
void expectExceptionsOnly(const char* conversation, const char* scheme, const char* className) {
    const std::string reply = record::Conversation{conversation}.received();
    const ScriptedPeer peer({Step::answer(reply)});
    const std::string url = peer.url(scheme, "localhost");
    ASSERT_EQ(Outcome::read, readWithout(-1, url.c_str(), className));
    const long before = memory::outstanding();
    long allocation = 0;
    while (readWithout(allocation, url.c_str(), className) == Outcome::rejected) {
        ASSERT_EQ(before, memory::outstanding()) << "allocation " << allocation;
        ++allocation;
    }
    EXPECT_EQ(Outcome::read, readWithout(allocation, url.c_str(), className)) << "allocation " << allocation;
    EXPECT_LT(100, allocation);
}

TEST(OutOfMemory, InABinaryReplyIsAnExceptionWithoutALeak) {
    expectExceptionsOnly("ow-uds-anon/enum_AllTypes", "owbinary.wbem", "QAV_AllTypes");
}

TEST(OutOfMemory, InACimXmlReplyIsAnExceptionWithoutALeak) {
    expectExceptionsOnly("xml-uds-anon/enum_OperatingSystem", "cimxml.wbem", "QAV_OperatingSystem");
}

} // namespace

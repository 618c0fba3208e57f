// The memory of an enumeration, and its release while instances are removed.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Record.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <malloc.h>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace OpenWBEM;
using support::ScriptedPeer;
using support::Step;

const std::size_t instances = 10000;
const std::size_t bytesPerInstance = 400;

/** A recorded reply of 1,000 instances of seven properties: the instances, and the bytes before and after
 * them. */
struct Protocol {
    const char* conversation;
    const char* scheme;
    const char* firstInstance;
    const char* afterLast;
};
std::ostream& operator<<(std::ostream& out, const Protocol& protocol) {
    return out << protocol.scheme;
}

class EnumerationMemory : public testing::TestWithParam<Protocol> {
protected:
    // One read in advance, so that one-time allocations do not count.
    CIMInstanceEnumeration read() {
        CIMClient(m_url.c_str(), "root/cimv2").enumInstancesE("QAV_Many");
        CIMClient client(m_url.c_str(), "root/cimv2");
        malloc_trim(0);
        m_before = used();
        return client.enumInstancesE("QAV_Many");
    }
    /** Bytes allocated since the start of read(), including the overhead of malloc(). */
    std::size_t allocated() const { return used() - m_before; }
    /** Bytes mapped from the kernel, without those allocated before read(). */
    std::size_t resident() const {
        const struct mallinfo2 info = mallinfo2();
        return info.arena + info.hblkhd - m_before;
    }

private:
    static std::size_t used() {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    }
    static std::string reply() {
        const Protocol& protocol = GetParam();
        const std::string body = record::bodyOf(record::Conversation{protocol.conversation}.received());
        const std::size_t first = body.find(protocol.firstInstance);
        const std::size_t last = body.rfind(protocol.afterLast);
        std::string whole = body.substr(0, first);
        for (std::size_t i = 0; i < instances; i += 1000)
            whole += body.substr(first, last - first);
        return support::wire::chunkedReply(whole + body.substr(last));
    }

    const ScriptedPeer m_peer{{Step::answer(reply())}};
    const std::string m_url = m_peer.url(GetParam().scheme, "localhost");
    std::size_t m_before = 0;
};

TEST_P(EnumerationMemory, IsAtMost400BytesAnInstanceOfSevenProperties) {
    const CIMInstanceEnumeration all = read();
    ASSERT_EQ(instances, all.numberOfElements());
    EXPECT_LE(allocated(), instances * bytesPerInstance);
}

TEST_P(EnumerationMemory, OfARemovedInstanceIsFreedWithTheNextOne) {
    CIMInstanceEnumeration all = read();
    const std::size_t whole = allocated();
    CIMInstance instance;
    for (std::size_t taken = 0; taken < instances / 2; ++taken)
        all.nextElement(instance);
    EXPECT_LE(allocated(), whole / 2 + whole / 100);
    while (all.hasMoreElements())
        all.nextElement(instance);
    EXPECT_LE(allocated(), whole / 100);
}

/** An agent's representation of a value: an item of ten words and a copy of its text. */
struct Items {
    ~Items() {
        for (void* const part : parts)
            std::free(part);
    }
    void add(const CIMValue& value) {
        const std::string text = value.toString().c_str();
        for (void* const part : {std::malloc(10 * sizeof(long)), std::malloc(text.size() + 1)}) {
            bytes += malloc_usable_size(part) + sizeof(std::size_t);
            parts.push_back(part);
        }
    }

    std::vector<void*> parts;
    std::size_t bytes = 0;
};

TEST_P(EnumerationMemory, OfRemovedInstancesIsReusedForTheirItems) {
    Items items;
    items.parts.reserve(instances * 14);
    CIMInstanceEnumeration all = read();
    const std::size_t whole = allocated();
    std::size_t peak = resident();
    CIMInstance instance;
    while (all.hasMoreElements()) {
        all.nextElement(instance);
        const CIMPropertyArray properties = instance.getProperties();
        for (const CIMProperty& property : properties)
            items.add(property.getValue());
        peak = std::max(peak, resident());
    }
    EXPECT_LE(static_cast<double>(peak), 1.15 * static_cast<double>(std::max(whole, items.bytes)));
}

INSTANTIATE_TEST_SUITE_P(
    Protocols, EnumerationMemory,
    testing::Values(Protocol{"ow-uds-anon/enum_Many", "owbinary.wbem", "i\x01\x08QAV_Many", "\x98\x98"},
                    Protocol{"xml-tcp-anon/enum_Many", "cimxml.wbem", "<VALUE.NAMEDINSTANCE>",
                             "</IRETURNVALUE>"}),
    [](const testing::TestParamInfo<Protocol>& tested) { return tested.index == 0 ? "Binary" : "CimXml"; });

} // namespace

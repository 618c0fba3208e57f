// Out of memory in a handshake and in a request over TLS.
#include "TlsFixture.hpp"
#include "support/FailingAllocator.hpp"

namespace {

namespace memory = support::memory;
using support::TlsRelay;

using TlsOutOfMemory = TlsFixture;

enum class Fails { once, fromThereOn };

// Reads with a new client; allocations fail until the read returns. Whether one has failed.
bool readWithout(long allocation, Fails fails, const std::string& url) {
    CIMClient client(url.c_str(), "root/cimv2");
    const String name("Foo");
    fails == Fails::once ? memory::failAt(allocation) : memory::failFrom(allocation);
    bool isForeign = false;
    try {
        client.enumInstancesE(name);
    } catch (const Exception&) {
    } catch (...) {
        isForeign = true;
    }
    const bool hasFailed = memory::stopFailing();
    EXPECT_FALSE(isForeign) << "allocation " << allocation;
    return hasFailed;
}

// A handshake makes thousands of allocations: fails each of the first ones, later some.
TEST_F(TlsOutOfMemory, IsAnExceptionAndTheNextReadSucceeds) {
    const ScriptedPeer peer({Step::answer(good)}, Listening::ipv4);
    const TlsRelay relay(peer.port());
    const std::string url = relay.url();
    ASSERT_EQ("no exception", messageOfReadingFrom(url));
    for (const Fails fails : {Fails::once, Fails::fromThereOn}) {
        long allocation = 0;
        for (int i = 0; readWithout(allocation, fails, url); ++i) {
            ASSERT_EQ("no exception", messageOfReadingFrom(url)) << "allocation " << allocation;
            allocation += 1 + i / 20;
        }
        EXPECT_LT(1000, allocation);
    }
}

} // namespace

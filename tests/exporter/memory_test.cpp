// Out of memory in the exporter.
#include "exporter/Block.hpp"
#include "exporter/Gzip.hpp"
#include "exporter/Preferences.hpp"
#include "support/FailingAllocator.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <new>

using namespace exporter;
namespace memory = support::memory;

namespace {

bool runsOut(const std::function<void()>& action, void (*fail)(long), long allocation) {
    fail(allocation);
    try {
        action();
    } catch (const std::bad_alloc&) {
    }
    return memory::stopFailing();
}

/** Fails each allocation of an action in turn; none may leak memory or throw another exception. */
void expectToLeakNothing(const std::function<void()>& action) {
    action();
    const long before = memory::outstanding();
    for (void (*const fail)(long) : {memory::failAt, memory::failFrom}) {
        long allocation = 0;
        while (runsOut(action, fail, allocation)) {
            ASSERT_EQ(before, memory::outstanding()) << allocation;
            ++allocation;
        }
        EXPECT_LT(0, allocation);
    }
}

} // namespace

TEST(ExporterOutOfMemory, BlocksAreNotLeaked) {
    const std::string text(5000, 'x');
    const std::string bytes =
        bytesOf({{4, 0, {}, 0}, {}, {text, text}}) + bytesOf({{5, 0, {}, 0}, {}, {text, text}});
    expectToLeakNothing([&bytes] {
        BlockDecoder decoder;
        decoder.add(bytes, [](const Block&) {});
    });
}

TEST(ExporterOutOfMemory, ACompressorIsNotLeaked) {
    const std::string text(100000, 'x');
    expectToLeakNothing([&text] {
        Gzip gzip;
        std::string bytes;
        gzip.add(text, bytes);
        gzip.finish(bytes);
    });
}

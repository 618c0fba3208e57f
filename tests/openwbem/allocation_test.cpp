// What strings, arrays and exceptions take of memory, and what they do without: operator new of this program
// stands in front of the library's.
#include "OW_Array.hpp"
#include "OW_CIMException.hpp"
#include "OW_IOException.hpp"
#include "OW_String.hpp"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <utility>

namespace {

int allocations = 0;
bool isMemoryShort = false;

/** No memory is to be had while it lives. */
struct FailingAllocations {
    FailingAllocations() { isMemoryShort = true; }
    ~FailingAllocations() { isMemoryShort = false; }
};

} // namespace

// Not inlined: GCC takes malloc() and free() in these for a mismatch with their callers.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    void* const memory = isMemoryShort ? nullptr : std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using namespace OpenWBEM;

template <class Call>
int allocationsOf(Call call) {
    const int before = allocations;
    call();
    return allocations - before;
}

TEST(Allocation, AStringTakesOne) {
    EXPECT_EQ(1, allocationsOf([] { String("some text that is longer than most", 34); }));
    EXPECT_EQ(1, allocationsOf([] { String("x"); }));
}

TEST(Allocation, AnEmptyOrCopiedOrMovedStringTakesNone) {
    const String text("x");
    EXPECT_EQ(0, allocationsOf([&text] {
                  String copy = text;
                  const String moved = std::move(copy);
                  const String empty("");
                  String assigned;
                  assigned = moved;
                  assigned = empty;
              }));
}

TEST(Allocation, AnArrayTakesOneAndNoneWhenItIsEmptyOrCopied) {
    EXPECT_EQ(0, allocationsOf([] { static_cast<void>(StringArray().empty()); }));
    StringArray array;
    EXPECT_EQ(1, allocationsOf([&array] { array.push_back(String()); }));
    EXPECT_EQ(0, allocationsOf([&array] { const StringArray copy = array; }));
}

TEST(FailingAllocator, LeavesAStringAsItWas) {
    String text("abc");
    const String copy = text;
    {
        const FailingAllocations now;
        EXPECT_THROW(String("x"), std::bad_alloc);
        EXPECT_THROW(text += "x", std::bad_alloc);
        EXPECT_THROW(text[0] = 'x', std::bad_alloc);
        EXPECT_THROW(text.toUpperCase(), std::bad_alloc);
    }
    EXPECT_EQ("abc", text);
    EXPECT_EQ("abc", copy);
}

TEST(FailingAllocator, AnExceptionLacksItsTextsOnly) {
    const FailingAllocations now;
    try {
        OW_THROW_ERR(IOException, "a message", 5);
    } catch (const IOException& e) {
        EXPECT_EQ(5, e.getErrorCode());
        EXPECT_EQ(22, e.getSubClassId());
        EXPECT_EQ(__LINE__ - 4, e.getLine());
        EXPECT_STREQ("", e.getMessage());
        EXPECT_STREQ("", e.getFile());
        EXPECT_EQ(nullptr, e.getSubException());
    }
}

TEST(FailingAllocator, ACIMExceptionTellsItsCode) {
    const FailingAllocations now;
    try {
        OW_THROWCIMMSG(CIMException::NOT_FOUND, "a description that is longer than most");
    } catch (const CIMException& e) {
        EXPECT_EQ(CIMException::NOT_FOUND, e.getErrNo());
        EXPECT_STREQ("requested object could not be found", e.getMessage());
    }
}

} // namespace

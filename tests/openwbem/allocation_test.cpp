// Allocations of strings, arrays and exceptions, and their behaviour when out of memory. The program replaces
// operator new.
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
bool isFailing = false;

/** Makes all allocations fail during its lifetime. */
struct FailingAllocations {
    FailingAllocations() { isFailing = true; }
    ~FailingAllocations() { isFailing = false; }
};

} // namespace

// Not inlined: GCC would report a mismatch between new and free().
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    void* const memory = isFailing ? nullptr : std::malloc(size);
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

TEST(Allocation, AStringNeedsOne) {
    EXPECT_EQ(1, allocationsOf([] { String("some text that is longer than most", 34); }));
    EXPECT_EQ(1, allocationsOf([] { String("x"); }));
}

TEST(Allocation, AnEmptyCopiedOrMovedStringNeedsNone) {
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

TEST(Allocation, AnArrayNeedsOneAndAnEmptyOrCopiedArrayNone) {
    EXPECT_EQ(0, allocationsOf([] { static_cast<void>(StringArray().empty()); }));
    StringArray array;
    EXPECT_EQ(1, allocationsOf([&array] { array.push_back(String()); }));
    EXPECT_EQ(0, allocationsOf([&array] { const StringArray copy = array; }));
}

TEST(FailingAllocator, LeavesAStringUnchanged) {
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

TEST(FailingAllocator, LeavesAnExceptionWithoutTexts) {
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

TEST(FailingAllocator, LeavesACIMExceptionWithItsCode) {
    const FailingAllocations now;
    try {
        OW_THROWCIMMSG(CIMException::NOT_FOUND, "a description that is longer than most");
    } catch (const CIMException& e) {
        EXPECT_EQ(CIMException::NOT_FOUND, e.getErrNo());
        EXPECT_STREQ("requested object could not be found", e.getMessage());
    }
}

} // namespace

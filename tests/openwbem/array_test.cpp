#include "OW_Array.hpp"
#include "OW_Enumeration.hpp"
#include "OW_String.hpp"

#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace OpenWBEM;

Int32Array of(std::initializer_list<Int32> elements) {
    return Int32Array(elements.begin(), elements.end());
}

template <class Call>
std::string messageOf(Call call) {
    try {
        call();
    } catch (const OutOfBoundsException& e) {
        EXPECT_EQ(31, e.getSubClassId());
        return e.getMessage();
    }
    return "no exception";
}

TEST(Array, IsOnePointer) {
    EXPECT_EQ(sizeof(void*), sizeof(StringArray));
}

TEST(Array, IsCreatedWithANumberOfElements) {
    EXPECT_EQ(of({0, 0}), Int32Array(2U));
    EXPECT_EQ(of({7, 7}), Int32Array(2, 7));
    EXPECT_EQ(of({7, 7}), Int32Array(2L, 7));
    EXPECT_EQ(3U, StringArray(std::size_t{3}, String("x")).size());
    EXPECT_TRUE(Int32Array().empty());
}

TEST(Array, TakesOwnershipOfAVector) {
    EXPECT_EQ(of({1, 2}), Int32Array(new std::vector<Int32>{1, 2}));
}

TEST(Array, CopiesShareUntilOneIsChanged) {
    Int32Array a = of({1, 2});
    const Int32Array b = a;
    const Int32Array& unchanged = a;
    EXPECT_EQ(&*b.begin(), &*unchanged.begin());
    a[0] = 5;
    EXPECT_EQ(of({5, 2}), a);
    EXPECT_EQ(of({1, 2}), b);
}

TEST(Array, AnIteratorOlderThanACopyPointsToTheSharedElements) {
    Int32Array a = of({1, 2});
    const Int32Array::iterator before = a.begin();
    const Int32Array b = a;
    a.push_back(3);
    EXPECT_EQ(&*before, &*b.begin());
}

TEST(Array, IteratesInBothDirections) {
    Int32Array a = of({1, 2, 3});
    const Int32Array& same = a;
    EXPECT_EQ(of({3, 2, 1}), Int32Array(a.rbegin(), a.rend()));
    EXPECT_EQ(of({3, 2, 1}), Int32Array(same.rbegin(), same.rend()));
    EXPECT_EQ(1, same.front());
    EXPECT_EQ(3, same.back());
}

TEST(Array, GrowsAtItsEndAndInside) {
    Int32Array a = of({1});
    a += 4;
    a.append(5);
    a.insert(a.begin(), 0);
    a.insert(2U, 3);
    const Int32Array two = of({2});
    a.insert(a.begin() + 2, two.begin(), two.end());
    EXPECT_EQ(of({0, 1, 2, 3, 4, 5}), a);
    a.appendArray(a);
    EXPECT_EQ(12U, a.size());
    EXPECT_EQ(5, a[11]);
    a.resize(13, 9);
    EXPECT_EQ(9, a.back());
    EXPECT_GE(a.max_size(), a.capacity());
}

TEST(Array, AcceptsItsOwnElementAsAValue) {
    StringArray a(1, String("x"));
    for (int i = 0; i < 20; ++i) {
        a.push_back(a[0]);
        a.insert(a.begin(), a.back());
    }
    a.resize(100, a[0]);
    EXPECT_EQ(StringArray(100, String("x")), a);
}

TEST(Array, IsCreatedFromInputIterators) {
    std::istringstream numbers("1 2 3");
    EXPECT_EQ(of({1, 2, 3}),
              Int32Array(std::istream_iterator<Int32>(numbers), std::istream_iterator<Int32>()));
    EXPECT_EQ(3, UInt8Array(2, 3)[1]) << "a number of elements and their value";
}

TEST(Array, AllocatesExactlyForARange) {
    const StringArray three(3, String("x"));
    EXPECT_EQ(3U, three.capacity());
    EXPECT_EQ(3U, StringArray(three.begin(), three.end()).capacity());
}

TEST(Array, RejectsMoreElementsThanFitInMemory) {
    EXPECT_THROW(Int32Array(Int32Array().max_size() + 1), std::length_error);
    Int32Array a = of({1});
    EXPECT_THROW(a.reserve(static_cast<std::size_t>(-1)), std::length_error);
    EXPECT_EQ(of({1}), a);
}

TEST(Array, Shrinks) {
    Int32Array a = of({0, 1, 2, 3, 4, 5});
    a.remove(0);
    a.remove(1, 3);
    EXPECT_EQ(of({1, 4, 5}), a);
    a.pop_back();
    a.erase(a.begin());
    EXPECT_EQ(of({4}), a);
    a.resize(0);
    EXPECT_EQ(Int32Array(), a);
}

TEST(Array, AnIndexOutOfRangeThrowsInEveryCheckedMember) {
    const std::string message = "Array Index out of bounds. size = 2, index = ";
    Int32Array a = of({1, 2});
    EXPECT_EQ(message + "2", messageOf([&a] { a[2] = 0; }));
    EXPECT_EQ(message + "2", messageOf([&a] { static_cast<void>(std::as_const(a)[2]); }));
    EXPECT_EQ(message + "2", messageOf([&a] { a.remove(2); }));
    EXPECT_EQ(message + "3", messageOf([&a] { a.remove(3, 4); }));
    EXPECT_EQ(message + "2", messageOf([&a] { a.remove(0, 3); }));
    EXPECT_EQ("Array Index out of bounds. size = 0, index = 0", messageOf([] {
                  const Int32Array none;
                  static_cast<void>(none[0]);
              }));
    a.remove(1, 1);
    EXPECT_EQ(of({1, 2}), a);
}

TEST(Array, ComparesElementByElement) {
    EXPECT_TRUE(of({1, 2}) == of({1, 2}) && of({1}) != of({2}));
    EXPECT_TRUE(of({1, 2}) < of({1, 3}) && of({1}) <= of({1}) && Int32Array() < of({0}));
    EXPECT_TRUE(of({2}) > of({1, 9}) && of({2}) >= of({2}));
}

TEST(Array, SwapsWithAnother) {
    Int32Array a = of({1});
    Int32Array b;
    swap(a, b);
    EXPECT_EQ(of({1}), b);
    EXPECT_TRUE(a.empty());
}

TEST(Enumeration, ReturnsElementsInOrder) {
    Enumeration<String> all;
    all.addElement("a");
    all.addElement("b");
    EXPECT_EQ(2U, all.numberOfElements());
    String first;
    all.nextElement(first);
    EXPECT_EQ("a", first);
    EXPECT_EQ(1U, all.numberOfElements());
    all.clear();
    EXPECT_FALSE(all.hasMoreElements());
}

TEST(Enumeration, CopiesShareOneQueue) {
    Enumeration<String> a;
    a.addElement("x");
    Enumeration<String> b = a;
    EXPECT_EQ("x", b.nextElement());
    EXPECT_FALSE(a.hasMoreElements());
}

TEST(Enumeration, NextElementThrowsAtTheEnd) {
    try {
        Enumeration<String>().nextElement();
        FAIL() << "no exception";
    } catch (const EnumerationException& e) {
        EXPECT_STREQ("Attempt to Extract from empty Enum", e.getMessage());
        EXPECT_EQ(18, e.getSubClassId());
    }
}

} // namespace

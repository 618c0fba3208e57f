#include "TestQueue.hpp"
#include "TraceLog.hpp"

#include <climits>
#include <gtest/gtest.h>
#include <ostream>

namespace {

TEST(Queue, AnItemAppendedToAnEmptyQueueIsItsFirstAndItsLast) {
    TestQueue q;
    EXPECT_EQ(1, OWB_itemAdd(q.head(), 4, 5, 6, 7, "text"));
    _qItem* const item = q->first;
    EXPECT_EQ(item, q->last);
    EXPECT_EQ(q.end(), item->next);
    EXPECT_EQ(q.end(), item->prev);
    EXPECT_EQ(1, q->size);
    EXPECT_EQ(Items{"4/5/6/7=text"}, q.items());
}

TEST(Queue, ItemsAreInTheOrderOfTheirInsertion) {
    TestQueue q;
    OWB_itemAdd(q.head(), 9, 1, 0, 0, "a");
    OWB_itemAdd(q.head(), 0, 1, 0, 0, "b");
    OWB_itemAdd(q.head(), 5, 1, 0, 0, "c");
    EXPECT_EQ((Items{"9/1/0/0=a", "0/1/0/0=b", "5/1/0/0=c"}), q.items());
    EXPECT_TRUE(q.isConsistent());
}

TEST(Queue, TheWordOfTheAgentIsNotChanged) {
    TestQueue q;
    OWB_itemAdd(q.head(), 0, 0, 0, 0, "x");
    OWB_itemExists(q.head(), 0, 0, 0, 0);
    EXPECT_EQ(0x5a5a5a5a, q->agent);
}

TEST(Queue, TheItemHasACopyOfTheText) {
    TestQueue q;
    char text[] = "before";
    OWB_itemAdd(q.head(), 0, 0, 0, 0, text);
    text[0] = 'X';
    EXPECT_STREQ("before", q->first->val);
}

struct Numbers {
    const char* text;
    unsigned long unsignedValue;
    long signedValue;
};

std::ostream& operator<<(std::ostream& out, const Numbers& numbers) {
    return out << '"' << numbers.text << '"';
}

class QueueNumbers : public testing::TestWithParam<Numbers> {};

TEST_P(QueueNumbers, AreParsedFromTheTextWhichIsKept) {
    TestQueue q;
    OWB_itemAdd(q.head(), 0, 0, 0, 0, GetParam().text);
    EXPECT_EQ(GetParam().unsignedValue, q->first->uval);
    EXPECT_EQ(GetParam().signedValue, q->first->lval);
    EXPECT_STREQ(GetParam().text, q->first->val);
}

INSTANTIATE_TEST_SUITE_P(Texts, QueueNumbers,
                         testing::Values(Numbers{"abc", 0, 0}, Numbers{"", 0, 0},
                                         Numbers{"-5", 4294967291UL, -5}, Numbers{" \t+17x", 17, 17},
                                         Numbers{"0x10", 0, 0}, Numbers{"2147483647", 2147483647UL, LONG_MAX},
                                         Numbers{"2147483648", 2147483648UL, LONG_MAX},
                                         Numbers{"4294967296", ULONG_MAX, LONG_MAX},
                                         Numbers{"-2147483649", 2147483647UL, LONG_MIN}));

TEST(Queue, ANullTextFailsAndLeavesTheQueueUnchanged) {
    TestQueue q;
    OWB_itemAdd(q.head(), 0, 0, 0, 0, "x");
    _qItem* const cursor = q->cursor;
    EXPECT_EQ(0, OWB_itemAdd(q.head(), 0, 0, 0, 0, nullptr));
    EXPECT_EQ(1, q->size);
    EXPECT_EQ(cursor, q->cursor);
}

TEST(Queue, ANullQueueFails) {
    EXPECT_EQ(0, OWB_itemAdd(nullptr, 0, 0, 0, 0, "x"));
    EXPECT_EQ(0, OWB_itemExists(nullptr, 0, 0, 0, 0));
}

TEST(Queue, SearchingAnEmptyQueueLeavesTheCursorOnTheHead) {
    TestQueue q;
    q->cursor = nullptr;
    EXPECT_EQ(0, OWB_itemExists(q.head(), 0, 0, 0, 0));
    EXPECT_EQ(q.end(), q->cursor);
}

class QueueSearch : public testing::TestWithParam<int> {};

TEST_P(QueueSearch, FindsAMatchAtEveryPositionAndNothingElse) {
    TestQueue q;
    const int size = GetParam();
    for (int i = 0; i < size; ++i)
        OWB_itemAdd(q.head(), 1, 2, i, 3, "x");
    for (int i = 0; i < size; ++i) {
        EXPECT_EQ(1, OWB_itemExists(q.head(), 1, 2, i, 3));
        EXPECT_EQ(q.at(static_cast<std::size_t>(i)), q->cursor) << "position " << i << " of " << size;
    }
    for (const long row : {-1L, static_cast<long>(size)}) {
        EXPECT_EQ(0, OWB_itemExists(q.head(), 1, 2, row, 3));
        EXPECT_EQ(q.end(), q->cursor);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, QueueSearch, testing::Values(1, 2, 3, 4, 5, 6, 7, 10, 11));

TEST(Queue, TheSearchFollowsOnlyTheLinksToTheNextItem) {
    _qItem items[5]{};
    _qHead head{};
    auto* const sentinel = reinterpret_cast<_qItem*>(&head);
    for (int i = 0; i < 5; ++i) {
        items[i].row = i;
        items[i].next = i < 4 ? &items[i + 1] : sentinel;
    }
    head.first = &items[0];
    head.size = -77; // says nothing
    EXPECT_EQ(1, OWB_itemExists(&head, 0, 0, 4, 0));
    EXPECT_EQ(&items[4], head.cursor);
    EXPECT_EQ(0, OWB_itemExists(&head, 0, 0, 5, 0));
    EXPECT_EQ(sentinel, head.cursor);
}

TEST(Queue, AMatchComparesAllFourNumbers) {
    TestQueue q;
    OWB_itemAdd(q.head(), 1, 2, 3, 4, "x");
    EXPECT_EQ(1, OWB_itemExists(q.head(), 1, 2, 3, 4));
    EXPECT_EQ(0, OWB_itemExists(q.head(), 0, 2, 3, 4));
    EXPECT_EQ(0, OWB_itemExists(q.head(), 1, 0, 3, 4));
    EXPECT_EQ(0, OWB_itemExists(q.head(), 1, 2, 0, 4));
    EXPECT_EQ(0, OWB_itemExists(q.head(), 1, 2, 3, 0));
}

TEST(Queue, NegativeNumbersMatchLikeOthers) {
    TestQueue q;
    OWB_itemAdd(q.head(), -1, -2, -3, -4, "x");
    EXPECT_EQ(1, OWB_itemExists(q.head(), -1, -2, -3, -4));
}

// Appends a queue of distinct rows with two duplicates at the given positions, and searches for them.
void expectFrontMostOfTwo(std::size_t size, std::size_t first, std::size_t second) {
    TestQueue q;
    for (std::size_t i = 0; i < size; ++i) {
        const bool isDuplicate = i == first || i == second;
        OWB_itemAdd(q.head(), 0, 0, isDuplicate ? -1 : static_cast<long>(i), 0, "x");
    }
    EXPECT_EQ(1, OWB_itemExists(q.head(), 0, 0, -1, 0));
    EXPECT_EQ(q.at(first), q->cursor) << "duplicates at " << first << " and " << second << " of " << size;
}

TEST(Queue, OfTwoMatchesTheFirstWinsAtAnyPosition) {
    runWithoutTrace([] { // a child, for the duplicates are printed
        for (std::size_t size = 2; size <= 7; ++size)
            for (std::size_t first = 0; first < size; ++first)
                for (std::size_t second = first + 1; second < size; ++second)
                    expectFrontMostOfTwo(size, first, second);
    });
}

TEST(Queue, OfManyMatchesTheFirstWins) {
    runWithoutTrace([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 0, 1, 0, "x");
        for (int i = 0; i < 6; ++i)
            OWB_itemAdd(q.head(), 0, 0, 0, 0, "x");
        EXPECT_EQ(1, OWB_itemExists(q.head(), 0, 0, 0, 0));
        EXPECT_EQ(q.at(1), q->cursor);
    });
}

TEST(Queue, ADuplicateIsReportedOnStandardOutputAndAppended) {
    const std::string out = runWithoutTrace([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 2, 3, "first");
        EXPECT_EQ(1, OWB_itemAdd(q.head(), 0, 1, 2, 3, "second"));
        EXPECT_EQ((Items{"0/1/2/3=first", "0/1/2/3=second"}), q.items());
        EXPECT_EQ(2, q->size);
        EXPECT_TRUE(q.isConsistent());
    });
    EXPECT_EQ("ZUL: duplicate item 'Model' group: 0 nom: 1 row: 2 array: 3\n"
              "\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n",
              out);
}

TEST(Queue, OnlyADuplicateIsPrinted) {
    EXPECT_EQ("", runWithoutTrace([] {
                  TestQueue q;
                  OWB_itemAdd(q.head(), 0, 1, 2, 3, "x");
                  OWB_itemAdd(q.head(), 0, 1, 2, 4, "x");
                  OWB_itemAdd(nullptr, 0, 1, 2, 3, "x");
                  OWB_itemAdd(q.head(), 0, 1, 2, 3, nullptr);
              }));
}

} // namespace

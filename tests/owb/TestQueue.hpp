#ifndef TESTS_OWB_TEST_QUEUE_HPP
#define TESTS_OWB_TEST_QUEUE_HPP
#include "owb.h"

#include <cstdlib>
#include <string>
#include <vector>

/** An agent's queue: set up empty, its items freed at the end. */
class TestQueue {
public:
    TestQueue() { clear(); }
    ~TestQueue() { freeItems(); }
    TestQueue(const TestQueue&) = delete;
    TestQueue& operator=(const TestQueue&) = delete;

    _qHead* head() { return &m_head; }
    _qHead* operator->() { return &m_head; }
    /** The head as the sentinel of its list. */
    _qItem* end() { return reinterpret_cast<_qItem*>(&m_head); }

    /** The n-th item from the front; the sentinel when there are fewer. */
    _qItem* at(std::size_t n) {
        _qItem* item = m_head.first;
        while (n-- > 0 && item != end())
            item = item->next;
        return item;
    }

    /** Each item as "group/nominator/row/array=text", from the front. */
    std::vector<std::string> items() {
        std::vector<std::string> texts;
        for (_qItem* item = m_head.first; item != end(); item = item->next)
            texts.push_back(std::to_string(item->group) + "/" + std::to_string(item->nom) + "/" +
                            std::to_string(item->row) + "/" + std::to_string(item->array) + "=" + item->val);
        return texts;
    }

    /** Whether both chains hold the same items, as many as the head says. */
    bool isConsistent() {
        long forward = 0;
        for (_qItem* item = m_head.first; item != end(); item = item->next, ++forward)
            if (item->next != end() && item->next->prev != item)
                return false;
        long backward = 0;
        for (_qItem* item = m_head.last; item != end(); item = item->prev)
            ++backward;
        return forward == m_head.size && backward == m_head.size;
    }

private:
    void clear() {
        m_head.first = m_head.last = m_head.cursor = end();
        m_head.size = 0;
        m_head.agent = 0x5a5a5a5a;
    }
    void freeItems() {
        for (_qItem* item = m_head.first; item != end();) {
            _qItem* const next = item->next;
            std::free(item->val);
            std::free(item);
            item = next;
        }
        clear();
    }

    _qHead m_head;
};

using Items = std::vector<std::string>;

#endif

#ifndef TESTS_OWB_TEST_QUEUE_HPP
#define TESTS_OWB_TEST_QUEUE_HPP
#include "support/AgentQueue.hpp"

#include <string>
#include <vector>

/** An agent's queue with access to its items for tests. */
class TestQueue : public support::AgentQueue {
public:
    /** The n-th item, from 0; the sentinel if there are fewer. */
    _qItem* at(std::size_t n) {
        _qItem* item = head()->first;
        while (n-- > 0 && item != end())
            item = item->next;
        return item;
    }

    /** Each item as "group/nominator/row/array=text". */
    std::vector<std::string> items() {
        std::vector<std::string> texts;
        for (_qItem* item = head()->first; item != end(); item = item->next)
            texts.push_back(std::to_string(item->group) + "/" + std::to_string(item->nom) + "/" +
                            std::to_string(item->row) + "/" + std::to_string(item->array) + "=" + item->val);
        return texts;
    }

    /** Whether both directions link the same items, as many as the size says. */
    bool isConsistent() {
        long forward = 0;
        for (_qItem* item = head()->first; item != end(); item = item->next, ++forward)
            if (item->next != end() && item->next->prev != item)
                return false;
        long backward = 0;
        for (_qItem* item = head()->last; item != end(); item = item->prev)
            ++backward;
        return forward == head()->size && backward == head()->size;
    }
};

using Items = std::vector<std::string>;

#endif

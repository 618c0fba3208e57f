#ifndef BENCH_AGENT_QUEUE_HPP
#define BENCH_AGENT_QUEUE_HPP
#include "owb.h"

#include <cstdlib>

namespace bench {

/** An agent's queue that can be emptied and filled again. */
class AgentQueue {
public:
    AgentQueue() { setUp(); }
    ~AgentQueue() { clear(); }
    AgentQueue(const AgentQueue&) = delete;
    AgentQueue& operator=(const AgentQueue&) = delete;

    _qHead* head() { return &m_head; }
    _qItem* end() { return reinterpret_cast<_qItem*>(&m_head); }

    void clear() {
        for (_qItem* item = m_head.first; item != end();) {
            _qItem* const next = item->next;
            std::free(item->val);
            std::free(item);
            item = next;
        }
        setUp();
    }

private:
    void setUp() {
        m_head.first = m_head.last = m_head.cursor = end();
        m_head.size = 0;
        m_head.agent = 0;
    }

    _qHead m_head;
};

} // namespace bench
#endif

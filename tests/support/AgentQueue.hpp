#ifndef TESTS_SUPPORT_AGENT_QUEUE_HPP
#define TESTS_SUPPORT_AGENT_QUEUE_HPP
#include "owb.h"

#include <cstdlib>

namespace support {

/** An agent's queue, initially empty. The destructor frees its items. */
class AgentQueue {
public:
    AgentQueue() { setUp(); }
    ~AgentQueue() { clear(); }
    AgentQueue(const AgentQueue&) = delete;
    AgentQueue& operator=(const AgentQueue&) = delete;

    _qHead* head() { return &m_head; }
    _qHead* operator->() { return &m_head; }
    /** The head as the sentinel of its list. */
    _qItem* end() { return reinterpret_cast<_qItem*>(&m_head); }

    /** Frees all items. */
    void clear() {
        for (_qItem* item = m_head.first; item != end();) {
            _qItem* const next = item->next;
            std::free(item->val);
            std::free(item);
            item = next;
        }
        setUp();
    }

    /** The value of the head's field that belongs to the agent. */
    static const long agentWord = 0x5a5a5a5a;

private:
    void setUp() {
        m_head.first = m_head.last = m_head.cursor = end();
        m_head.size = 0;
        m_head.agent = agentWord;
    }

    _qHead m_head;
};

} // namespace support
#endif

#include "agent/Queue.hpp"

#include <cstdlib>

namespace agent {

Queue::Queue()
    : m_head() {
    m_head.first = m_head.last = m_head.cursor = reinterpret_cast<_qItem*>(&m_head);
}

Queue::~Queue() {
    _qItem* item = m_head.first;
    while (item != end()) {
        _qItem* const next = item->next;
        std::free(item->val);
        std::free(item);
        item = next;
    }
}

std::map<long, ValuesByNominator> valuesByRow(const Queue& queue, long group) {
    std::map<long, ValuesByNominator> rows;
    for (const _qItem* item = queue.begin(); item != queue.end(); item = item->next) {
        if (item->group == group)
            rows[item->row][item->nom].emplace_back(item->val);
    }
    return rows;
}

} // namespace agent

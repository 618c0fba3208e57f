#ifndef AGENT_QUEUE_HPP
#define AGENT_QUEUE_HPP

#include <owb.h>

#include <map>
#include <string>
#include <vector>

namespace agent {

/**
 * An item queue of the library. Empty at first; frees its items. Not copyable: the items point at the head.
 * For one thread at a time, like the library.
 */
class Queue {
public:
    Queue();
    ~Queue();
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;

    /** The head for calls of the library. Never null; owned by the queue. */
    _qHead* head() { return &m_head; }

    /** First item, or end() when the queue is empty. Follow `next` up to end(). */
    const _qItem* begin() const { return m_head.first; }
    const _qItem* end() const { return reinterpret_cast<const _qItem*>(&m_head); }

private:
    _qHead m_head;
};

/** Item texts of one row by nominator. The texts of an array keep their order. */
using ValuesByNominator = std::map<long, std::vector<std::string>>;

/** Copies the items of `group` in a queue, by row. */
std::map<long, ValuesByNominator> valuesByRow(const Queue& queue, long group);

} // namespace agent
#endif

#ifndef OW_ENUMERATION_HPP_INCLUDED
#define OW_ENUMERATION_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_EnumerationException.hpp"
#include <cstddef>
#include <deque>
#include <memory>
#include <utility>

namespace OpenWBEM {

/**
 * A queue of elements. Copies share the queue: an element removed through one copy is removed from all. Only
 * one thread at a time may use the copies.
 */
template <class T>
class Enumeration {
public:
    Enumeration()
        : m_queue(std::make_shared<std::deque<T>>()) {}

    bool hasMoreElements() const { return !m_queue->empty(); }
    /** The number of remaining elements. */
    std::size_t numberOfElements() const { return m_queue->size(); }
    /** Removes and returns the next element. Throws EnumerationException if there is none. */
    T nextElement() {
        if (m_queue->empty())
            OW_THROW(EnumerationException, "Attempt to Extract from empty Enum");
        T element(std::move(m_queue->front()));
        m_queue->pop_front();
        return element;
    }
    void nextElement(T& out) { out = nextElement(); }
    void addElement(const T& element) { m_queue->push_back(element); }
    void addElement(T&& element) { m_queue->push_back(std::move(element)); }
    void clear() { m_queue->clear(); }

private:
    std::shared_ptr<std::deque<T>> m_queue;
};

} // namespace OpenWBEM
#endif

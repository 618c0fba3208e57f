#include "Queue.hpp"

#include <cstdlib>

namespace owbctl {

Queue::Queue()
    : head_() {
    head_.first = head_.last = head_.cursor = reinterpret_cast<_qItem*>(&head_);
}

Queue::~Queue() {
    _qItem* item = head_.first;
    while (item != end()) {
        _qItem* const next = item->next;
        std::free(item->val);
        std::free(item);
        item = next;
    }
}

} // namespace owbctl

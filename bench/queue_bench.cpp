// Appends of an agent to its queue, each of which searches the whole queue. path_bench measures appends
// during a read.
#include "owb.h"

#include "Measure.hpp"
#include "support/AgentQueue.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using support::AgentQueue;

const long group = 10;
const long itemsPerRow = 10;

// The minimum of an append: two allocations, the text and its two numbers, the links.
void appendBare(_qHead* q, long nom, long row, const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* const sentinel = reinterpret_cast<_qItem*>(q);
    auto* const item = static_cast<_qItem*>(std::malloc(sizeof(_qItem)));
    item->val = static_cast<char*>(std::memcpy(std::malloc(size), text, size));
    item->uval = std::strtoul(text, nullptr, 10);
    item->lval = std::strtol(text, nullptr, 10);
    item->group = group;
    item->nom = nom;
    item->row = row;
    item->array = 0;
    item->next = sentinel;
    item->prev = q->last;
    (q->last == sentinel ? q->first : q->last->next) = item;
    q->last = item;
    ++q->size;
}

template <class Fill>
double microsecondsAnItem(long items, Fill fill) {
    AgentQueue queue;
    return bench::medianOf(5, [&] {
        queue.clear();
        return bench::threadSecondsOf([&] { fill(queue.head()); }) * 1e6 / static_cast<double>(items);
    });
}

void measure(long items) {
    const double bare = microsecondsAnItem(items, [&](_qHead* q) {
        for (long i = 0; i < items; ++i)
            appendBare(q, 9 + i % itemsPerRow, i / itemsPerRow, "1234567");
    });
    const double agent = microsecondsAnItem(items, [&](_qHead* q) {
        for (long i = 0; i < items; ++i)
            OWB_itemAdd(q, group, 9 + i % itemsPerRow, i / itemsPerRow, 0, "1234567");
    });
    std::printf("| %ld | %.3f | %.3f | %.1f |\n", items, bare, agent, agent / bare);
}

} // namespace

int main() {
    bench::printMachine();
    std::printf("| items | items alone, µs an item | agent's own appends, µs an item | ratio |\n"
                "|---:|---:|---:|---:|\n");
    for (const long items : {100L, 1000L, 10000L})
        bench::inChild([items] { measure(items); });
    return EXIT_SUCCESS;
}

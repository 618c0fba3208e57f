// Searching the agent's queue: the library's walk from both ends against a plain walk from the front. Every
// append searches the whole queue once, so that these times are the cost of filling it.
#include "Machine.hpp"
#include "support/AgentQueue.hpp"

#include <cstdio>
#include <vector>

namespace {

using support::AgentQueue;
using Search = long (*)(_qHead*, long, long, long, long);

// What the library's search is compared with.
__attribute__((noinline)) long plainItemExists(_qHead* q, long group, long nom, long row, long array) {
    const _qItem* const sentinel = reinterpret_cast<_qItem*>(q);
    for (q->cursor = q->first; q->cursor != sentinel; q->cursor = q->cursor->next) {
        const _qItem* const item = q->cursor;
        if (item->group == group && item->nom == nom && item->row == row && item->array == array)
            return 1;
    }
    return 0;
}

void fill(AgentQueue& queue, long items) {
    for (long i = 0; i < items; ++i)
        OWB_itemAdd(queue.head(), 10, i % 10, i / 10, 0, "1234567");
}

// Microseconds of one search that finds nothing.
double searchTime(AgentQueue& queue, long items, Search search) {
    const long searches = 5000000 / items;
    const double start = bench::threadSeconds();
    for (long i = 0; i < searches; ++i)
        if (search(queue.head(), 10, i % 10, -1, 0) != 0)
            std::abort();
    return (bench::threadSeconds() - start) * 1e6 / static_cast<double>(searches);
}

struct Comparison {
    double plain;
    double own;
    double ratio;
};

// Medians of searches taken in turn, so that both see the same machine.
Comparison compare(long items) {
    AgentQueue queue;
    fill(queue, items);
    std::vector<double> plain;
    std::vector<double> own;
    std::vector<double> ratio;
    for (int round = 0; round < 21; ++round) {
        plain.push_back(searchTime(queue, items, plainItemExists));
        own.push_back(searchTime(queue, items, OWB_itemExists));
        ratio.push_back(plain.back() / own.back());
    }
    return {bench::median(plain), bench::median(own), bench::median(ratio)};
}

double fillTime(long items) {
    return bench::medianOf(3, [items] {
        AgentQueue queue;
        const double start = bench::threadSeconds();
        fill(queue, items);
        return bench::threadSeconds() - start;
    });
}

} // namespace

int main() {
    bench::printMachine();
    std::printf("\n%8s  %16s  %16s  %8s  %12s\n", "items", "plain us/search", "owb us/search", "ratio",
                "fill ms");
    for (const long items : {100L, 1000L, 2000L, 6000L, 12000L, 24000L}) {
        const Comparison result = compare(items);
        std::printf("%8ld  %16.2f  %16.2f  %8.2f  %12.2f\n", items, result.plain, result.own, result.ratio,
                    fillTime(items) * 1e3);
    }
    return 0;
}

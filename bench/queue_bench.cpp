// Searching the agent's queue: the library's walk from both ends against a plain walk from the front. Every
// append searches the whole queue once, so that these times are the cost of filling it.
#include "Measure.hpp"
#include "support/AgentQueue.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
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
    const double seconds = bench::threadSecondsOf([&] {
        for (long i = 0; i < searches; ++i)
            if (search(queue.head(), 10, i % 10, -1, 0) != 0)
                std::abort();
    });
    return seconds * 1e6 / static_cast<double>(searches);
}

struct Comparison {
    double plain;
    double own;
    double ratio;
};

// Medians of searches taken in turn, so that both see the same machine.
Comparison compare(AgentQueue& queue, long items) {
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

// In a process of its own, whose memory is new at first and used later on.
void measure(long items) {
    AgentQueue queue;
    for (const char* const memory : {"new", "used"}) {
        queue.clear();
        const double filling = bench::threadSecondsOf([&] { fill(queue, items); });
        const Comparison search = compare(queue, items);
        const double searches = search.own / 1e6 * static_cast<double>(items) / 2; // half full on the average
        std::printf("| %ld | %s | %.2f | %.2f | %.2f | %.2f | %.2f |\n", items, memory, search.plain,
                    search.own, search.ratio, filling * 1e3, filling / searches);
        if (items == 6000)
            bench::printAim((std::string("search of 6,000 items, memory ") + memory).c_str(), "plain walks",
                            0.59, 1 / search.ratio);
    }
}

} // namespace

int main() {
    bench::printMachine();
    std::printf("| items | memory | plain, µs a search | owb, µs a search | plain / owb | filling, ms | "
                "filling / searches |\n"
                "|---:|---|---:|---:|---:|---:|---:|\n");
    for (const long items : {100L, 1000L, 2000L, 6000L, 12000L, 24000L, 100000L})
        bench::inChild([items] { measure(items); });
    return 0;
}

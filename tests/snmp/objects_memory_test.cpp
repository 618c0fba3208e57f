// Out of memory: readings become snapshots, and objects are read, or the old values stay.
#include "snmp/Readings.hpp"
#include "snmp/Snapshots.hpp"
#include "snmp/tree/Tree.hpp"
#include "support/FailingAllocator.hpp"

#include <new>
#include <stdexcept>

using namespace snmp;
using namespace snmp_test;

namespace memory = support::memory;

namespace {

constexpr auto running = static_cast<std::size_t>(Subject::running);

std::string itemsOfProcesses() {
    std::string items;
    for (long row = 0; row < 3; ++row) {
        appendItem(items, row, 2, std::to_string(100 + row));
        appendItem(items, row, 1, "a process with a name that does not fit into the text object");
        appendItem(items, row, 4, "--argument-that-is-rather-long");
    }
    return items;
}

/** Runs a body with the n-th allocation failing, for each n until none fails. A body may throw
 * std::bad_alloc; it must not leak. */
template <class Body>
void failEach(Body body) {
    bool hasFailed = true;
    for (long n = 0; hasFailed; ++n) {
        const long before = memory::outstanding();
        memory::failAt(n);
        try {
            body();
        } catch (const std::bad_alloc&) {
        }
        hasFailed = memory::stopFailing();
        EXPECT_EQ(memory::outstanding(), before) << n;
    }
}

} // namespace

TEST(ObjectsMemory, ASnapshotIsMadeOrNot) {
    tableMappings();
    const std::string items = itemsOfProcesses();
    failEach([&items] {
        Readings read;
        read.emplace_back(16, items);
        const SnapshotPointer snapshot = snapshotOf(running, read, nullptr, 0);
        if (snapshot->tables.size() != 2)
            throw std::logic_error("a snapshot without a table");
    });
}

TEST(ObjectsMemory, AValueIsFoundOrNot) {
    Readings read;
    read.emplace_back(16, itemsOfProcesses());
    const SnapshotPointer snapshot = snapshotOf(running, read, nullptr, 0);
    const auto& [number, table] = *snapshot->tables.begin();
    const Tree tree({{tableMappings()[number].entry, 0, 0}});
    const Tree::Tables tables = [&table = table](std::size_t) { return &table; };
    const SearchRange range{mib2, false, {}};
    failEach([&] { tree.next(range, tables); });
    failEach([&] { tree.get(range.start, tables); });
}

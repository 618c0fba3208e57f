// A group read from a real object manager over its socket into an empty queue, and the time of each part.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "owb.h"

#include "BareClient.hpp"
#include "ManyPorts.hpp"
#include "Measure.hpp"
#include "support/AgentQueue.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <vector>

namespace {

using bench::ManyPorts;
using OpenWBEM::CIMInstance;
using OpenWBEM::CIMInstanceEnumeration;
using support::AgentQueue;

CIMInstanceEnumeration enumerate() {
    return OWB_connect(0)->enumInstancesE(ManyPorts::className());
}

/** Processor time of the object manager for one reply. */
double managerSeconds(const ManyPorts& manager, bench::BareClient& client, const std::string& request) {
    const double before = manager.processorSeconds();
    client.exchange(request);
    return manager.processorSeconds() - before;
}

/** Converts each instance into a separate empty queue, so that no search takes time. */
double conversionSeconds(std::size_t instances) {
    std::vector<CIMInstance> all(instances);
    CIMInstanceEnumeration enumeration = enumerate();
    for (CIMInstance& instance : all)
        enumeration.nextElement(instance);
    std::vector<AgentQueue> queues(instances);
    return bench::threadSecondsOf([&] {
        for (std::size_t i = 0; i < instances; ++i)
            OWB_getInstanceData(ManyPorts::group, all[i], 0, queues[i].head());
    });
}

/** The seconds of one round of measurements. Rounds cancel out slow changes of the machine. */
struct Round {
    double manager;
    double socket;
    double reading;
    double conversion;
    double whole;
    double wall;

    double queue() const { return whole - reading - conversion; }
};

Round measureRound(int instances, const ManyPorts& manager, bench::BareClient& bare) {
    const std::string request = bench::enumerateRequest(ManyPorts::className());
    Round round{};
    round.manager = managerSeconds(manager, bare, request);
    round.socket = bench::threadSecondsOf([&] { bare.exchange(request); });
    round.reading = bench::threadSecondsOf([] { enumerate(); });
    round.conversion = conversionSeconds(static_cast<std::size_t>(instances));
    AgentQueue queue;
    round.whole = bench::threadSecondsOf([&] {
        round.wall = bench::wallSecondsOf([&] {
            if (OWB_getGroup(ManyPorts::group, queue.head()) != OWB_DONE)
                std::abort();
        });
    });
    return round;
}

// Returns the microseconds of the reading process for an instance.
double measure(int instances) {
    const ManyPorts manager(instances);
    bench::BareClient bare(manager.socketPath());
    OWB_URLSet(manager.url("owbinary.wbem").c_str());
    OWB_connect(1);

    std::vector<Round> rounds(11);
    for (Round& round : rounds)
        round = measureRound(instances, manager, bare);
    const auto median = [&](auto part) {
        std::vector<double> results;
        results.reserve(rounds.size());
        for (const Round& round : rounds)
            results.push_back(part(round));
        return bench::median(results);
    };
    const double making = median([](const Round& round) { return round.manager; });
    const double socket = median([](const Round& round) { return round.socket; });
    const double reading = median([](const Round& round) { return round.reading; });
    const double whole = median([](const Round& round) { return round.whole; });
    const double queue = median([](const Round& round) { return round.queue(); });

    const double sum = making + whole;
    const auto print = [&](const char* part, double seconds) {
        std::printf("| %d | %s | %.2f | %.1f %% |\n", instances, part, seconds * 1e6 / instances,
                    100 * seconds / sum);
    };
    print("manager", making);
    print("socket", socket);
    print("decode", reading - socket);
    print("conversion", median([](const Round& round) { return round.conversion; }));
    print("queue", queue);
    print("all, processor time", sum);
    print("all, by the clock", median([](const Round& round) { return round.wall; }));
    if (instances == 10000)
        bench::printAim("queue, 10,000 instances", "of the reading process", 0.1, queue / whole);
    return whole * 1e6 / instances;
}

// The memory of a group read compared with that of its items.
void measureMemory(const ManyPorts& manager, int instances) {
    OWB_URLSet(manager.url("owbinary.wbem").c_str());
    OWB_connect(1);
    const long start = bench::residentKilobytes();
    AgentQueue queue;
    if (OWB_getGroup(ManyPorts::group, queue.head()) != OWB_DONE)
        std::abort();
    const long peak = bench::peakKilobytes() - start;
    ::malloc_trim(0);
    const long items = bench::residentKilobytes() - start;

    queue.clear();
    ::malloc_trim(0);
    const long empty = bench::residentKilobytes();
    const CIMInstanceEnumeration all = enumerate();
    const long enumeration = bench::residentKilobytes() - empty;

    const double ratio = static_cast<double>(peak) / static_cast<double>(std::max(enumeration, items));
    std::printf("| %d | %ld | %ld | %ld | %.2f |\n", instances, enumeration, items, peak, ratio);
    if (instances == 100000)
        bench::printAim("memory of reading a group of 100,000 instances", "of enumeration or items", 1.15,
                        ratio);
}

void measureTime() {
    std::printf("| instances | part | µs an instance | share |\n|---:|---|---:|---:|\n");
    for (const int instances : {100, 1000})
        measure(instances);
    const double ten = measure(10000);
    const double hundred = measure(100000);
    bench::printAim("reading a group of 10,000 instances", "µs an instance", 6, ten);
    bench::printAim("reading a group of 100,000 instances", "times 10,000", 1.3, hundred / ten);
}

} // namespace

int main() {
    bench::printMachine();
    bench::inChild(measureTime);
    std::printf("\n| instances | enumeration, KB | items, KB | peak of OWB_getGroup, KB | of the larger |\n"
                "|---:|---:|---:|---:|---:|\n");
    for (const int instances : {1000, 10000, 100000}) {
        const ManyPorts manager(instances); // not in the child, whose peak is measured
        ::malloc_trim(0);
        bench::inChild([&] { measureMemory(manager, instances); });
    }
    return EXIT_SUCCESS;
}

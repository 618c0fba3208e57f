// Converts one instance of ten properties into items of an empty queue, compared with the minimum for such
// items: their memory, their texts and the two numbers of each.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "owb.h"

#include "Measure.hpp"
#include "support/AgentQueue.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using OpenWBEM::CIMInstance;
using support::AgentQueue;
namespace wire = support::wire;

const std::size_t queues = 1000;

/** An instance of a group. Its properties are encoded for the binary protocol. */
struct Sample {
    const char* name;
    long group;
    std::vector<std::string> properties;
};

Sample chassis() {
    return {
        "seven texts, a boolean, a number, an array of two",
        0,
        {wire::stringProperty("Model", "K70"), wire::stringProperty("VendorEquipmentType", "shelf"),
         wire::stringProperty("ElementName", "chassis number 17"),
         wire::stringProperty("Version", "1.0-beta/2"), wire::stringProperty("SerialNumber", "SN-00017"),
         wire::stringProperty("Manufacturer", "Acme"), wire::stringProperty("PartNumber", "P/N 42"),
         wire::property("CanBeFRUed", wire::BOOLEAN, "\x01"),
         wire::property("PhysicalType", wire::UINT16, wire::bigEndian(3, 2)),
         wire::arrayProperty("OtherIdentifyingInfo", wire::STRING, {wire::text("one"), wire::text("two")})}};
}

Sample statistics() {
    Sample sample = {"ten numbers of 64 bits", 11, {}};
    for (const ExtItem* row = ExtItemList; sample.properties.size() < 10; ++row)
        if (row->group == sample.group)
            sample.properties.push_back(wire::property(
                row->property, wire::UINT64, wire::bigEndian(1234567ULL * sample.properties.size(), 8)));
    return sample;
}

CIMInstance read(const Sample& sample) {
    const std::string className = ExtGroupCimClass[sample.group];
    const support::ScriptedPeer peer({support::Step::answer(
        wire::chunkedReply(wire::enumeration({wire::instance(className, sample.properties)})))});
    OpenWBEM::CIMClient client(peer.url().c_str(), "root/cimv2");
    CIMInstance instance;
    client.enumInstancesE(className.c_str()).nextElement(instance);
    return instance;
}

/** Microseconds of an action on a new empty queue. */
template <class Action>
double timeOf(Action action) {
    std::vector<AgentQueue> all(queues);
    const double seconds = bench::threadSecondsOf([&] {
        for (AgentQueue& queue : all)
            action(queue);
    });
    return seconds * 1e6 / queues;
}

/** The minimum of an append. */
void appendPlain(AgentQueue& queue, const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    auto* const item = static_cast<_qItem*>(std::malloc(sizeof(_qItem)));
    auto* const copy = static_cast<char*>(std::malloc(size));
    if (item == nullptr || copy == nullptr)
        std::abort();
    *item = {};
    item->val = static_cast<char*>(std::memcpy(copy, text, size));
    item->uval = std::strtoul(text, nullptr, 10);
    item->lval = std::strtol(text, nullptr, 10);
    item->next = queue.end();
    item->prev = queue->last;
    (queue->last == queue.end() ? queue->first : queue->last->next) = item;
    queue->last = item;
    ++queue->size;
}

/** Prints a row; returns the microseconds of a conversion. */
double measure(const Sample& sample) {
    CIMInstance instance = read(sample);
    AgentQueue converted;
    OWB_getInstanceData(sample.group, instance, 0, converted.head());
    std::vector<std::string> texts;
    for (const _qItem* item = converted->first; item != converted.end(); item = item->next)
        texts.emplace_back(item->val);

    const double plain = bench::medianOf(101, [&] {
        return timeOf([&](AgentQueue& queue) {
            for (const std::string& text : texts)
                appendPlain(queue, text.c_str());
        });
    });
    const double owb = bench::medianOf(101, [&] {
        return timeOf(
            [&](AgentQueue& queue) { OWB_getInstanceData(sample.group, instance, 0, queue.head()); });
    });
    std::printf("| %s | %zu | %.2f | %.2f | %.2f |\n", sample.name, texts.size(), plain, owb, owb / plain);
    return owb;
}

} // namespace

int main() {
    bench::printMachine();
    std::printf(
        "| instance | items | items alone, µs | conversion, µs | ratio |\n|---|---:|---:|---:|---:|\n");
    const double ofTexts = measure(chassis());
    const double ofNumbers = measure(statistics());
    bench::printAim("conversion of an instance", "µs", 2, std::max(ofTexts, ofNumbers));
    return EXIT_SUCCESS;
}

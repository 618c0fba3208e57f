// Reading a group from a replayed answer: where the time of the reading thread goes. The answer comes from a
// peer in this process over a Unix-domain socket; its own time does not count.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "owb.h"

#include "Machine.hpp"
#include "support/AgentQueue.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <cstdio>
#include <string>
#include <vector>

namespace {

using OpenWBEM::CIMInstance;
using OpenWBEM::CIMInstanceEnumeration;
using support::AgentQueue;
namespace wire = support::wire;

const long group = 0;

// A chassis with ten properties: seven texts, a boolean, a number and an array of two.
std::string chassis(std::size_t number) {
    const std::string n = std::to_string(number);
    return wire::instance(
        ExtGroupCimClass[group],
        {wire::stringProperty("Model", "K70"), wire::stringProperty("VendorEquipmentType", "shelf"),
         wire::stringProperty("ElementName", "chassis number " + n),
         wire::stringProperty("Version", "1.0-beta/2"), wire::stringProperty("SerialNumber", "SN-000" + n),
         wire::stringProperty("Manufacturer", "Acme"), wire::stringProperty("PartNumber", "P/N 42"),
         wire::property("CanBeFRUed", wire::BOOLEAN, "\x01"),
         wire::property("PhysicalType", wire::UINT16, wire::bigEndian(number % 7, 2)),
         wire::arrayProperty("OtherIdentifyingInfo", wire::STRING, {wire::text("one"), wire::text("two")})});
}

std::string reply(std::size_t instances) {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < instances; ++i)
        all.push_back(chassis(i));
    return wire::chunkedReply(wire::enumeration(all));
}

CIMInstanceEnumeration enumerate() {
    return OWB_connect(0)->enumInstancesE(ExtGroupCimClass[group]);
}

double decodeTime() {
    const double start = bench::threadSeconds();
    enumerate();
    return bench::threadSeconds() - start;
}

// Each instance into an empty queue, so that the search of the queue costs nothing.
double convertTime() {
    CIMInstanceEnumeration instances = enumerate();
    AgentQueue queue;
    CIMInstance instance;
    double total = 0;
    while (instances.hasMoreElements()) {
        instances.nextElement(instance);
        const double start = bench::threadSeconds();
        OWB_getInstanceData(group, instance, 0, queue.head());
        total += bench::threadSeconds() - start;
        queue.clear();
    }
    return total;
}

double groupTime() {
    AgentQueue queue;
    const double start = bench::threadSeconds();
    if (OWB_getGroup(group, queue.head()) != OWB_DONE)
        std::abort();
    return bench::threadSeconds() - start;
}

void measure(std::size_t instances) {
    const std::string bytes = reply(instances);
    const support::ScriptedPeer peer({support::Step::answer(bytes)});
    OWB_URLSet(peer.url().c_str());
    OWB_connect(1);
    const double perInstance = 1e6 / static_cast<double>(instances);
    const double decode = bench::medianOf(9, decodeTime) * perInstance;
    const double convert = bench::medianOf(9, convertTime) * perInstance;
    const double all = bench::medianOf(instances > 1000 ? 1 : 5, groupTime) * perInstance;
    const double queue = all - decode - convert;
    std::printf("%10zu  %10zu  %14.2f  %14.2f  %14.2f  %14.2f  %7.1f%%\n", instances, bytes.size(), decode,
                convert, queue, all, queue / all * 100);
}

} // namespace

int main() {
    bench::printMachine();
    std::printf(
        "\nprocessor time of one read, microseconds an instance\n%10s  %10s  %14s  %14s  %14s  %14s  %8s\n",
        "instances", "bytes", "decode", "convert", "queue", "all", "queue");
    measure(1000);
    measure(10000);
    return 0;
}

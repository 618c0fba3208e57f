// Reads an enumeration through the client (socket, HTTP, decoder): processor time of the reading thread and
// memory. A peer in another process replays recorded instances of seven properties.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "BareClient.hpp"
#include "Measure.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace OpenWBEM;

const std::size_t recordedInstances = 1000;

/** A recorded reply, and the bytes before and after its instances. */
struct Protocol {
    const char* name;
    const char* recording;
    const char* scheme;
    const char* firstInstance;
    const char* afterLast;
    /** Maximum microseconds to read an instance and take it from the enumeration. */
    double aim;
};

const Protocol protocols[] = {
    {"binary", "/ow-uds-anon/enum_Many/s2c.bin", "owbinary.wbem", "i\x01\x08QAV_Many", "\x98\x98", 2},
    {"CIM-XML", "/xml-tcp-anon/enum_Many/s2c.bin", "cimxml.wbem", "<VALUE.NAMEDINSTANCE>", "</IRETURNVALUE>",
     3.5},
};

std::string bodyOf(const std::string& reply) {
    std::string body;
    std::size_t at = reply.find("\r\n\r\n") + 4;
    while (const std::size_t size = std::stoul(reply.substr(at), nullptr, 16)) {
        at = reply.find("\r\n", at) + 2;
        body += reply.substr(at, size);
        at += size + 2;
    }
    return body;
}

// Chunks of the size that the recorded object manager sends.
std::string chunked(const std::string& body) {
    std::string reply = "HTTP/1.1 200 Ok\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (std::size_t at = 0; at < body.size(); at += 4096) {
        const std::string chunk = body.substr(at, 4096);
        char size[16];
        std::snprintf(size, sizeof size, "%zx\r\n", chunk.size());
        reply += size + chunk + "\r\n";
    }
    return reply + "0\r\n\r\n";
}

std::string replyOf(const Protocol& protocol, std::size_t instances) {
    const std::string body = bodyOf(support::readFile(std::string(CAPTURES) + protocol.recording));
    const std::size_t first = body.find(protocol.firstInstance);
    const std::size_t last = body.rfind(protocol.afterLast);
    std::string whole = body.substr(0, first);
    for (std::size_t i = 0; i < instances; i += recordedInstances)
        whole += body.substr(first, last - first);
    return chunked(whole + body.substr(last));
}

struct Figures {
    double read;
    double take;
    long held;
    long peak;
};

// Uses a new client, since the recorded reply answers the first request of a client. Times in seconds.
Figures measureOnce(const std::string& url, std::size_t instances) {
    CIMClient client(url.c_str(), "root/cimv2");
    Figures figures{};
    const long before = bench::residentKilobytes();
    CIMInstanceEnumeration all;
    figures.read = bench::threadSecondsOf([&] { all = client.enumInstancesE("QAV_Many"); });
    figures.held = bench::residentKilobytes() - before;
    figures.peak = bench::peakKilobytes() - before;
    if (all.numberOfElements() != instances)
        std::abort();
    figures.take = bench::threadSecondsOf([&] {
        CIMInstance instance;
        while (all.hasMoreElements())
            all.nextElement(instance);
    });
    return figures;
}

double bareSeconds(const support::ScriptedPeer& peer, const std::string& request) {
    bench::BareClient client(peer.socketPath());
    return bench::threadSecondsOf([&] { client.exchange(request); });
}

void printFigures(const Protocol& protocol, std::size_t instances, const support::ScriptedPeer& peer,
                  const std::string& request) {
    const std::string url = protocol.scheme + peer.url().substr(peer.url().find("://"));
    const Figures first = measureOnce(url, instances); // only the first run uses new memory
    std::vector<double> socket;
    std::vector<double> read;
    std::vector<double> take;
    for (int i = 0; i < 9; ++i) {
        socket.push_back(bareSeconds(peer, request));
        const Figures figures = measureOnce(url, instances);
        read.push_back(figures.read);
        take.push_back(figures.take);
    }
    const double perInstance = 1e6 / static_cast<double>(instances);
    const double bare = bench::median(socket) * perInstance;
    const double reading = bench::median(read) * perInstance;
    const double taking = bench::median(take) * perInstance;
    std::printf("| %s | %zu | %.2f | %.2f | %.1f | %.2f | %.1f | %ld | %ld |\n", protocol.name, instances,
                bare, reading, reading / bare, taking, taking / bare, first.held, first.peak);
    const std::string what =
        "reading and taking an instance of " + std::to_string(instances) + ", " + protocol.name;
    bench::printAim(what.c_str(), "µs", protocol.aim, reading + taking);
}

// Measures in a child, without the memory and time of the peer.
void measure(const Protocol& protocol, std::size_t instances, const std::string& request) {
    const support::ScriptedPeer peer({support::Step::answer(replyOf(protocol, instances))});
    bench::inChild([&] { printFigures(protocol, instances, peer, request); });
}

} // namespace

int main() {
    bench::printMachine();
    const std::string request = bench::enumerateRequest("QAV_Many");
    std::printf(
        "| protocol | instances | socket, µs | read, µs | ratio | take, µs | ratio | held, KB | peak, KB |\n"
        "|---|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const Protocol& protocol : protocols)
        for (const std::size_t instances : {1000U, 100000U})
            measure(protocol, instances, request);
    return 0;
}

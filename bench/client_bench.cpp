// Reading an enumeration through the whole client, socket, HTTP and decoder: processor time of the reading
// thread and memory. A peer in another process replays recorded instances of seven properties.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "Machine.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace OpenWBEM;

const std::size_t recordedInstances = 1000;

/** A recorded reply, and what stands around its instances. */
struct Protocol {
    const char* name;
    const char* recording;
    const char* scheme;
    const char* firstInstance;
    const char* afterLast;
};

const Protocol protocols[] = {
    {"binary", "/ow-uds-anon/enum_Many/s2c.bin", "owbinary.wbem", "i\x01\x08QAV_Many", "\x98\x98"},
    {"CIM-XML", "/xml-tcp-anon/enum_Many/s2c.bin", "cimxml.wbem", "<VALUE.NAMEDINSTANCE>", "</IRETURNVALUE>"},
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

// A number of /proc/self/status, in kilobytes (proc(5)).
long statusOf(const std::string& field) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(field + ":", 0) == 0)
            return std::atol(line.c_str() + field.size() + 1);
    return 0;
}

struct Figures {
    double read;
    double take;
    long held;
    long peak;
};

// With a client of its own, since the recorded reply answers the first request of one.
Figures measureOnce(const std::string& url, std::size_t instances) {
    CIMClient client(url.c_str(), "root/cimv2");
    Figures figures{};
    const long before = statusOf("VmRSS");
    const double start = bench::threadSeconds();
    CIMInstanceEnumeration all = client.enumInstancesE("QAV_Many");
    const double read = bench::threadSeconds();
    figures.held = statusOf("VmRSS") - before;
    figures.peak = statusOf("VmHWM") - before;
    if (all.numberOfElements() != instances)
        std::abort();
    const double taking = bench::threadSeconds();
    CIMInstance instance;
    while (all.hasMoreElements())
        all.nextElement(instance);
    const double end = bench::threadSeconds();
    figures.read = (read - start) * 1e6 / static_cast<double>(instances);
    figures.take = (end - taking) * 1e6 / static_cast<double>(instances);
    return figures;
}

void measure(const Protocol& protocol, std::size_t instances) {
    const std::string reply = replyOf(protocol, instances);
    const support::ScriptedPeer peer({support::Step::answer(reply)});
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child != 0) {
        ::waitpid(child, nullptr, 0);
        return;
    }
    const std::string url = protocol.scheme + peer.url().substr(peer.url().find("://"));
    const Figures first = measureOnce(url, instances); // the only one whose memory is new
    std::vector<double> read;
    std::vector<double> take;
    for (int i = 0; i < 9; ++i) {
        const Figures figures = measureOnce(url, instances);
        read.push_back(figures.read);
        take.push_back(figures.take);
    }
    const double bytes = static_cast<double>(reply.size()) / static_cast<double>(instances);
    std::printf("%-8s  %9zu  %6.0f  %8.2f  %8.2f  %9ld  %9ld\n", protocol.name, instances, bytes,
                bench::median(read), bench::median(take), first.held, first.peak);
    std::fflush(stdout);
    ::_exit(0);
}

} // namespace

int main() {
    bench::printMachine();
    std::printf("\nread: enumInstancesE, take: nextElement until the end; microseconds an instance\n"
                "held: memory of the enumeration, peak: the most there was while reading; KB\n"
                "%-8s  %9s  %6s  %8s  %8s  %9s  %9s\n",
                "protocol", "instances", "bytes", "read", "take", "held", "peak");
    for (const Protocol& protocol : protocols)
        for (const std::size_t instances : {1000U, 100000U})
            measure(protocol, instances);
    return 0;
}

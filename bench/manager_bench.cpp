// The object manager with one and with many clients: requests for a small class, and enumerations of 10,000
// instances. The clients are processes with the client library; they share the processors with the manager.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "ManyPorts.hpp"
#include "Measure.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const int ports = 10000;

double processorTimeOfChildren() {
    rusage used{};
    ::getrusage(RUSAGE_CHILDREN, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/** One client; never returns. */
[[noreturn]] void enumerate(const std::string& url, const char* className, int requests) {
    OpenWBEM::CIMClient client(url.c_str(), "root/cimv2");
    for (int i = 0; i < requests; ++i) {
        OpenWBEM::CIMInstanceEnumeration all = client.enumInstancesE(className);
        if (!all.hasMoreElements())
            ::_exit(1);
    }
    ::_exit(0);
}

/** The class that the clients enumerate, and the total number of requests. */
struct Load {
    const char* className;
    int instances;
    int requests;
};

/** Prints a row. The clients share the requests. */
void measure(const char* scheme, const bench::ManyPorts& manager, const Load& load, int clients) {
    const double managerBefore = manager.processorSeconds();
    const double clientsBefore = processorTimeOfChildren();
    const double seconds = bench::wallSecondsOf([&] {
        for (int i = 0; i < clients; ++i)
            if (::fork() == 0)
                enumerate(manager.url(scheme), load.className, load.requests / clients);
        for (int i = 0; i < clients; ++i) {
            int status = 0;
            if (::wait(&status) < 0 || status != 0)
                std::abort();
        }
    });
    const double ofManager = manager.processorSeconds() - managerBefore;
    const double ofClients = processorTimeOfChildren() - clientsBefore;
    const double perRequest = 1e6 / load.requests;
    std::printf("| %s | %d | %d | %.0f | %.0f | %.0f | %.0f | %.2f |\n", scheme, load.instances, clients,
                load.requests / seconds, load.instances * load.requests / seconds, ofManager * perRequest,
                ofClients * perRequest, ofManager / ofClients);
    std::fflush(stdout);
}

} // namespace

int main() {
    bench::printMachine();
    const bench::ManyPorts manager(ports);
    const Load small = {"QAV_IPProtocolEndpoint", 1, 9600}; // five properties
    const Load large = {bench::ManyPorts::className(), ports, 64};
    std::printf("| protocol | instances | clients | requests/s | instances/s | manager, µs a request "
                "| client, µs a request | manager / client |\n|---|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const char* const scheme : {"owbinary.wbem", "cimxml.wbem"})
        for (const Load& load : {small, large})
            for (const int clients : {1, 32})
                measure(scheme, manager, load, clients);
    return EXIT_SUCCESS;
}

// The object manager under one client and under many: requests for a small class, and enumerations of 10,000
// instances. The clients are processes with the client library; manager and clients share the processors.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "Machine.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const int instances = 10000;
const char* const small = "QAV_IPProtocolEndpoint";    // one instance of five properties
const char* const large = "QAV_NetworkPortStatistics"; // 14 properties

std::string siteFile() {
    std::string all;
    for (int i = 0; i < instances; ++i) {
        all +=
            (all.empty() ? "" : ",\n") + std::string("{\"InstanceID\": \"port-") + std::to_string(i) + "\"";
        for (const char* const counter :
             {"InOctets", "InUcastPkts", "InDiscards", "InErrors", "OutOctets", "OutUcastPkts", "OutErrors"})
            all += std::string(", \"") + counter + "\": " + std::to_string(1000003LL * i);
        all += "}";
    }
    return std::string("{\"") + large + "\": [" + all + "]}";
}

/** Processor time that a process has taken, in seconds; proc(5), schedstat. */
double processorTime(pid_t process) {
    double nanoseconds = 0;
    std::ifstream("/proc/" + std::to_string(process) + "/schedstat") >> nanoseconds;
    return nanoseconds / 1e9;
}

double processorTimeOfChildren() {
    rusage used{};
    ::getrusage(RUSAGE_CHILDREN, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/** The work of one client; never returns. */
[[noreturn]] void enumerate(const std::string& url, const char* className, int requests) {
    OpenWBEM::CIMClient client(url.c_str(), "root/cimv2");
    for (int i = 0; i < requests; ++i) {
        OpenWBEM::CIMInstanceEnumeration all = client.enumInstancesE(className);
        if (!all.hasMoreElements())
            ::_exit(1);
    }
    ::_exit(0);
}

/** Times as many clients as they share the requests, and prints a row. */
void measure(const char* protocol, const std::string& url, pid_t manager, const char* className, int clients,
             int requests) {
    const double managerBefore = processorTime(manager);
    const double clientsBefore = processorTimeOfChildren();
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < clients; ++i) {
        if (::fork() == 0)
            enumerate(url, className, requests / clients);
    }
    for (int i = 0; i < clients; ++i) {
        int status = 0;
        if (::wait(&status) < 0 || status != 0)
            std::abort();
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    const double ofManager = processorTime(manager) - managerBefore;
    const double ofClients = processorTimeOfChildren() - clientsBefore;
    const double perRequest = 1e6 / requests;
    std::printf("| %s | %s | %d | %.0f | %.0f | %.0f | %.0f | %.0f %% |\n", protocol, className, clients,
                requests / seconds, className == large ? instances * requests / seconds : requests / seconds,
                ofManager * perRequest, ofClients * perRequest, 100 * ofManager / (ofManager + ofClients));
    std::fflush(stdout);
}

} // namespace

int main() {
    bench::printMachine();
    const support::TempDir folder;
    folder.write("site/ports.json", siteFile());
    support::Daemon manager({OWBCIMOMD, "--socket", folder.file("s"), "--state", folder.file("state"),
                             "--instances", folder.file("site")});
    if (manager.nextErrorLine().find("ready") == std::string::npos)
        return EXIT_FAILURE;
    std::string port;
    for (const char c : folder.file("s"))
        port += c == '/' ? std::string("%2f") : std::string(1, c);

    std::printf("\n| protocol | class | clients | requests/s | instances/s | manager, us a request "
                "| client, us a request | share of the manager |\n|---|---|---:|---:|---:|---:|---:|---:|\n");
    for (const char* const protocol : {"owbinary.wbem", "cimxml.wbem"}) {
        const std::string url = std::string(protocol) + "://localhost:" + port + "/";
        for (const int clients : {1, 32})
            measure(protocol, url, manager.pid(), small, clients, 9600);
        for (const int clients : {1, 32})
            measure(protocol, url, manager.pid(), large, clients, 64);
    }
    return EXIT_SUCCESS;
}

#include "ManyPorts.hpp"

#include "owb.h"

#include "support/ScriptedPeer.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

namespace bench {
namespace {

std::string siteFile(int ports) {
    std::string all;
    for (int i = 0; i < ports; ++i) {
        all +=
            (all.empty() ? "" : ",\n") + std::string("{\"InstanceID\": \"port-") + std::to_string(i) + "\"";
        for (const char* const counter : {"InOctets", "InUcastPkts", "InNUcastPkts", "InDiscards", "InErrors",
                                          "OutOctets", "OutUcastPkts", "OutNUcastPkts", "OutErrors"})
            all += std::string(", \"") + counter + "\": " + std::to_string(1000003LL * i);
        all += "}";
    }
    return std::string("{\"") + ManyPorts::className() + "\": [" + all + "]}";
}

std::vector<std::string> command(const support::TempDir& directory, int ports,
                                 const std::vector<std::string>& options) {
    directory.write("site/ports.json", siteFile(ports));
    std::vector<std::string> all{OWBCIMOMD,
                                 "--socket",
                                 directory.file("s"),
                                 "--state",
                                 directory.file("state"),
                                 "--instances",
                                 directory.file("site")};
    all.insert(all.end(), options.begin(), options.end());
    return all;
}

} // namespace

const char* ManyPorts::className() {
    return ExtGroupCimClass[group];
}

ManyPorts::ManyPorts(int ports, const std::vector<std::string>& options)
    : m_daemon(command(m_directory, ports, options))
    , m_ready(m_daemon.nextErrorLine()) {
    if (m_ready.find("ready") == std::string::npos) {
        std::fprintf(stderr, "bench: %s\n", m_ready.c_str());
        std::exit(EXIT_FAILURE);
    }
}

std::string ManyPorts::url(const std::string& scheme) const {
    const std::string binary = support::urlOf(socketPath());
    return scheme + binary.substr(binary.find("://"));
}

// The first number of schedstat, proc(5), in nanoseconds.
double ManyPorts::processorSeconds() const {
    double nanoseconds = 0;
    std::ifstream("/proc/" + std::to_string(pid()) + "/schedstat") >> nanoseconds;
    return nanoseconds / 1e9;
}

} // namespace bench

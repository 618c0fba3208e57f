// owb-exporter: serves the groups of an object manager as metrics for Prometheus.

#include "exporter/CommandLine.hpp"
#include "exporter/Exporter.hpp"
#include "service/Log.hpp"
#include "util/OneLine.hpp"

#include <csignal>
#include <exception>
#include <iostream>
#include <sys/stat.h>

int main(int argc, char** argv) {
    // A client or a log reader may close its end: write(2) then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    // The parent may have ignored SIGCHLD: waitpid(2) would not report how a child has ended.
    std::signal(SIGCHLD, SIG_DFL);
    ::umask(0077);
    service::nameLog("owb-exporter");
    const exporter::Options options = exporter::readCommandLine(argc, argv);
    try {
        exporter::serve(options);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "owb-exporter: " << util::onOneAsciiLine(e.what()) << '\n';
        return 1;
    }
}

// owbcimomd: serves the data of this host to CIM clients.

#include "CommandLine.hpp"
#include "Daemon.hpp"
#include "service/Log.hpp"
#include "util/OneLine.hpp"

#include <csignal>
#include <exception>
#include <iostream>
#include <sys/stat.h>

int main(int argc, char** argv) {
    // A client or a log reader may close its end: write(2) then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    // Likewise a write beyond the limit on file sizes then fails with EFBIG.
    std::signal(SIGXFSZ, SIG_IGN);
    // The parent may have ignored SIGCHLD: waitpid(2) would not report how a child has ended.
    std::signal(SIGCHLD, SIG_DFL);
    // Directories of the state file are for their owner only. The socket gets its mode by chmod(2).
    ::umask(0077);
    const cimom::Options options = cimom::readCommandLine(argc, argv);
    service::nameLog("owbcimomd");
    try {
        cimom::serve(options);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "owbcimomd: " << util::onOneAsciiLine(e.what()) << '\n';
        return 1;
    }
}

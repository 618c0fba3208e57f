// owbcimomd: serves the data of this host to CIM clients.

#include "CommandLine.hpp"
#include "Daemon.hpp"
#include "system/Text.hpp"

#include <csignal>
#include <exception>
#include <iostream>
#include <sys/stat.h>

int main(int argc, char** argv) {
    // A client or a log reader that goes away is no reason to end.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor is a limit on the size of files: a write then fails like on a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    // The end of a child that checks a password must be told, whatever who started this process wants.
    std::signal(SIGCHLD, SIG_DFL);
    // What is made on the way to the state file is for its owner alone; the socket has a mode of its own.
    ::umask(0077);
    const cimom::Options options = cimom::readCommandLine(argc, argv);
    try {
        cimom::serve(options);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "owbcimomd: " << cimom::onOneAsciiLine(e.what()) << '\n';
        return 1;
    }
}

#ifndef BENCH_MANY_PORTS_HPP
#define BENCH_MANY_PORTS_HPP
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <string>
#include <vector>

namespace bench {

/** A real object manager with the statistics of many network ports, which a site file declares. */
class ManyPorts {
public:
    /** Group and class of the statistics. Each instance has ten properties with a value. */
    static constexpr long group = 10;
    static const char* className();

    /**
     * Starts it and waits until it is ready.
     *
     * @param options of its command line, in addition to socket, state and site files
     */
    explicit ManyPorts(int ports, const std::vector<std::string>& options = {});

    pid_t pid() const { return m_daemon.pid(); }
    std::string socketPath() const { return m_directory.file("s"); }
    /** The line with the addresses on which it listens. */
    const std::string& readyLine() const { return m_ready; }
    /** Its URL with a scheme, "owbinary.wbem" or "cimxml.wbem". */
    std::string url(const std::string& scheme) const;
    /** Its processor time so far, in seconds. */
    double processorSeconds() const;

private:
    support::TempDir m_directory;
    support::Daemon m_daemon;
    const std::string m_ready;
};

} // namespace bench
#endif

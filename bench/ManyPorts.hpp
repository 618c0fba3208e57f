#ifndef BENCH_MANY_PORTS_HPP
#define BENCH_MANY_PORTS_HPP
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <string>

namespace bench {

/** The real object manager of a host with many network ports, whose statistics a site file declares. */
class ManyPorts {
public:
    /** Group and class of the statistics. Each instance has ten properties with a value. */
    static constexpr long group = 10;
    static const char* className();

    /** Starts it; it is ready when this returns. */
    explicit ManyPorts(int ports);

    pid_t pid() const { return m_daemon.pid(); }
    std::string socketPath() const { return m_folder.file("s"); }
    /** Its URL with a scheme, "owbinary.wbem" or "cimxml.wbem". */
    std::string url(const std::string& scheme) const;
    /** The processor time that it has taken so far, in seconds. */
    double processorSeconds() const;

private:
    support::TempDir m_folder;
    support::Daemon m_daemon;
};

} // namespace bench
#endif

#ifndef TESTS_SUPPORT_PROMETHEUS_HPP
#define TESTS_SUPPORT_PROMETHEUS_HPP
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cstdint>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace support {

/** Says why the programs of Prometheus cannot run, or returns "" if they can. scripts/unpack downloads them.
 * A test that needs them starts with if (const std::string reason = prometheusMissing(); !reason.empty())
 *         GTEST_SKIP() << reason;
 */
std::string prometheusMissing();

/** Path of prometheus, promtool or prometheus-node-exporter. */
std::string prometheusProgram(const std::string& name);

/** A series at one time. */
struct Series {
    /** With the name of the metric as "__name__". */
    std::map<std::string, std::string> labels;
    double value;
};

/**
 * Prometheus on a loopback port, which scrapes every second. Its configuration and data are in a temporary
 * directory. The destructor kills it.
 */
class Prometheus {
public:
    /** Starts it, with the lines of "scrape_configs" and further options. Returns when it is ready. */
    explicit Prometheus(const std::string& scrapeConfigs, const std::vector<std::string>& options = {});

    /** The body that it returns for a path. Throws std::runtime_error if the status is not 200. */
    std::string get(const std::string& path) const;
    /** The field "data" of the reply of its interface /api/v1. */
    nlohmann::json data(const std::string& path) const;
    /** The result of an expression, an instant vector. */
    std::vector<Series> query(const std::string& expression) const;
    /** Waits until an expression has a result, and returns it. Prometheus finds its targets after 5 s. Throws
     * std::runtime_error with the state of the targets if it has none after 20 s. */
    std::vector<Series> await(const std::string& expression) const;
    /** "" if the last scrapes of all targets succeeded, else the error. */
    std::string lastError() const;

private:
    TempDir m_directory;
    std::optional<Daemon> m_process;
    std::uint16_t m_port = 0;
};

} // namespace support
#endif

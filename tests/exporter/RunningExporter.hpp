#ifndef TESTS_EXPORTER_RUNNING_EXPORTER_HPP
#define TESTS_EXPORTER_RUNNING_EXPORTER_HPP
#include "ExpositionReader.hpp"
#include "support/HttpClient.hpp"
#include "support/Manager.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

/** The exporter, an object manager, and the fake host that it serves. */
class RunningExporter : public testing::Test {
protected:
    /** The host has the name "box" and the interface eth0. */
    RunningExporter();

    /** Starts the object manager. Without it the exporter finds none. */
    void startManager(std::vector<std::string> options = {});
    /** Starts the exporter and waits until it is ready. */
    void startExporter(const std::vector<std::string>& options = {});
    /** The same on the address of these options, which is a loopback address. */
    void startListening(const std::vector<std::string>& options);
    void start(const std::vector<std::string>& options = {}) {
        startManager();
        startExporter(options);
    }

    void writeInterface(const std::string& name, unsigned index) const;
    void removeInterface(const std::string& name) const;
    /** Writes the counters of all interfaces. */
    void writeCounters(const std::string& lines) const;

    support::Manager& manager() { return *m_manager; }
    support::Daemon& exporter() { return *m_exporter; }
    std::uint16_t port() const { return m_port; }
    const support::TempDir& directory() const { return m_directory; }
    /** The processes that the exporter has started. */
    std::vector<pid_t> children() const;
    /** Waits until the exporter has a child, and returns it. */
    pid_t awaitChild() const;
    /** Descriptors that the exporter has open. */
    std::size_t descriptors() const;

    support::HttpReply get(const std::string& path, const std::string& fields = "") const;
    /** Scrapes, and checks the text. */
    exposition::Text scrape(const std::string& fields = "") const;

private:
    support::TempDir m_directory;
    std::unique_ptr<support::Manager> m_manager;
    std::unique_ptr<support::Daemon> m_exporter;
    std::uint16_t m_port = 0;
};

std::string request(const std::string& path, const std::string& fields = "");

/** The text of a scrape, which must keep all rules. */
exposition::Text checkedText(const support::HttpReply& reply, metrics::Format format = metrics::Format::text);

#endif

#ifndef TESTS_CIMOM_STARTED_DAEMON_HPP
#define TESTS_CIMOM_STARTED_DAEMON_HPP
#include "Client.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/** A test that starts object managers with its own options. */
class StartedDaemon : public ::testing::Test {
protected:
    /** Starts an object manager and waits until it is ready. */
    void start(const std::vector<std::string>& options = {}) {
        std::vector<std::string> command = {OWBCIMOMD, "--socket", socketPath(), "--state",
                                            m_directory.file("state")};
        command.insert(command.end(), options.begin(), options.end());
        m_daemon = std::make_unique<support::Daemon>(command);
        const std::string ready = m_daemon->nextErrorLine();
        ASSERT_EQ("owbcimomd: ready on " + socketPath(), ready.substr(0, ready.find(" and ")));
        const std::size_t port = ready.rfind(':');
        if (ready.find(" and ") != std::string::npos)
            m_port = static_cast<std::uint16_t>(std::stoul(ready.substr(port + 1)));
    }

    support::Daemon& daemon() { return *m_daemon; }
    const support::TempDir& directory() const { return m_directory; }
    std::string socketPath() const { return m_directory.file("socket"); }
    /** The last TCP port on which it listens; 0 if there is none. */
    std::uint16_t port() const { return m_port; }
    /** A value in kB of /proc/<pid>/status of the object manager. */
    long status(const std::string& field) {
        std::istringstream all(support::readFile("/proc/" + std::to_string(daemon().pid()) + "/status"));
        for (std::string line; std::getline(all, line);) {
            if (line.compare(0, field.size() + 1, field + ":") == 0)
                return std::stol(line.substr(field.size() + 1));
        }
        ADD_FAILURE() << "no " << field;
        return 0;
    }

    /** A directory of site files with `count` additional instances of QAV_System. */
    std::string systems(std::size_t count) const {
        std::string all;
        for (std::size_t i = 0; i < count; ++i)
            all += (all.empty() ? "" : ",\n") + std::string("{\"Name\": \"box-") + std::to_string(i) +
                   "\", \"CreationClassName\": \"QAV_System\", \"Description\": \"" + std::string(200, 'x') +
                   "\"}";
        m_directory.write("site/systems.json", "{\"QAV_System\": [" + all + "]}");
        return m_directory.file("site");
    }
    /** The number of instances of QAV_System that a client receives. */
    std::size_t count(Client& client) const {
        return instancesIn(client.exchange(httpRequest(enumerateBody("QAV_System"))).body).size();
    }

private:
    support::TempDir m_directory;
    std::unique_ptr<support::Daemon> m_daemon;
    std::uint16_t m_port = 0;
};

#endif

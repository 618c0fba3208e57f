#ifndef TESTS_SUPPORT_MANAGER_HPP
#define TESTS_SUPPORT_MANAGER_HPP
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace support {

/** The real object manager, with its own socket and state file. The constructor waits until it is ready. */
class Manager {
public:
    /** @param options command-line options in addition to the socket and the state file */
    explicit Manager(std::vector<std::string> options = {})
        : m_command({OWBCIMOMD, "--socket", socketPath(), "--state", statePath()}) {
        m_command.insert(m_command.end(), options.begin(), options.end());
        start();
    }

    /** Restarts it after end(). */
    void start() {
        m_daemon = std::make_unique<Daemon>(m_command);
        EXPECT_EQ("owbcimomd: ready on " + socketPath(), m_daemon->nextErrorLine());
    }
    /** Sends a signal, waits for the exit and returns the exit code as in ProgramResult. */
    int end(int signal) {
        m_daemon->signal(signal);
        return m_daemon->wait();
    }

    Daemon& daemon() { return *m_daemon; }
    const std::vector<std::string>& command() const { return m_command; }
    std::string url() const { return urlOf(socketPath()); }
    std::string socketPath() const { return m_directory.file("socket"); }
    std::string statePath() const { return m_directory.file("state.json"); }
    const TempDir& directory() const { return m_directory; }

private:
    TempDir m_directory;
    std::vector<std::string> m_command;
    std::unique_ptr<Daemon> m_daemon;
};

} // namespace support
#endif

#ifndef TESTS_OWB_FAKE_HOST_HPP
#define TESTS_OWB_FAKE_HOST_HPP
#include "inventory/ProcessTree.hpp"
#include "support/TempDir.hpp"

#include <functional>
#include <string>

/**
 * A directory with fake processes and a fake software inventory, which a child of the test has as its root
 * directory, in a separate mount namespace. It has no /proc until it has a process.
 */
class FakeHost {
public:
    /** The programs besides the software inventory. */
    enum class Programs {
        none, /**< not even a shell */
        real  /**< those of the real host, mounted read-only */
    };

    FakeHost()
        : m_processes(m_root.file("proc")) {}

    const ProcessTree& processes() const { return m_processes; }
    /** Sets the shell script that is the software inventory. */
    void setTool(const std::string& script) const;
    /** Adds two processes that the software inventory reports as drivers. */
    void addDriver() const;

    /**
     * Runs a body in a child on the host, like support::inChild(). Expects the body to print a text. Skips
     * the test if the system forbids mount namespaces.
     */
    void run(const std::function<void()>& body, const std::string& expectedOutput = "",
             Programs programs = Programs::real) const;

private:
    support::TempDir m_root;
    ProcessTree m_processes;
};

#endif

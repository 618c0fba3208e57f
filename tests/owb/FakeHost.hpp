#ifndef TESTS_OWB_FAKE_HOST_HPP
#define TESTS_OWB_FAKE_HOST_HPP
#include "inventory/ProcessTree.hpp"
#include "support/TempDir.hpp"

#include <functional>
#include <string>

/**
 * A host with processes, and with a software inventory, that a test invents. Children of the test live on it:
 * its root folder is theirs, in a mount namespace of their own. It has no /proc until it has a process.
 */
class FakeHost {
public:
    /** Which programs, besides the software inventory, there are. */
    enum class Programs {
        none, /**< no shell either */
        real  /**< those of the real host, which cannot be written to */
    };

    FakeHost()
        : m_processes(m_root.file("proc")) {}

    const ProcessTree& processes() const { return m_processes; }
    /** Makes a program of a shell script the software inventory. */
    void setTool(const std::string& script) const;
    /** A file of it, as this process reaches it. */
    std::string file(const std::string& path) const { return m_root.path() + path; }

    /**
     * Runs a body in a child on it, as support::inChild() does. Returns what the body printed; when the
     * system does not let the test make namespaces, the body does not run and `reason` tells why.
     */
    std::string run(const std::function<void()>& body, Programs programs, std::string& reason) const;

private:
    support::TempDir m_root;
    ProcessTree m_processes;
};

#endif

// soak MANAGER REQUESTS RESTARTS - an agent that runs for long: one client, many requests, an object manager
// that is started anew every so often. Exit status 0 when nothing was lost and nothing grew.
#include "support/AgentQueue.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <owb.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

constexpr long contactGroup = 2;
constexpr long contactNominator = 3;
/** Groups of one row each, with few and with many items. */
constexpr long groups[] = {11, 13, 6, 4, 14, contactGroup, 11, 13};
/** kB that the process may grow by between a tenth of the requests and the last one: pages of code come and
 * go, but a block lost with each item would be more, even in 2,000 requests. */
constexpr long growthAllowed = 1024;

class Manager {
public:
    explicit Manager(const std::string& program)
        : m_words({program, "--socket", m_folder.file("socket"), "--state", m_folder.file("state")}) {
        start();
    }
    std::string url() const { return support::urlOf(m_folder.file("socket")); }
    void restart() {
        m_daemon->signal(SIGTERM);
        if (m_daemon->wait() != 0)
            throw std::runtime_error("the object manager did not end well");
        start();
    }

private:
    void start() {
        m_daemon = std::make_unique<support::Daemon>(m_words);
        const std::string line = m_daemon->nextErrorLine();
        if (line.find("ready on") == std::string::npos)
            throw std::runtime_error("the object manager did not start: " + line);
    }

    support::TempDir m_folder;
    std::vector<std::string> m_words;
    std::unique_ptr<support::Daemon> m_daemon;
};

struct Counts {
    long requests = 0;
    long items = 0;
    long restarts = 0;
    long failedReads = 0;
    long lostRows = 0;
    long failedWrites = 0;
};

long residentKilobytes() {
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * ::sysconf(_SC_PAGESIZE) / 1024;
}

long openDescriptors() {
    const std::filesystem::directory_iterator folder("/proc/self/fd");
    return std::distance(begin(folder), end(folder));
}

bool holds(support::AgentQueue& queue, const std::string& contact) {
    return OWB_itemExists(queue.head(), contactGroup, contactNominator, 0, 0) == 1 &&
           queue.head()->cursor->val == contact;
}

void read(long group, const std::string& contact, Counts& counts) {
    support::AgentQueue queue;
    ++counts.requests;
    if (OWB_getGroup(group, queue.head()) != OWB_DONE)
        ++counts.failedReads;
    else if (queue.head()->size == 0 || (group == contactGroup && !contact.empty() && !holds(queue, contact)))
        ++counts.lostRows;
    counts.items += queue.head()->size;
}

void write(const std::string& contact, Counts& counts) {
    support::AgentQueue queue;
    ++counts.requests;
    OWB_itemAdd(queue.head(), contactGroup, contactNominator, 0, 0, contact.c_str());
    if (OWB_setGroup(contactGroup, queue.head()) != OWB_DONE)
        ++counts.failedWrites;
}

/** Each tenth request is a write, and the first behind each restart alternates between a read and a write. */
Counts run(Manager& manager, long requests, long restartEvery, long& grown, long& descriptors) {
    Counts counts;
    std::string contact;
    for (long i = 0; counts.requests < requests; ++i) {
        if (i > 0 && i % restartEvery == 0) {
            manager.restart();
            ++counts.restarts;
        }
        if (i == requests / 10) {
            grown = -residentKilobytes();
            descriptors = -openDescriptors();
        }
        if ((i + i / restartEvery) % 10 == 0)
            write(contact = "ops" + std::to_string(i), counts);
        else
            read(groups[static_cast<std::size_t>(i) % std::size(groups)], contact, counts);
    }
    grown += residentKilobytes();
    descriptors += openDescriptors();
    return counts;
}

int soak(const std::string& program, long requests, long restartEvery) {
    Manager manager(program);
    OWB_URLSet(manager.url().c_str());
    long grown = 0;
    long descriptors = 0;
    const Counts counts = run(manager, requests, restartEvery, grown, descriptors);
    std::printf("requests %ld, items %ld, restarts %ld\n"
                "failed reads %ld, lost rows %ld, failed writes %ld\n"
                "grown by %ld kB and %ld descriptors\n",
                counts.requests, counts.items, counts.restarts, counts.failedReads, counts.lostRows,
                counts.failedWrites, grown, descriptors);
    const bool isCalm = counts.failedReads == 0 && counts.lostRows == 0 && counts.failedWrites == 0 &&
                        grown < growthAllowed && descriptors == 0;
    return isCalm ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: soak MANAGER REQUESTS RESTART_EVERY\n");
        return 2;
    }
    try {
        return soak(argv[1], std::atol(argv[2]), std::atol(argv[3]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

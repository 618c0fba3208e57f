// soak MANAGER REQUESTS RESTART_EVERY - one agent that makes many requests with one client. The object
// manager restarts after every RESTART_EVERY requests, alternately between two requests and during a write.
// Exit status 0 if no row was lost, nothing grew, and only the interrupted writes failed.
#include "support/AgentQueue.hpp"
#include "support/Descriptors.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <owb.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr long contactGroup = 2;
constexpr long contactNominator = 3;
/** Groups with one row, some with few and some with many items. */
constexpr long groups[] = {11, 13, 6, 4, 14, contactGroup, 11, 13};
/** Maximum growth in kB between a tenth of the requests and the last one. Pages of code come and go; a block
 * leaked for each item exceeds this within 2,000 requests. */
constexpr long growthAllowed = 1024;

class Manager {
public:
    explicit Manager(const std::string& program)
        : m_command({program, "--socket", m_directory.file("socket"), "--state", m_directory.file("state")}) {
        start();
    }
    std::string url() const { return support::urlOf(m_directory.file("socket")); }
    void restart() {
        m_daemon->signal(SIGTERM);
        if (m_daemon->wait() != 0)
            throw std::runtime_error("object manager failed");
        start();
    }
    /** Suspends it: it reads nothing more. */
    void stop() { m_daemon->signal(SIGSTOP); }
    /** Kills it without a chance to clean up, and starts it again. */
    void killAndRestart() {
        m_daemon->signal(SIGKILL);
        m_daemon->wait();
        start();
    }

private:
    void start() {
        m_daemon = std::make_unique<support::Daemon>(m_command);
        const std::string line = m_daemon->nextErrorLine();
        if (line.find("ready on") == std::string::npos)
            throw std::runtime_error("cannot start object manager: " + line);
    }

    support::TempDir m_directory;
    std::vector<std::string> m_command;
    std::unique_ptr<support::Daemon> m_daemon;
};

/** The manager to kill after a request has been sent to it, and the number of requests before that one. */
Manager* target = nullptr;
int requestsBefore = 0;

struct Counts {
    long requests = 0;
    long items = 0;
    long restarts = 0;
    long interruptedWrites = 0;
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
    return static_cast<long>(support::openDescriptors().size());
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

/** Writes a contact. Returns whether a read finds it: the status of the write does not say so. */
bool write(const std::string& contact, Counts& counts) {
    support::AgentQueue written;
    OWB_itemAdd(written.head(), contactGroup, contactNominator, 0, 0, contact.c_str());
    support::AgentQueue now;
    const bool isDone = OWB_setGroup(contactGroup, written.head()) == OWB_DONE &&
                        OWB_getGroup(contactGroup, now.head()) == OWB_DONE && holds(now, contact);
    counts.requests += 2;
    counts.items += now.head()->size;
    return isDone;
}

/** Kills the manager after the second request of a write: the first one enumerates, the second modifies. */
bool writeDuringRestart(Manager& manager, const std::string& contact, Counts& counts) {
    target = &manager;
    requestsBefore = 1;
    const bool isDone = write(contact, counts);
    if (target != nullptr)
        throw std::runtime_error("a write did not send two requests");
    ++counts.restarts;
    ++counts.interruptedWrites;
    return isDone;
}

/** Each tenth request is a write. */
Counts run(Manager& manager, long requests, long restartEvery, long& grown, long& descriptors) {
    Counts counts;
    std::string contact;
    for (long i = 0; counts.requests < requests; ++i) {
        const bool restarts = i > 0 && i % restartEvery == 0;
        const bool hitsWrite = restarts && i / restartEvery % 2 == 0;
        if (restarts && !hitsWrite) {
            manager.restart();
            ++counts.restarts;
        }
        if (i == requests / 10) {
            grown = -residentKilobytes();
            descriptors = -openDescriptors();
        }
        if (!hitsWrite && i % 10 != 5) {
            read(groups[static_cast<std::size_t>(i) % std::size(groups)], contact, counts);
            continue;
        }
        const std::string next = "ops" + std::to_string(i);
        if (hitsWrite ? writeDuringRestart(manager, next, counts) : write(next, counts))
            contact = next;
        else
            ++counts.failedWrites;
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
    std::printf("requests %ld, items %ld, restarts %ld, of them during a write %ld\n"
                "failed reads %ld, lost rows %ld, failed writes %ld\n"
                "grown by %ld kB and %ld descriptors\n",
                counts.requests, counts.items, counts.restarts, counts.interruptedWrites, counts.failedReads,
                counts.lostRows, counts.failedWrites, grown, descriptors);
    const bool isCalm = counts.failedReads == 0 && counts.lostRows == 0 &&
                        counts.failedWrites == counts.interruptedWrites && grown < growthAllowed &&
                        descriptors == 0;
    return isCalm ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

// Interposes send() for the client library.
extern "C" __attribute__((visibility("default"))) ssize_t send(int socket, const void* bytes,
                                                               std::size_t size, int flags) {
    static const auto real =
        reinterpret_cast<ssize_t (*)(int, const void*, std::size_t, int)>(::dlsym(RTLD_NEXT, "send"));
    if (target == nullptr || requestsBefore-- > 0)
        return real(socket, bytes, size, flags);
    target->stop();
    const ssize_t sent = real(socket, bytes, size, flags);
    target->killAndRestart();
    target = nullptr;
    return sent;
}

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

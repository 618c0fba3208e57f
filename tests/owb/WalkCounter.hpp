#ifndef TESTS_OWB_WALK_COUNTER_HPP
#define TESTS_OWB_WALK_COUNTER_HPP
#include "owb.h"

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

/**
 * Counts how often a queue is walked. It inserts two items at the front, each in its own page. Only one page
 * at a time is readable: a walk faults on each of them, and every fault on the second one counts. One object
 * a process.
 */
class WalkCounter {
public:
    /** The queue must be empty. The items have group 31, which no request accepts. */
    explicit WalkCounter(_qHead* q) {
        s_pageSize = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
        auto* const sentinel = reinterpret_cast<_qItem*>(q);
        for (_qItem*& item : s_items) {
            void* const page =
                ::mmap(nullptr, s_pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            if (page == MAP_FAILED)
                std::abort();
            item = static_cast<_qItem*>(page);
            item->group = 31;
            item->next = sentinel;
            item->prev = q->last;
            (q->last == sentinel ? q->first : q->last->next) = item;
            q->last = item;
            ++q->size;
        }
        struct sigaction action {};
        action.sa_sigaction = touch;
        action.sa_flags = SA_SIGINFO;
        ::sigaction(SIGSEGV, &action, nullptr);
        protect(1);
    }
    WalkCounter(const WalkCounter&) = delete;
    WalkCounter& operator=(const WalkCounter&) = delete;

    static int walks() { return s_walks; }

    /** Stops counting and unlinks the items. */
    static void finish(_qHead* q) {
        for (_qItem* const item : s_items)
            ::mprotect(item, s_pageSize, PROT_READ | PROT_WRITE);
        q->first = s_items[1]->next;
        (q->last == s_items[1] ? q->last : q->first->prev) = reinterpret_cast<_qItem*>(q);
        q->size -= 2;
    }

private:
    static void protect(int index) {
        ::mprotect(s_items[1 - index], s_pageSize, PROT_READ | PROT_WRITE);
        ::mprotect(s_items[index], s_pageSize, PROT_NONE);
    }

    static void touch(int, siginfo_t* info, void*) {
        for (int index = 0; index < 2; ++index) {
            const auto* const page = reinterpret_cast<const char*>(s_items[index]);
            const auto* const address = static_cast<const char*>(info->si_addr);
            if (address >= page && address < page + s_pageSize) {
                s_walks += index;
                protect(1 - index);
                return;
            }
        }
        ::signal(SIGSEGV, SIG_DFL); // a fault in the code under test
    }

    inline static _qItem* s_items[2] = {};
    inline static std::size_t s_pageSize = 0;
    inline static volatile std::sig_atomic_t s_walks = 0;
};

#endif

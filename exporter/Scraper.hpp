#ifndef EXPORTER_SCRAPER_HPP
#define EXPORTER_SCRAPER_HPP

#include "exporter/Block.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace exporter {

/** What was read in one scrape: the groups that were read by then. */
struct Snapshot {
    /** Without an age. */
    metrics::Scrape scrape;
    std::vector<std::shared_ptr<const Block>> blocks;
    std::chrono::steady_clock::time_point begin;
};

/** What a Scraper reads. */
struct ScraperSettings {
    /** Of the object manager. */
    std::string url;
    /** Groups that have metrics. */
    std::vector<long> groups;
    /** A complete snapshot that is younger is used again. */
    std::chrono::milliseconds maxAge;
};

/**
 * Reads the groups for clients, one scrape at a time.
 *
 * A read blocks, so a child process makes it and writes each group to a pipe; the io_context serves others
 * meanwhile. All clients that ask during a scrape wait for the same one. A client whose time is over gets the
 * groups that were read by then; after the last client the child is killed.
 *
 * Logs groups that cannot be read, once until that changes.
 */
class Scraper {
public:
    using Done = std::function<void(std::shared_ptr<const Snapshot>)>;

    /** The io_context must outlive the scraper, and run no handlers after it. */
    Scraper(boost::asio::io_context& io, ScraperSettings settings);
    ~Scraper();
    Scraper(const Scraper&) = delete;
    Scraper& operator=(const Scraper&) = delete;

    /** Calls `done` once, now or later, with a snapshot; at the latest after `limit`. */
    void get(std::chrono::milliseconds limit, Done done);

private:
    class Run;
    struct Waiter {
        boost::asio::steady_timer timer;
        Done done;
    };
    using Waiters = std::list<std::shared_ptr<Waiter>>;

    bool isFresh() const;
    void start();
    void addWaiter(std::chrono::milliseconds limit, Done done);
    void onTimeout(const std::shared_ptr<Waiter>& waiter);
    void onBlock(Block block);
    void onEnd(const char* failure);
    std::shared_ptr<const Snapshot> snapshot() const;
    void logTrouble(const char* failure);

    boost::asio::io_context& m_io;
    const ScraperSettings m_settings;
    Snapshot m_current;                     // of the run, without a duration
    std::shared_ptr<Run> m_run;             // null: no scrape is running
    Waiters m_waiters;                      // none if no scrape is running
    std::shared_ptr<const Snapshot> m_last; // complete; null for none
    std::string m_trouble;                  // as logged; empty: all groups were read
};

} // namespace exporter
#endif

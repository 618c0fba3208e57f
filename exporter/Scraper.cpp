#include "exporter/Scraper.hpp"

#include "service/ChildProcess.hpp"
#include "service/Log.hpp"

#include <owb.h>

#include <algorithm>
#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <map>
#include <system_error>
#include <utility>

namespace exporter {

using boost::system::error_code;
using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

const char* const timedOut = "timed out";

/** Work of the child. */
bool readGroups(const ScraperSettings& settings, int pipe) {
    // The library prints to standard output, whose number could otherwise be that of its connection.
    service::openStandardStreams();
    OWB_URLSet(settings.url.c_str());
    return std::all_of(settings.groups.begin(), settings.groups.end(),
                       [pipe](long group) { return service::writeAll(pipe, bytesOf(readBlock(group))); });
}

std::string listed(const std::vector<long>& groups) {
    std::string text = groups.size() == 1 ? "group " : "groups ";
    for (std::size_t i = 0; i < groups.size(); ++i)
        text += (i > 0 ? ", " : "") + std::to_string(groups[i]);
    return text;
}

} // namespace

/** A child process that reads, and its pipe. The handler that the io_context holds owns it. */
class Scraper::Run : public std::enable_shared_from_this<Run> {
public:
    /** Throws std::system_error if no child can be started. */
    explicit Run(Scraper& scraper)
        : m_scraper(scraper)
        , m_child([&scraper](int pipe) { return readGroups(scraper.m_settings, pipe); })
        , m_pipe(scraper.m_io) {
        m_pipe.assign(m_child.releasePipe());
    }

    void receive() {
        m_pipe.async_read_some(boost::asio::buffer(m_buffer),
                               [self = shared_from_this()](const error_code& error, std::size_t size) {
                                   self->onReceived(error, size);
                               });
    }
    void kill() const { m_child.kill(); }

private:
    void onReceived(const error_code& error, std::size_t size) {
        if (m_scraper.m_run.get() != this) // the scraper no longer waits for this run
            return;
        if (error) {
            m_scraper.onEnd(m_child.wait() ? nullptr : "the child process that reads has failed");
            return;
        }
        const auto onBlock = [this](Block block) { m_scraper.onBlock(std::move(block)); };
        if (m_blocks.add(std::string_view(m_buffer.data(), size), onBlock))
            receive();
        else
            m_scraper.onEnd("invalid or too long");
    }

    Scraper& m_scraper;
    service::ChildProcess m_child;
    boost::asio::posix::stream_descriptor m_pipe;
    BlockDecoder m_blocks;
    std::array<char, 65536> m_buffer;
};

Scraper::Scraper(boost::asio::io_context& io, ScraperSettings settings)
    : m_io(io)
    , m_settings(std::move(settings)) {}

Scraper::~Scraper() = default;

void Scraper::get(std::chrono::milliseconds limit, Done done) {
    if (!m_run && isFresh()) {
        done(m_last);
        return;
    }
    addWaiter(limit, std::move(done));
    if (!m_run)
        start();
}

bool Scraper::isFresh() const {
    return m_last && steady_clock::now() - m_last->begin <= m_settings.maxAge;
}

void Scraper::start() {
    m_current = {{m_settings.groups, {}, std::chrono::system_clock::now(), {}, {}}, {}, steady_clock::now()};
    try {
        m_run = std::make_shared<Run>(*this);
        m_run->receive();
    } catch (const std::system_error& e) {
        onEnd(e.what());
    }
}

void Scraper::addWaiter(std::chrono::milliseconds limit, Done done) {
    m_waiters.push_back(
        std::make_shared<Waiter>(Waiter{boost::asio::steady_timer(m_io, limit), std::move(done)}));
    // Weak: a wait that is already due gets no error if its waiter has been served meanwhile.
    m_waiters.back()->timer.async_wait(
        [this, weak = std::weak_ptr<Waiter>(m_waiters.back())](const error_code& error) {
            const std::shared_ptr<Waiter> waiter = weak.lock();
            if (!error && waiter)
                onTimeout(waiter);
        });
}

/** Gives the client what was read so far. */
void Scraper::onTimeout(const std::shared_ptr<Waiter>& waiter) {
    if (m_waiters.size() == 1) {
        onEnd(timedOut);
        return;
    }
    m_waiters.remove(waiter);
    waiter->done(snapshot());
}

void Scraper::onBlock(Block block) {
    m_current.scrape.readings.push_back(block.reading);
    m_current.blocks.push_back(std::make_shared<const Block>(std::move(block)));
}

/** Ends the run and serves all clients. */
void Scraper::onEnd(const char* failure) {
    logTrouble(failure);
    const std::shared_ptr<const Snapshot> read = snapshot();
    m_last = failure == nullptr ? read : nullptr;
    if (m_run)
        m_run->kill();
    m_run = nullptr;
    const Waiters waiters = std::exchange(m_waiters, {});
    for (const std::shared_ptr<Waiter>& waiter : waiters)
        waiter->done(read);
}

std::shared_ptr<const Snapshot> Scraper::snapshot() const {
    auto copy = std::make_shared<Snapshot>(m_current);
    copy->scrape.duration = duration_cast<microseconds>(steady_clock::now() - m_current.begin);
    return copy;
}

/** @param failure why groups are missing; null if none is */
void Scraper::logTrouble(const char* failure) {
    std::map<std::string, std::vector<long>> groupsByReason;
    for (const long group : m_settings.groups) {
        const auto found = std::find_if(m_current.blocks.begin(), m_current.blocks.end(),
                                        [group](const auto& block) { return block->reading.group == group; });
        if (found == m_current.blocks.end())
            groupsByReason[failure == nullptr ? "missing" : failure].push_back(group);
        else if ((*found)->reading.status != OWB_DONE)
            groupsByReason[(*found)->failure].push_back(group);
    }
    std::string trouble;
    for (const auto& [reason, groups] : groupsByReason)
        trouble += (trouble.empty() ? "cannot read " : "; ") + listed(groups) + ": " + reason;
    if (trouble != m_trouble)
        service::log(trouble.empty() ? "all groups are read again" : trouble);
    m_trouble = std::move(trouble);
}

} // namespace exporter

#include "commands/Watch.hpp"

#include "agent/Sample.hpp"
#include "commands/Report.hpp"

#include <chrono>
#include <thread>

namespace owbctl {

using namespace agent;

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point moment) {
    return std::chrono::duration<double>(moment.time_since_epoch()).count();
}

/** Sleeps until the end of each interval. A missed end is not made up for. */
class Pace {
public:
    explicit Pace(double interval)
        : m_interval(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(interval)))
        , m_next(Clock::now()) {}

    void wait() {
        m_next = std::max(m_next + m_interval, Clock::now());
        std::this_thread::sleep_until(m_next);
    }

private:
    Clock::duration m_interval;
    Clock::time_point m_next;
};

} // namespace

int watchGroup(const WatchRequest& request, Format& format, const Output& output, const std::string& url) {
    Progress progress;
    Pace pace(request.interval);
    std::optional<Reading> before;
    long samples = 0;
    for (;;) {
        Reading now{readGroup(request.group), seconds(Clock::now())};
        progress.clear();
        const std::time_t time = std::time(nullptr);
        ++samples;
        format.writeSample({samples, time, !before, now.group, compare(now, before ? &*before : nullptr)});
        if (now.group.status != OWB_DONE)
            reportFailure(now.group, url);
        if (samples == request.count)
            return exitStatus(now.group.status);
        if (now.group.status == OWB_DONE)
            before = std::move(now);
        if (!output.isTerminal()) // a terminal shows the samples themselves
            progress.show("owbctl: group " + std::to_string(request.group) + ", sample " +
                          std::to_string(samples));
        pace.wait();
    }
}

} // namespace owbctl

#include "commands/Watch.hpp"

#include "agent/Sample.hpp"
#include "commands/Report.hpp"
#include "output/Deadline.hpp"
#include "output/Keyboard.hpp"

#include <chrono>

namespace owbctl {

using namespace agent;

namespace {

using Clock = std::chrono::steady_clock;

constexpr char quitKey = 'q';

double seconds(Clock::time_point moment) {
    return std::chrono::duration<double>(moment.time_since_epoch()).count();
}

/** The ends of successive intervals. A missed end is not made up for. */
class Pace {
public:
    explicit Pace(double interval)
        : m_interval(std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(interval)))
        , m_next(Clock::now()) {}

    Clock::time_point next() {
        m_next = std::max(m_next + m_interval, Clock::now());
        return m_next;
    }

private:
    Clock::duration m_interval;
    Clock::time_point m_next;
};

/** Reads a group with a limit for the wait. */
Group readWaiting(long number) {
    const Waiting waiting(number);
    return readGroup(number);
}

/** Reads a group and compares it with its last successful reading. */
class Watched {
public:
    explicit Watched(long group)
        : m_group(group) {}

    /** Rows are selected before the comparison, properties after it: they may identify the rows. */
    Sample read(long number, const Selection& selection) {
        Reading now{readWaiting(m_group), seconds(Clock::now())};
        selectRows(now.group, selection);
        Sample sample =
            sampleOf(number, std::chrono::system_clock::now(), now, m_before ? &*m_before : nullptr);
        if (now.group.status == OWB_DONE)
            m_before = std::move(now);
        selectProperties(sample, selection);
        return sample;
    }

private:
    long m_group;
    std::optional<Reading> m_before;
};

/** Reads and writes each group once. Returns the exit status of the first failed reading. */
int writeSamples(std::vector<Watched>& all, long number, const WatchRequest& request, Format& format) {
    std::vector<Group> failed;
    for (Watched& watched : all) {
        Sample sample = watched.read(number, request.selection);
        if (sample.group.status != OWB_DONE)
            failed.push_back(sample.group);
        if (request.onlyChanges)
            keepChanges(sample);
        format.writeSample(sample);
    }
    format.endSamples();
    for (const Group& group : failed)
        reportFailure(group);
    return failed.empty() ? 0 : exitStatus(failed.front().status);
}

} // namespace

int watchGroups(const WatchRequest& request, Format& format, const Output& output) {
    checkSelection(request.selection, request.groups);
    Progress progress;
    Keyboard keyboard(output.isTerminal());
    Pace pace(request.interval);
    std::vector<Watched> all(request.groups.begin(), request.groups.end());
    for (long number = 1;; ++number) {
        const int status = writeSamples(all, number, request, format);
        if (number == request.count)
            return status;
        if (!output.isTerminal()) // a terminal shows the samples themselves
            progress.show("owbctl: sample " + std::to_string(number));
        if (keyboard.waitFor(quitKey, pace.next()))
            return status;
        progress.clear();
    }
}

} // namespace owbctl

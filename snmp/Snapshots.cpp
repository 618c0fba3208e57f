#include "snmp/Snapshots.hpp"

#include <algorithm>
#include <exception>
#include <malloc.h>
#include <utility>

namespace snmp {
namespace {

const SubjectRule& ruleOf(std::size_t subject) {
    return subjectRules()[subject];
}

/** FNV-1a. */
std::uint64_t fingerprintOf(const Readings& readings) {
    std::uint64_t hash = 14695981039346656037U;
    for (const Reading& reading : readings) {
        for (const char c : reading.bytes())
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return hash;
}

std::int64_t hundredthsNow() {
    using Hundredths = std::chrono::duration<std::int64_t, std::ratio<1, 100>>;
    return std::chrono::duration_cast<Hundredths>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

SnapshotPointer snapshotOf(std::size_t subject, const Readings& readings, const Snapshot* previous,
                           std::uint32_t upTime) {
    auto snapshot = std::make_shared<Snapshot>();
    snapshot->subject = subject;
    snapshot->time = Clock::now();
    snapshot->fingerprint = fingerprintOf(readings);
    // The master may have restarted since the last change.
    const bool isUnchanged = previous != nullptr && previous->fingerprint == snapshot->fingerprint;
    snapshot->lastChange = isUnchanged ? std::min(previous->lastChange, upTime) : upTime;
    const Context context{upTime, snapshot->lastChange, hundredthsNow()};
    const std::vector<TableMapping>& mappings = tableMappings();
    for (std::size_t table = 0; table < mappings.size(); ++table) {
        if (static_cast<std::size_t>(mappings[table].rule->subject) == subject)
            snapshot->tables.emplace(table, tableOf(mappings[table], readings, context));
    }
    return snapshot;
}

Snapshots::Snapshots(boost::asio::io_context& io, const ObjectSettings& settings, SourceSettings source)
    : m_io(io)
    , m_ages(settings.ages)
    , m_upTimeAt(Clock::now())
    , m_source(io, settings.url, settings.log, std::move(source)) {}

SnapshotPointer Snapshots::current(std::size_t subject) const {
    const SnapshotPointer& newest = m_states[subject].newest;
    return newest && Clock::now() - newest->time <= m_ages.longest ? newest : nullptr;
}

void Snapshots::refresh(const Subjects& subjects, std::chrono::milliseconds limit,
                        std::function<void()> ready) {
    Subjects due;
    for (std::size_t subject = 0; subject < subjectCount; ++subject)
        due[subject] = subjects[subject] && isDue(subject);
    reread(due, limit, std::move(ready));
}

void Snapshots::reread(const Subjects& subjects, std::chrono::milliseconds limit,
                       std::function<void()> ready) {
    for (std::size_t subject = 0; subject < subjectCount; ++subject) {
        if (subjects[subject] && !m_states[subject].isPending)
            request(subject);
    }
    await(subjects, limit, std::move(ready));
}

bool Snapshots::isDue(std::size_t subject) const {
    const State& state = m_states[subject];
    const Clock::time_point now = Clock::now();
    if (state.isLate && current(subject))
        return false;
    if (state.failed && now - *state.failed < retryTime)
        return false;
    return !state.newest || now - state.newest->time > ageLimit(subject);
}

Clock::duration Snapshots::ageLimit(std::size_t subject) const {
    switch (ruleOf(subject).age) {
    case AgeClass::tables:
        return m_ages.tables;
    case AgeClass::packages:
        return m_ages.packages;
    default:
        return m_ages.counters;
    }
}

void Snapshots::request(std::size_t subject) {
    m_source.read(ruleOf(subject),
                  [this, subject](const std::optional<Readings>& readings) { arrive(subject, readings); });
    m_states[subject].isPending = true;
}

void Snapshots::await(const Subjects& subjects, std::chrono::milliseconds limit,
                      std::function<void()> ready) {
    if (subjects.none()) {
        ready();
        return;
    }
    const auto wait =
        std::make_shared<Wait>(Wait{subjects, std::move(ready), boost::asio::steady_timer(m_io)});
    m_waits.push_back(wait);
    wait->limit.expires_after(limit);
    wait->limit.async_wait([weak = weak_from_this(), wait](const boost::system::error_code&) {
        const std::shared_ptr<Snapshots> self = weak.lock();
        if (!self)
            return;
        self->m_waits.erase(std::remove(self->m_waits.begin(), self->m_waits.end(), wait),
                            self->m_waits.end());
        self->markLate(wait->missing);
        wait->ready();
    });
}

void Snapshots::markLate(const Subjects& subjects) {
    for (std::size_t subject = 0; subject < subjectCount; ++subject)
        m_states[subject].isLate = m_states[subject].isLate || subjects[subject];
}

void Snapshots::arrive(std::size_t subject, const std::optional<Readings>& readings) {
    State& state = m_states[subject];
    state.isPending = false;
    state.isLate = false;
    state.failed = Clock::now();
    if (readings)
        replace(subject, *readings);
    for (const std::shared_ptr<Wait>& wait : m_waits) {
        wait->missing.reset(subject);
        if (wait->missing.none())
            wait->limit.cancel(); // its handler calls ready
    }
}

void Snapshots::replace(std::size_t subject, const Readings& readings) {
    State& state = m_states[subject];
    try {
        state.newest = snapshotOf(subject, readings, state.newest.get(), upTime());
        state.failed.reset();
    } catch (const std::bad_alloc&) {
        // The old values stay until the next reading.
    }
}

void Snapshots::setUpTime(std::uint32_t hundredths) {
    m_upTime = hundredths;
    m_upTimeAt = Clock::now();
}

std::uint32_t Snapshots::upTime() const {
    using Hundredths = std::chrono::duration<std::uint64_t, std::ratio<1, 100>>;
    const auto since = std::chrono::duration_cast<Hundredths>(Clock::now() - m_upTimeAt).count();
    return m_upTime == 0 ? 0 : static_cast<std::uint32_t>(m_upTime + since);
}

} // namespace snmp

#ifndef SNMP_SNAPSHOTS_HPP
#define SNMP_SNAPSHOTS_HPP

#include "snmp/ManagedObjects.hpp"
#include "snmp/source/Source.hpp"
#include "snmp/tree/Snapshot.hpp"

#include <boost/asio/steady_timer.hpp>

#include <array>
#include <bitset>
#include <functional>
#include <memory>

namespace snmp {

using Subjects = std::bitset<subjectCount>;

/** The newest snapshot of each subject, and when to replace it. Owned by a shared_ptr. */
class Snapshots : public std::enable_shared_from_this<Snapshots> {
public:
    /** Pause before a subject that could not be read is read again. */
    static constexpr std::chrono::milliseconds retryTime{1000};

    /** Throws std::system_error. */
    Snapshots(boost::asio::io_context& io, const ObjectSettings& settings, SourceSettings source);

    /** Null if it is unknown, or older than Ages::longest. */
    SnapshotPointer current(std::size_t subject) const;

    /** Reads those of the subjects that are older than their age. Calls `ready` when all have arrived or
     * failed, at the latest after `limit`; at once if there are none. */
    void refresh(const Subjects& subjects, std::chrono::milliseconds limit, std::function<void()> ready);
    /** Reads the subjects whatever their age. */
    void reread(const Subjects& subjects, std::chrono::milliseconds limit, std::function<void()> ready);

    void setUpTime(std::uint32_t hundredths);
    /** The master's sysUpTime now, by its last report. */
    std::uint32_t upTime() const;

    Source& source() { return m_source; }

private:
    struct State {
        SnapshotPointer newest;
        bool isPending = false;
        /** A request has waited for the pending reading in vain. Further ones get the old values at once:
         * each step of a walk would wait. */
        bool isLate = false;
        /** Time of the last reading, if it failed. */
        std::optional<Clock::time_point> failed;
    };
    struct Wait {
        Subjects missing;
        std::function<void()> ready;
        boost::asio::steady_timer limit;
    };

    bool isDue(std::size_t subject) const;
    Clock::duration ageLimit(std::size_t subject) const;
    void request(std::size_t subject);
    void await(const Subjects& subjects, std::chrono::milliseconds limit, std::function<void()> ready);
    void markLate(const Subjects& subjects);
    void arrive(std::size_t subject, const std::optional<Readings>& readings);
    void replace(std::size_t subject, const Readings& readings);

    boost::asio::io_context& m_io;
    const Ages m_ages;
    std::array<State, subjectCount> m_states;
    std::vector<std::shared_ptr<Wait>> m_waits;
    std::uint32_t m_upTime = 0;
    Clock::time_point m_upTimeAt;
    Source m_source;
};

/** The snapshot of a subject whose readings are given; `previous` may be null. */
SnapshotPointer snapshotOf(std::size_t subject, const Readings& readings, const Snapshot* previous,
                           std::uint32_t upTime);

} // namespace snmp
#endif

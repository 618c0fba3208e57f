#ifndef AGENT_CHANGE_HPP
#define AGENT_CHANGE_HPP

#include "agent/Group.hpp"
#include "agent/Trace.hpp"

#include <optional>
#include <string>
#include <vector>

/** Writes values into a row and finds out what became of them. */
namespace agent {

/** A value to write. */
struct Assignment {
    const Attribute* attribute;
    std::string value;
};

/** One property of a row before and after a write. */
struct Change {
    const Attribute* attribute;
    /** The value that the write carried; nothing if it did not name the property. */
    std::optional<std::string> requested;
    /** Empty for a null value. */
    std::vector<std::string> before;
    std::vector<std::string> after;

    bool isChanged() const { return before != after; }

    /** Whether the write named the property, but it does not hold the value. An array holds it if it holds
     * nothing else. */
    bool isRejected() const { return requested && after != std::vector<std::string>{*requested}; }

    /** Whether the write did not name the property, but it lost its value. */
    bool isCleared() const { return !requested && !before.empty() && after.empty(); }
};

/** Compares a row before and after a write: one Change for each attribute of the group, in the order of the
 * catalogue, also for those that did not change. */
std::vector<Change> compare(long group, const Row& before, const Row& after,
                            const std::vector<Assignment>& assignments);

/** Values for one row of a group. */
struct WriteRequest {
    long group;
    /** Number of the row, as readGroup() counts. */
    long row;
    std::vector<Assignment> assignments;
};

/** Result of writing one row. */
struct Write {
    long group;
    long row;
    /** Status of the library at the last step. */
    long status = OWB_DONE;
    /** Why there are no changes to compare, for people; else empty. The status may be OWB_DONE: the row does
     * not exist. */
    std::string error;
    /** As compare() returns them; empty after an error. */
    std::vector<Change> changes;
    /** Why the write failed, as the object manager or the connection says; empty if it succeeded, or if the
     * reason is unknown. */
    Failure failure = {};
};

/**
 * Reads the group, writes the values and reads the group again, since the library does not report whether the
 * object manager accepted them. Reads are repeated as readGroup() does, the write never. Blocks; for the
 * thread that calls the library. Throws std::bad_alloc if an item cannot be made; nothing is written then.
 *
 * @param trace the trace of the library, which alone shows why a write failed; null if there is none
 */
Write writeRow(const WriteRequest& request, const Trace* trace);

} // namespace agent
#endif

#ifndef SNMP_OBJECTS_HPP
#define SNMP_OBJECTS_HPP

#include "snmp/Value.hpp"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace snmp {

/** Result of a phase of a set: the first error, and the index of its variable from 1; 0 if there is none. */
struct SetResult {
    Error error = Error::none;
    std::size_t index = 0;
};

/** One set that passed its test. Exists until the master ends the transaction. */
class Write {
public:
    /** Takes the result of a phase. May destroy the write, so nothing follows the call. */
    using Done = std::function<void(SetResult)>;
    virtual ~Write() = default;

    /** Writes the values and reads them back. Calls `done` once, now or later, and never after the object has
     * been destroyed. A value that is not taken is Error::commitFailed. */
    virtual void commit(Done done) = 0;

    /** Writes the values that were there before commit(). Calls `done` in the same way; a failure is
     * Error::undoFailed. */
    virtual void undo(Done done) = 0;
};

/** A set that was tested: what its test found, and the write if it found no error. */
struct TestedSet {
    SetResult result;
    std::unique_ptr<Write> write;
};

/** A MIB module whose objects are served, for sysORTable. */
struct Module {
    /** The object identifier of its capabilities: the module's own. */
    Oid id;
    const char* description;
};

/**
 * The managed objects: what a session with the master asks for. Everything but prepare() and the phases of a
 * write returns at once. For the thread of the event loop.
 */
class Objects {
public:
    virtual ~Objects() = default;

    /** The subtrees to register; none contains another. */
    virtual std::vector<Oid> subtrees() const = 0;

    virtual std::vector<Module> modules() const = 0;

    /** The master's sysUpTime in 1/100 s. Each of its replies carries it. */
    virtual void setUpTime(std::uint32_t hundredths) = 0;

    /**
     * Prepares the values at and after the given object identifiers: reads what is older than its age. Calls
     * `ready` once, now or later, at the latest after answerTime, whether the values arrived or not.
     */
    virtual void prepare(const std::vector<Oid>& starts, std::function<void()> ready) = 0;

    /** The value of an object; noSuchObject or noSuchInstance in its place. */
    virtual Value get(const Oid& oid) = 0;

    /** The first object in a range; endOfMibView with the start of the range if there is none. */
    virtual VarBind next(const SearchRange& range) = 0;

    /** Checks type, size and access of each value, and that its object exists. */
    virtual TestedSet test(const std::vector<VarBind>& values) = 0;
};

/** Time after which a request is answered from the values at hand. The master waits for 1 s. */
constexpr std::chrono::milliseconds answerTime{80};

} // namespace snmp
#endif

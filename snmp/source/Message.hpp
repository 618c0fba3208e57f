#ifndef SNMP_SOURCE_MESSAGE_HPP
#define SNMP_SOURCE_MESSAGE_HPP

#include "snmp/Oid.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/** The messages between the program and the child process that calls the library. */
namespace snmp {

enum class MessageKind : std::uint32_t {
    /** Numbers of groups to read. */
    read = 1,
    /** A WriteOrder. */
    write,
    /** A number of a group, and its items; several answer a read. */
    group,
    /** Number of a group that the object manager answers with an error. */
    failedGroup,
    /** Ends the answer to a read: a ReadResult, and why the object manager did not answer. */
    end,
    /** A WriteOutcome; answers a write. */
    written
};

enum class ReadResult : std::uint32_t {
    answered,
    lost,
    /** The values came from the library alone. */
    notAsked
};

struct Message {
    MessageKind kind;
    std::string bytes;
};

/** Bytes of the longest answer; a group with more cannot be read. */
constexpr std::size_t longestMessage = 32 * 1024 * 1024;

/** Precedes the bytes of a message: kind and number of bytes. */
using MessageHead = std::array<std::uint32_t, 2>;
MessageHead headOf(const Message& message);

/** Values for a row. */
struct WriteOrder {
    /** Number of the table in tableRules(). */
    std::size_t table = 0;
    long group = 0;
    /** Names the row. */
    Oid index;
    /** Nominators and texts. */
    std::vector<std::pair<long, std::string>> values;
};

struct WriteOutcome {
    /** Whether all values were read back as they were written. */
    bool isTaken = false;
    /** Nothing was written: the row does not exist, or the object manager could not be reached. */
    bool isUntouched = false;
    /** The values before the write, in the order of WriteOrder::values; empty texts for null values. Empty if
     * they are unknown. */
    std::vector<std::string> before;
};

std::string encoded(const WriteOrder& order);
std::string encoded(const WriteOutcome& outcome);

/** These throw std::runtime_error for bytes that encoded() does not make. */
WriteOrder decodedOrder(const std::string& bytes);
WriteOutcome decodedOutcome(const std::string& bytes);

} // namespace snmp
#endif

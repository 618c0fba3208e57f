#ifndef TESTS_SNMP_PDUS_HPP
#define TESTS_SNMP_PDUS_HPP
#include "snmp/Oid.hpp"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

/** PDUs as a master writes them, byte by byte, without the subagent's encoder. */
namespace pdus {

/** What differs between the PDUs of a master. */
struct Head {
    bool isLittle = false;
    std::uint32_t session = 7;
    std::uint32_t transaction = 0;
    std::uint32_t packet = 0;
    /** Empty for the default context. */
    std::string context{};
};

/** The bytes of a payload. */
class Bytes {
public:
    explicit Bytes(const Head& head)
        : m_isLittle(head.isLittle) {}

    Bytes& number(std::uint64_t value, unsigned size);
    /** Every sub-identifier as a number of its own, after a prefix byte of 0. */
    Bytes& oid(const snmp::Oid& oid, bool include = false);
    /** Without the first five sub-identifiers, which must be 1.3.6.1 and a number below 256. */
    Bytes& shortOid(const snmp::Oid& oid, bool include = false);
    Bytes& octets(const std::string& octets);
    /** Octets, and no padding. */
    Bytes& raw(const std::string& bytes);

    const std::string& text() const { return m_text; }

private:
    bool m_isLittle;
    std::string m_text;
};

/** A range of a request. */
struct Range {
    snmp::Oid start;
    bool include = false;
    snmp::Oid end{};
};

/** A PDU of any type, with the context in front of the payload. */
std::string pdu(std::uint8_t type, const Head& head, const std::string& payload);

std::string get(const Head& head, const std::vector<snmp::Oid>& oids);
std::string getNext(const Head& head, const std::vector<Range>& ranges);
std::string getBulk(const Head& head, std::uint16_t nonRepeaters, std::uint16_t repetitions,
                    const std::vector<Range>& ranges);

/** An octet string to set. */
struct Text {
    snmp::Oid oid;
    std::string text;
};
std::string testSet(const Head& head, const std::vector<Text>& values);
std::string commitSet(const Head& head);
std::string undoSet(const Head& head);
std::string cleanupSet(const Head& head);
std::string close(const Head& head, std::uint8_t reason);
std::string response(const Head& head, std::uint32_t upTime, std::uint16_t error);

} // namespace pdus

#endif

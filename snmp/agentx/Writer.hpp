#ifndef SNMP_AGENTX_WRITER_HPP
#define SNMP_AGENTX_WRITER_HPP

#include "snmp/Value.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace snmp::agentx {

/** Writes the parts of a PDU, in network byte order. */
class Writer {
public:
    void byte(std::uint8_t value) { m_bytes += static_cast<char>(value); }
    void number16(std::uint16_t value) { number(value, 2); }
    void number32(std::uint32_t value) { number(value, 4); }
    void number64(std::uint64_t value) { number(value, 8); }
    /** 0.0 and an empty identifier are the null object identifier. At most longestOid sub-identifiers. */
    void oid(const Oid& oid, bool include = false);
    void octets(std::string_view octets);
    void varBind(const VarBind& variable);

    std::size_t size() const { return m_bytes.size(); }
    std::string& bytes() { return m_bytes; }

private:
    void number(std::uint64_t value, unsigned size);
    void value(const Value& value);

    std::string m_bytes;
};

} // namespace snmp::agentx
#endif

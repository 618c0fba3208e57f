#ifndef SNMP_AGENTX_READER_HPP
#define SNMP_AGENTX_READER_HPP

#include "snmp/Value.hpp"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace snmp::agentx {

/** The order of the bytes of a number. */
enum class ByteOrder { little, network };

/** Bytes that are not what their PDU requires. */
class Malformed : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/**
 * Reads the parts of a PDU from its bytes. Every function throws Malformed if the bytes are too few or
 * invalid, and allocates memory only for bytes that are there.
 */
class Reader {
public:
    /** @param bytes must outlive the reader */
    Reader(std::string_view bytes, ByteOrder order)
        : m_bytes(bytes)
        , m_order(order) {}

    bool isAtEnd() const { return m_bytes.empty(); }
    /** Throws Malformed if bytes are left. */
    void expectEnd() const;

    void skip(std::size_t size) { take(size); }
    std::uint8_t byte();
    std::uint16_t number16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t number32() { return static_cast<std::uint32_t>(number(4)); }
    std::uint64_t number64() { return number(8); }
    /** The null object identifier is empty. */
    Oid oid();
    /** The object identifiers of a range, and the flag of the first one. */
    SearchRange range();
    /** Octets with their length and padding. */
    std::string octets();
    VarBind varBind();

private:
    struct FlaggedOid {
        Oid oid;
        bool include;
    };

    std::string_view take(std::size_t size);
    std::uint64_t number(std::size_t size);
    FlaggedOid flaggedOid();
    Value value(Type type);

    std::string_view m_bytes; // not read yet
    ByteOrder m_order;
};

} // namespace snmp::agentx
#endif

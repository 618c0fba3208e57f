#include "snmp/agentx/Reader.hpp"

#include <utility>

namespace snmp::agentx {

void Reader::expectEnd() const {
    if (!isAtEnd())
        throw Malformed("bytes after the end");
}

std::string_view Reader::take(std::size_t size) {
    if (size > m_bytes.size())
        throw Malformed("truncated");
    const std::string_view taken = m_bytes.substr(0, size);
    m_bytes.remove_prefix(size);
    return taken;
}

std::uint8_t Reader::byte() {
    return static_cast<std::uint8_t>(take(1).front());
}

std::uint64_t Reader::number(std::size_t size) {
    const std::string_view bytes = take(size);
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t at = m_order == ByteOrder::network ? i : size - 1 - i;
        value = value << 8 | static_cast<unsigned char>(bytes[at]);
    }
    return value;
}

Reader::FlaggedOid Reader::flaggedOid() {
    const std::size_t count = byte();
    const std::uint32_t prefix = byte();
    FlaggedOid result{{}, byte() != 0};
    skip(1);
    if (count * 4 > m_bytes.size())
        throw Malformed("truncated");
    if (prefix != 0)
        result.oid = {1, 3, 6, 1, prefix};
    if (result.oid.size() + count > longestOid)
        throw Malformed("object identifier too long");
    result.oid.reserve(result.oid.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        result.oid.push_back(number32());
    return result;
}

Oid Reader::oid() {
    return flaggedOid().oid;
}

SearchRange Reader::range() {
    FlaggedOid start = flaggedOid();
    return {std::move(start.oid), start.include, oid()};
}

std::string Reader::octets() {
    const std::size_t size = number32();
    std::string octets(take(size));
    skip((4 - size % 4) % 4);
    return octets;
}

Value Reader::value(Type type) {
    switch (type) {
    case Type::integer:
        // The cast extends the sign.
        return {type, static_cast<std::uint64_t>(static_cast<std::int32_t>(number32()))};
    case Type::counter32:
    case Type::gauge32:
    case Type::timeTicks:
        return {type, std::uint64_t{number32()}};
    case Type::counter64:
        return {type, number64()};
    case Type::octetString:
    case Type::opaque:
        return {type, octets()};
    case Type::ipAddress: {
        std::string address = octets();
        if (address.size() != 4)
            throw Malformed("invalid length of an address");
        return {type, std::move(address)};
    }
    case Type::objectIdentifier: {
        Oid id = oid();
        return {type, id.empty() ? Oid{0, 0} : std::move(id)};
    }
    case Type::null:
    case Type::noSuchObject:
    case Type::noSuchInstance:
    case Type::endOfMibView:
        return {type, {}};
    }
    throw Malformed("unknown type of value");
}

VarBind Reader::varBind() {
    const auto type = static_cast<Type>(number16());
    skip(2);
    Oid name = oid();
    return {std::move(name), value(type)};
}

} // namespace snmp::agentx

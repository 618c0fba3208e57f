#include "snmp/agentx/Writer.hpp"

#include <algorithm>
#include <iterator>
#include <variant>

namespace snmp::agentx {
namespace {

constexpr std::uint32_t internet[] = {1, 3, 6, 1};

/** Whether one byte can replace the first five sub-identifiers. */
bool hasPrefix(const Oid& oid) {
    return oid.size() > std::size(internet) &&
           std::equal(std::begin(internet), std::end(internet), oid.begin()) && oid[4] >= 1 && oid[4] <= 255;
}

bool isNull(const Oid& oid) {
    return oid.empty() || (oid.size() == 2 && oid[0] == 0 && oid[1] == 0);
}

} // namespace

void Writer::number(std::uint64_t value, unsigned size) {
    while (size-- > 0)
        m_bytes += static_cast<char>(value >> 8 * size & 0xFF);
}

void Writer::oid(const Oid& oid, bool include) {
    const bool isShort = hasPrefix(oid);
    const std::size_t first = isNull(oid) ? oid.size() : isShort ? 5 : 0;
    byte(static_cast<std::uint8_t>(oid.size() - first));
    byte(static_cast<std::uint8_t>(isShort ? oid[4] : 0));
    byte(include ? 1 : 0);
    byte(0);
    for (std::size_t i = first; i < oid.size(); ++i)
        number32(oid[i]);
}

void Writer::octets(std::string_view octets) {
    number32(static_cast<std::uint32_t>(octets.size()));
    m_bytes.append(octets).append((4 - octets.size() % 4) % 4, '\0');
}

void Writer::value(const Value& value) {
    switch (value.type) {
    case Type::integer:
    case Type::counter32:
    case Type::gauge32:
    case Type::timeTicks:
        number32(static_cast<std::uint32_t>(std::get<std::uint64_t>(value.content)));
        return;
    case Type::counter64:
        number64(std::get<std::uint64_t>(value.content));
        return;
    case Type::octetString:
    case Type::ipAddress:
    case Type::opaque:
        octets(std::get<std::string>(value.content));
        return;
    case Type::objectIdentifier:
        oid(std::get<Oid>(value.content));
        return;
    case Type::null:
    case Type::noSuchObject:
    case Type::noSuchInstance:
    case Type::endOfMibView:
        return;
    }
}

void Writer::varBind(const VarBind& variable) {
    number16(static_cast<std::uint16_t>(variable.value.type));
    number16(0);
    oid(variable.oid);
    value(variable.value);
}

} // namespace snmp::agentx

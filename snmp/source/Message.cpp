#include "snmp/source/Message.hpp"

#include "snmp/Fields.hpp"

namespace snmp {

MessageHead headOf(const Message& message) {
    return {static_cast<std::uint32_t>(message.kind), static_cast<std::uint32_t>(message.bytes.size())};
}

std::string encoded(const WriteOrder& order) {
    std::string bytes;
    appendNumber(bytes, static_cast<std::uint32_t>(order.table));
    appendNumber(bytes, static_cast<std::uint32_t>(order.group));
    appendText(bytes, text(order.index));
    for (const auto& [nominator, value] : order.values) {
        appendNumber(bytes, static_cast<std::uint32_t>(nominator));
        appendText(bytes, value);
    }
    return bytes;
}

WriteOrder decodedOrder(const std::string& bytes) {
    FieldReader reader(bytes);
    WriteOrder order;
    order.table = reader.number();
    order.group = static_cast<long>(reader.number());
    order.index = parseOid(reader.text());
    while (!reader.isAtEnd()) {
        const auto nominator = static_cast<long>(reader.number());
        order.values.emplace_back(nominator, reader.text());
    }
    return order;
}

std::string encoded(const WriteOutcome& outcome) {
    std::string bytes;
    appendNumber(bytes, outcome.isTaken);
    appendNumber(bytes, outcome.isUntouched);
    for (const std::string& value : outcome.before)
        appendText(bytes, value);
    return bytes;
}

WriteOutcome decodedOutcome(const std::string& bytes) {
    FieldReader reader(bytes);
    WriteOutcome outcome;
    outcome.isTaken = reader.number() != 0;
    outcome.isUntouched = reader.number() != 0;
    while (!reader.isAtEnd())
        outcome.before.emplace_back(reader.text());
    return outcome;
}

} // namespace snmp

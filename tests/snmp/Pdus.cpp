#include "snmp/Pdus.hpp"

namespace pdus {

Bytes& Bytes::number(std::uint64_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i)
        m_text += static_cast<char>(value >> 8 * (m_isLittle ? i : size - 1 - i) & 0xFF);
    return *this;
}

Bytes& Bytes::oid(const snmp::Oid& oid, bool include) {
    number(oid.size(), 1).number(0, 1).number(include ? 1 : 0, 1).number(0, 1);
    for (const std::uint32_t id : oid)
        number(id, 4);
    return *this;
}

Bytes& Bytes::shortOid(const snmp::Oid& oid, bool include) {
    number(oid.size() - 5, 1).number(oid.at(4), 1).number(include ? 1 : 0, 1).number(0, 1);
    for (std::size_t i = 5; i < oid.size(); ++i)
        number(oid[i], 4);
    return *this;
}

Bytes& Bytes::octets(const std::string& octets) {
    number(octets.size(), 4).raw(octets);
    m_text.append((4 - octets.size() % 4) % 4, '\0');
    return *this;
}

Bytes& Bytes::raw(const std::string& bytes) {
    m_text += bytes;
    return *this;
}

std::string pdu(std::uint8_t type, const Head& head, const std::string& payload) {
    Bytes context(head);
    if (!head.context.empty())
        context.octets(head.context);
    const unsigned flags = (head.isLittle ? 0 : 0x10) | (head.context.empty() ? 0 : 0x08);
    Bytes all(head);
    all.number(1, 1).number(type, 1).number(flags, 1).number(0, 1);
    all.number(head.session, 4).number(head.transaction, 4).number(head.packet, 4);
    all.number(context.text().size() + payload.size(), 4);
    return all.text() + context.text() + payload;
}

std::string get(const Head& head, const std::vector<snmp::Oid>& oids) {
    Bytes payload(head);
    for (const snmp::Oid& oid : oids)
        payload.oid(oid).oid({});
    return pdu(5, head, payload.text());
}

namespace {

void append(Bytes& payload, const std::vector<Range>& ranges) {
    for (const Range& range : ranges)
        payload.oid(range.start, range.include).oid(range.end);
}

} // namespace

std::string getNext(const Head& head, const std::vector<Range>& ranges) {
    Bytes payload(head);
    append(payload, ranges);
    return pdu(6, head, payload.text());
}

std::string getBulk(const Head& head, std::uint16_t nonRepeaters, std::uint16_t repetitions,
                    const std::vector<Range>& ranges) {
    Bytes payload(head);
    payload.number(nonRepeaters, 2).number(repetitions, 2);
    append(payload, ranges);
    return pdu(7, head, payload.text());
}

std::string testSet(const Head& head, const std::vector<Text>& values) {
    Bytes payload(head);
    for (const Text& value : values)
        payload.number(4, 2).number(0, 2).oid(value.oid).octets(value.text);
    return pdu(8, head, payload.text());
}

std::string commitSet(const Head& head) {
    return pdu(9, head, "");
}

std::string undoSet(const Head& head) {
    return pdu(10, head, "");
}

std::string cleanupSet(const Head& head) {
    return pdu(11, head, "");
}

std::string close(const Head& head, std::uint8_t reason) {
    return pdu(2, head, Bytes(head).number(reason, 1).number(0, 1).number(0, 2).text());
}

std::string response(const Head& head, std::uint32_t upTime, std::uint16_t error) {
    return pdu(18, head, Bytes(head).number(upTime, 4).number(error, 2).number(0, 2).text());
}

} // namespace pdus

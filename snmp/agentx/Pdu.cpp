#include "snmp/agentx/Pdu.hpp"

#include <iterator>
#include <utility>

namespace snmp::agentx {
namespace {

Reader readerOf(const Header& header, std::string_view payload) {
    return Reader(payload, header.order());
}

/** The context at the start of a PDU. */
std::string readContext(const Header& header, Reader& reader) {
    return header.flags & nonDefaultContext ? reader.octets() : std::string();
}

/** Writes the header of a PDU, without its length, and the context. */
Writer begun(const Header& header, PduType type, const std::string& context = "") {
    Writer pdu;
    pdu.byte(header.version);
    pdu.byte(static_cast<std::uint8_t>(type));
    pdu.byte(context.empty() ? networkByteOrder : networkByteOrder | nonDefaultContext);
    pdu.byte(0);
    pdu.number32(header.session);
    pdu.number32(header.transaction);
    pdu.number32(header.packet);
    pdu.number32(0);
    if (!context.empty())
        pdu.octets(context);
    return pdu;
}

/** Sets the length in the header of a PDU. */
std::string ended(Writer& pdu) {
    Writer length;
    length.number32(static_cast<std::uint32_t>(pdu.size() - headerSize));
    pdu.bytes().replace(headerSize - length.size(), length.size(), length.bytes());
    return std::move(pdu.bytes());
}

} // namespace

std::string errorText(std::uint16_t error) {
    static constexpr struct {
        Refusal error;
        const char* name;
    } names[] = {{Refusal::openFailed, "openFailed"},
                 {Refusal::notOpen, "notOpen"},
                 {Refusal::unsupportedContext, "unsupportedContext"},
                 {Refusal::duplicateRegistration, "duplicateRegistration"},
                 {Refusal::unknownRegistration, "unknownRegistration"},
                 {Refusal::unknownAgentCaps, "unknownAgentCaps"},
                 {Refusal::parseError, "parseError"},
                 {Refusal::requestDenied, "requestDenied"},
                 {Refusal::processingError, "processingError"}};
    for (const auto& known : names) {
        if (static_cast<std::uint16_t>(known.error) == error)
            return std::string(known.name) + " (" + std::to_string(error) + ")";
    }
    return "error " + std::to_string(error);
}

Header readHeader(std::string_view bytes) {
    if (bytes.size() < headerSize)
        throw Malformed("truncated");
    Header header;
    header.flags = static_cast<std::uint8_t>(bytes[2]);
    Reader reader(bytes, header.order());
    header.version = reader.byte();
    header.type = static_cast<PduType>(reader.byte());
    reader.skip(2);
    header.session = reader.number32();
    header.transaction = reader.number32();
    header.packet = reader.number32();
    header.length = reader.number32();
    return header;
}

RangeRequest readRangeRequest(const Header& header, std::string_view payload) {
    Reader reader = readerOf(header, payload);
    RangeRequest request;
    request.context = readContext(header, reader);
    if (header.type == PduType::getBulk) {
        request.nonRepeaters = reader.number16();
        request.repetitions = reader.number16();
    }
    while (!reader.isAtEnd())
        request.ranges.push_back(reader.range());
    return request;
}

SetRequest readSetRequest(const Header& header, std::string_view payload) {
    Reader reader = readerOf(header, payload);
    SetRequest request{readContext(header, reader), {}};
    while (!reader.isAtEnd())
        request.values.push_back(reader.varBind());
    return request;
}

Response readResponse(const Header& header, std::string_view payload) {
    Reader reader = readerOf(header, payload);
    Response response;
    response.upTime = reader.number32();
    response.error = reader.number16();
    response.index = reader.number16();
    while (!reader.isAtEnd())
        response.variables.push_back(reader.varBind());
    return response;
}

std::string readClose(const Header& header, std::string_view payload) {
    static constexpr const char* reasons[] = {"other reason",      "parse error", "protocol error",
                                              "too many timeouts", "shutdown",    "by the manager"};
    Reader reader = readerOf(header, payload);
    const unsigned reason = reader.byte();
    reader.skip(3);
    reader.expectEnd();
    if (reason < 1 || reason > std::size(reasons))
        return "reason " + std::to_string(reason);
    return reasons[reason - 1];
}

std::string openPdu(const Header& header, std::uint8_t timeout, std::string_view description) {
    Writer pdu = begun(header, PduType::open);
    pdu.byte(timeout);
    pdu.byte(0);
    pdu.number16(0);
    pdu.oid({});
    pdu.octets(description);
    return ended(pdu);
}

std::string closePdu(const Header& header) {
    constexpr std::uint8_t reasonShutdown = 5;
    Writer pdu = begun(header, PduType::close);
    pdu.byte(reasonShutdown);
    pdu.byte(0);
    pdu.number16(0);
    return ended(pdu);
}

std::string registerPdu(const Header& header, const std::string& context, std::uint8_t priority,
                        const Oid& subtree) {
    Writer pdu = begun(header, PduType::registerSubtree, context);
    pdu.byte(0); // the timeout of the session applies
    pdu.byte(priority);
    pdu.number16(0); // no range
    pdu.oid(subtree);
    return ended(pdu);
}

std::string addAgentCapsPdu(const Header& header, const std::string& context, const Oid& id,
                            std::string_view description) {
    Writer pdu = begun(header, PduType::addAgentCaps, context);
    pdu.oid(id);
    pdu.octets(description);
    return ended(pdu);
}

std::string pingPdu(const Header& header, const std::string& context) {
    Writer pdu = begun(header, PduType::ping, context);
    return ended(pdu);
}

ResponsePdu::ResponsePdu(const Header& request, std::uint16_t error, std::uint16_t index)
    : m_bytes(begun(request, PduType::response)) {
    m_bytes.number32(0); // sysUpTime: the master has its own
    m_bytes.number16(error);
    m_bytes.number16(index);
}

std::string ResponsePdu::take() {
    return ended(m_bytes);
}

} // namespace snmp::agentx

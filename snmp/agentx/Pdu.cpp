#include "snmp/agentx/Pdu.hpp"

#include "snmp/agentx/Writer.hpp"

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

/** A PDU that is being written. */
class Draft {
public:
    Draft(Header header, PduType type)
        : m_header(header) {
        m_header.type = type;
        m_header.flags = networkByteOrder;
    }
    Draft(Header header, PduType type, const std::string& context)
        : Draft(header, type) {
        if (context.empty())
            return;
        m_header.flags |= nonDefaultContext;
        m_payload.octets(context);
    }

    Writer& payload() { return m_payload; }

    std::string bytes() {
        Writer all;
        all.byte(m_header.version);
        all.byte(static_cast<std::uint8_t>(m_header.type));
        all.byte(m_header.flags);
        all.byte(0);
        all.number32(m_header.session);
        all.number32(m_header.transaction);
        all.number32(m_header.packet);
        all.number32(static_cast<std::uint32_t>(m_payload.size()));
        all.bytes() += m_payload.bytes();
        return std::move(all.bytes());
    }

private:
    Header m_header;
    Writer m_payload;
};

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

std::string openPdu(Header header, std::uint8_t timeout, std::string_view description) {
    Draft pdu(header, PduType::open);
    pdu.payload().byte(timeout);
    pdu.payload().byte(0);
    pdu.payload().number16(0);
    pdu.payload().oid({});
    pdu.payload().octets(description);
    return pdu.bytes();
}

std::string closePdu(Header header) {
    constexpr std::uint8_t reasonShutdown = 5;
    Draft pdu(header, PduType::close);
    pdu.payload().byte(reasonShutdown);
    pdu.payload().byte(0);
    pdu.payload().number16(0);
    return pdu.bytes();
}

std::string registerPdu(Header header, const std::string& context, std::uint8_t priority,
                        const Oid& subtree) {
    Draft pdu(header, PduType::registerSubtree, context);
    pdu.payload().byte(0); // the timeout of the session applies
    pdu.payload().byte(priority);
    pdu.payload().number16(0); // no range
    pdu.payload().oid(subtree);
    return pdu.bytes();
}

std::string addAgentCapsPdu(Header header, const std::string& context, const Oid& id,
                            std::string_view description) {
    Draft pdu(header, PduType::addAgentCaps, context);
    pdu.payload().oid(id);
    pdu.payload().octets(description);
    return pdu.bytes();
}

std::string pingPdu(Header header, const std::string& context) {
    return Draft(header, PduType::ping, context).bytes();
}

std::string responsePdu(Header header, const Response& response) {
    Draft pdu(header, PduType::response);
    pdu.payload().number32(response.upTime);
    pdu.payload().number16(response.error);
    pdu.payload().number16(response.index);
    for (const VarBind& variable : response.variables)
        pdu.payload().varBind(variable);
    return pdu.bytes();
}

} // namespace snmp::agentx

#ifndef SNMP_AGENTX_PDU_HPP
#define SNMP_AGENTX_PDU_HPP

#include "snmp/Value.hpp"
#include "snmp/agentx/Reader.hpp"
#include "snmp/agentx/Writer.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/** The PDUs between a subagent and its master (RFC 2741). */
namespace snmp::agentx {

enum class PduType : std::uint8_t {
    open = 1,
    close = 2,
    registerSubtree = 3,
    unregister = 4,
    get = 5,
    getNext = 6,
    getBulk = 7,
    testSet = 8,
    commitSet = 9,
    undoSet = 10,
    cleanupSet = 11,
    notify = 12,
    ping = 13,
    indexAllocate = 14,
    indexDeallocate = 15,
    addAgentCaps = 16,
    removeAgentCaps = 17,
    response = 18
};

/** Flags of a header. */
constexpr std::uint8_t nonDefaultContext = 0x08;
constexpr std::uint8_t networkByteOrder = 0x10;

/** Errors of a response in addition to those of snmp::Error. */
enum class Refusal : std::uint16_t {
    openFailed = 256,
    notOpen = 257,
    unsupportedContext = 262,
    duplicateRegistration = 263,
    unknownRegistration = 264,
    unknownAgentCaps = 265,
    parseError = 266,
    requestDenied = 267,
    processingError = 268
};

/** "requestDenied (267)" or, of an error without a known name, "error 999". */
std::string errorText(std::uint16_t error);

/** Bytes of a header. */
constexpr std::size_t headerSize = 20;

/** The start of every PDU. */
struct Header {
    std::uint8_t version = 1;
    PduType type{};
    std::uint8_t flags = networkByteOrder;
    std::uint32_t session = 0;
    std::uint32_t transaction = 0;
    std::uint32_t packet = 0;
    /** Bytes that follow the header. */
    std::uint32_t length = 0;

    ByteOrder order() const { return flags & networkByteOrder ? ByteOrder::network : ByteOrder::little; }
};

/** Reads the first headerSize bytes of a PDU. Throws Malformed if they are fewer. */
Header readHeader(std::string_view bytes);

/** What a Get, GetNext or GetBulk asks for. */
struct RangeRequest {
    /** Empty for the default context. */
    std::string context;
    /** Both are 0 except in a GetBulk. */
    std::uint16_t nonRepeaters = 0;
    std::uint16_t repetitions = 0;
    std::vector<SearchRange> ranges;
};

/** What a TestSet asks for. */
struct SetRequest {
    std::string context;
    std::vector<VarBind> values;
};

/** The answer to a PDU. */
struct Response {
    /** sysUpTime of the master in 1/100 s; 0 from a subagent. */
    std::uint32_t upTime = 0;
    /** A snmp::Error or a Refusal. */
    std::uint16_t error = 0;
    /** The variable that has caused the error, from 1; 0 for none. */
    std::uint16_t index = 0;
    std::vector<VarBind> variables;
};

// These read what follows a header. They throw Malformed.
RangeRequest readRangeRequest(const Header& header, std::string_view payload);
SetRequest readSetRequest(const Header& header, std::string_view payload);
Response readResponse(const Header& header, std::string_view payload);
/** Returns the reason for the end of the session, for people. */
std::string readClose(const Header& header, std::string_view payload);

// These return a whole PDU. They set the type, the flags and the length of the given header. `context` is
// empty for the default context.
/** @param timeout of the master for each request, in seconds */
std::string openPdu(const Header& header, std::uint8_t timeout, std::string_view description);
/** Ends the session because the subagent stops. */
std::string closePdu(const Header& header);
std::string registerPdu(const Header& header, const std::string& context, std::uint8_t priority,
                        const Oid& subtree);
std::string addAgentCapsPdu(const Header& header, const std::string& context, const Oid& id,
                            std::string_view description);
std::string pingPdu(const Header& header, const std::string& context);

/** A Response with variables that are added one by one. */
class ResponsePdu {
public:
    /** @param request the header of the PDU that is answered */
    explicit ResponsePdu(const Header& request, std::uint16_t error = 0, std::uint16_t index = 0);

    void add(const VarBind& variable) { m_bytes.varBind(variable); }
    /** Bytes of the whole PDU. */
    std::size_t size() const { return m_bytes.size(); }
    /** Returns the whole PDU, and leaves this object without it. */
    std::string take();

private:
    Writer m_bytes;
};

} // namespace snmp::agentx
#endif

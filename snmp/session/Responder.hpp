#ifndef SNMP_SESSION_RESPONDER_HPP
#define SNMP_SESSION_RESPONDER_HPP

#include "snmp/Objects.hpp"
#include "snmp/agentx/Pdu.hpp"
#include "snmp/session/Connection.hpp"
#include "snmp/session/Transactions.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace snmp {

/** Requests that wait for their values at a time. A further one gets Error::resourceUnavailable. */
constexpr std::size_t mostWaiting = 256;

/** Bytes of the reply to a GetBulk, after which no repetition begins. A manager takes at most 64 KiB. */
constexpr std::size_t longestBulk = 64 * 1024;

/**
 * Answers the requests of one session. Requests that arrive while others wait for their values or for a write
 * are answered in the meantime.
 */
class Responder : public std::enable_shared_from_this<Responder> {
public:
    Responder(std::shared_ptr<Connection> connection, Objects& objects, std::string context);

    /** Requests of other sessions get Refusal::notOpen, as do all before this call. */
    void open(std::uint32_t session) { m_session = session; }
    /** Answers a request; an error response to any other PDU. */
    void handle(const agentx::Header& header, std::string_view payload);

private:
    void dispatch(const agentx::Header& header, std::string_view payload);
    bool isServed(const agentx::Header& header, const std::string& context) const;
    void testSet(const agentx::Header& header, std::string_view payload);
    void prepare(const agentx::Header& header, std::string_view payload);
    void answer(const agentx::Header& header, agentx::RangeRequest& request);
    void appendBulk(agentx::RangeRequest& request, agentx::ResponsePdu& response);
    void refuse(const agentx::Header& header, agentx::Refusal error) const;

    const std::shared_ptr<Connection> m_connection;
    Objects& m_objects;
    const std::string m_context;
    std::optional<std::uint32_t> m_session;
    std::size_t m_waiting = 0;
    const std::shared_ptr<Transactions> m_transactions;
};

} // namespace snmp
#endif

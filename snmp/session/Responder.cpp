#include "snmp/session/Responder.hpp"

#include <algorithm>
#include <utility>

namespace snmp {

using agentx::Header;
using agentx::PduType;
using agentx::RangeRequest;
using agentx::Refusal;
using agentx::ResponsePdu;

Responder::Responder(std::shared_ptr<Connection> connection, Objects& objects, std::string context)
    : m_connection(std::move(connection))
    , m_objects(objects)
    , m_context(std::move(context))
    , m_transactions(std::make_shared<Transactions>(m_connection, objects)) {}

void Responder::handle(const Header& header, std::string_view payload) {
    try {
        dispatch(header, payload);
    } catch (const agentx::Malformed&) {
        refuse(header, Refusal::parseError);
    }
}

void Responder::dispatch(const Header& header, std::string_view payload) {
    switch (header.type) {
    case PduType::get:
    case PduType::getNext:
    case PduType::getBulk:
        prepare(header, payload);
        return;
    case PduType::testSet:
        testSet(header, payload);
        return;
    case PduType::commitSet:
    case PduType::undoSet:
    case PduType::cleanupSet:
        // These have no payload; snmpd sends its context, which the transaction already has.
        if (header.session == m_session)
            m_transactions->handle(header);
        else if (header.type != PduType::cleanupSet) // never gets a response
            refuse(header, Refusal::notOpen);
        return;
    default:
        refuse(header, Refusal::parseError);
    }
}

/** Whether a request is for this session and its context. Refuses it if not. */
bool Responder::isServed(const Header& header, const std::string& context) const {
    if (header.session != m_session)
        refuse(header, Refusal::notOpen);
    else if (context != m_context)
        refuse(header, Refusal::unsupportedContext);
    else
        return true;
    return false;
}

void Responder::testSet(const Header& header, std::string_view payload) {
    agentx::SetRequest request = agentx::readSetRequest(header, payload);
    if (isServed(header, request.context))
        m_transactions->test(header, std::move(request.values));
}

void Responder::prepare(const Header& header, std::string_view payload) {
    RangeRequest request = agentx::readRangeRequest(header, payload);
    if (!isServed(header, request.context))
        return;
    if (m_waiting == mostWaiting) {
        m_connection->send(
            ResponsePdu(header, static_cast<std::uint16_t>(Error::resourceUnavailable)).take());
        return;
    }
    std::vector<Oid> starts;
    starts.reserve(request.ranges.size());
    for (const SearchRange& range : request.ranges)
        starts.push_back(range.start);
    ++m_waiting;
    m_objects.prepare(starts, [weak = weak_from_this(), header, request = std::move(request)]() mutable {
        if (const std::shared_ptr<Responder> self = weak.lock())
            self->m_connection->guard([&] { self->answer(header, request); });
    });
}

void Responder::answer(const Header& header, RangeRequest& request) {
    --m_waiting;
    ResponsePdu response(header);
    if (header.type == PduType::getBulk)
        appendBulk(request, response);
    else if (header.type == PduType::getNext)
        for (const SearchRange& range : request.ranges)
            response.add(m_objects.next(range));
    else
        for (const SearchRange& range : request.ranges)
            response.add({range.start, m_objects.get(range.start)});
    m_connection->send(response.take());
}

void Responder::appendBulk(RangeRequest& request, ResponsePdu& response) {
    std::vector<SearchRange>& ranges = request.ranges;
    const std::size_t single = std::min<std::size_t>(request.nonRepeaters, ranges.size());
    for (std::size_t i = 0; i < single; ++i)
        response.add(m_objects.next(ranges[i]));

    bool isAtEnd = single == ranges.size();
    for (unsigned n = 0; n < request.repetitions && !isAtEnd && response.size() < longestBulk; ++n) {
        isAtEnd = true;
        for (std::size_t i = single; i < ranges.size(); ++i) {
            VarBind found = m_objects.next(ranges[i]);
            response.add(found);
            isAtEnd = isAtEnd && found.value.type == Type::endOfMibView;
            ranges[i].start = std::move(found.oid);
            ranges[i].include = false;
        }
    }
}

void Responder::refuse(const Header& header, Refusal error) const {
    m_connection->send(ResponsePdu(header, static_cast<std::uint16_t>(error)).take());
}

} // namespace snmp

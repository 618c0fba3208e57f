#ifndef TESTS_SNMP_SCRIPTED_MASTER_HPP
#define TESTS_SNMP_SCRIPTED_MASTER_HPP
#include "snmp/agentx/Pdu.hpp"
#include "util/Descriptor.hpp"

#include <boost/asio/io_context.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/** A PDU that the master has received. */
struct ReceivedPdu {
    snmp::agentx::Header header;
    std::string payload;
};

/**
 * A master on a real socket, in the thread of the subagent: whenever it waits, the subagent runs. Throws
 * std::runtime_error if what it waits for does not happen within ten seconds.
 */
class ScriptedMaster {
public:
    /** Listens at a path, or on a free port of the loopback address if the path is empty. */
    ScriptedMaster(boost::asio::io_context& io, const std::string& path);

    /** Where it listens, as --master takes it. */
    const std::string& address() const { return m_address; }
    /** Accepts the next connection, in place of the current one. */
    void accept();
    void stopListening() { m_listener.reset(); }
    void close() { m_connection.reset(); }

    void send(std::string_view bytes);
    /** The next PDU. */
    ReceivedPdu receive();
    /** Returns when the subagent has closed the connection. Discards what it has sent. */
    void awaitClose();
    /** Runs the subagent as far as possible. Whether it has sent nothing. */
    bool isSilent();
    /** Runs the subagent until a condition holds. */
    void await(const std::function<bool()>& condition);

    /** Replies to a request of the subagent. */
    void reply(const ReceivedPdu& request, std::uint16_t error = 0, std::uint32_t upTime = 0);
    /** Receives a PDU, checks its type, and replies. Returns the PDU. */
    ReceivedPdu answer(snmp::agentx::PduType type, std::uint16_t error = 0);
    /** Accepts a connection, opens session 7, and replies to a number of registrations. */
    void establish(std::size_t registrations);
    /** Sends a request, and receives its response. */
    snmp::agentx::Response exchange(std::string_view pdu);

private:
    void work();
    bool fill();
    bool hasPdu() const;

    boost::asio::io_context& m_io;
    util::Descriptor m_listener{-1};
    std::string m_address;
    util::Descriptor m_connection{-1};
    std::string m_received;
    bool m_isClosed = false;
};

/** The response in a PDU. */
snmp::agentx::Response responseIn(const ReceivedPdu& pdu);

#endif

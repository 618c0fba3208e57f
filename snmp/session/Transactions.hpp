#ifndef SNMP_SESSION_TRANSACTIONS_HPP
#define SNMP_SESSION_TRANSACTIONS_HPP

#include "snmp/Objects.hpp"
#include "snmp/agentx/Pdu.hpp"
#include "snmp/session/Connection.hpp"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace snmp {

/** Sets at a time. A further TestSet gets Error::resourceUnavailable. */
constexpr std::size_t mostTransactions = 64;

/**
 * The sets of one session, by their transaction identifiers. Each is tested, then committed, then undone or
 * cleaned up. A phase out of this order gets Refusal::processingError and changes nothing.
 *
 * With the session, its transactions end: a value that is not committed yet is not written, and a committed
 * one stays.
 */
class Transactions : public std::enable_shared_from_this<Transactions> {
public:
    Transactions(std::shared_ptr<Connection> connection, Objects& objects);

    /** Begins a set: a TestSet. */
    void test(const agentx::Header& header, std::vector<VarBind> values);
    /** A later phase: CommitSet, UndoSet or CleanupSet. */
    void handle(const agentx::Header& header);

private:
    enum class Phase { testing, tested, committing, committed, undoing };

    struct Transaction {
        Phase phase = Phase::testing;
        /** Of the PDU that is or was carried out. */
        agentx::Header current{};
        /** An UndoSet that waits for the end of the commit. */
        std::optional<agentx::Header> undo{};
        std::unique_ptr<Write> write{};
    };
    using Found = std::map<std::uint32_t, Transaction>::iterator;

    void onPrepared(const agentx::Header& header, const std::vector<VarBind>& values);
    void commit(Transaction& transaction, const agentx::Header& header);
    void onCommitted(const agentx::Header& header, SetResult result);
    void undo(Found found, const agentx::Header& header);
    void startUndo(Transaction& transaction, const agentx::Header& header);
    void onUndone(const agentx::Header& header, SetResult result);
    void cleanUp(Found found);

    Write::Done whenDone(const agentx::Header& header,
                         void (Transactions::*next)(const agentx::Header&, SetResult));
    Found current(const agentx::Header& header, Phase phase);
    void reply(const agentx::Header& header, SetResult result) const;
    void refuse(const agentx::Header& header) const;

    const std::shared_ptr<Connection> m_connection;
    Objects& m_objects;
    std::map<std::uint32_t, Transaction> m_transactions;
};

} // namespace snmp
#endif

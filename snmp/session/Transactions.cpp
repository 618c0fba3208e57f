#include "snmp/session/Transactions.hpp"

#include <utility>

namespace snmp {

using agentx::Header;
using agentx::PduType;
using agentx::ResponsePdu;

Transactions::Transactions(std::shared_ptr<Connection> connection, Objects& objects)
    : m_connection(std::move(connection))
    , m_objects(objects) {}

void Transactions::test(const Header& header, std::vector<VarBind> values) {
    if (m_transactions.count(header.transaction) != 0) {
        refuse(header);
        return;
    }
    if (m_transactions.size() == mostTransactions) {
        reply(header, {Error::resourceUnavailable, 0});
        return;
    }
    std::vector<Oid> oids;
    oids.reserve(values.size());
    for (const VarBind& value : values)
        oids.push_back(value.oid);
    m_transactions[header.transaction].current = header;
    m_objects.prepare(oids, [weak = weak_from_this(), header, values = std::move(values)] {
        if (const std::shared_ptr<Transactions> self = weak.lock())
            self->m_connection->guard([&] { self->onPrepared(header, values); });
    });
}

void Transactions::onPrepared(const Header& header, const std::vector<VarBind>& values) {
    const Found found = current(header, Phase::testing);
    if (found == m_transactions.end())
        return;
    TestedSet tested = m_objects.test(values);
    if (tested.result.error == Error::none) {
        found->second.phase = Phase::tested;
        found->second.write = std::move(tested.write);
    } else {
        m_transactions.erase(found);
    }
    reply(header, tested.result);
}

void Transactions::handle(const Header& header) {
    const Found found = m_transactions.find(header.transaction);
    if (header.type == PduType::cleanupSet)
        cleanUp(found);
    else if (found == m_transactions.end())
        refuse(header);
    else if (header.type == PduType::undoSet)
        undo(found, header);
    else
        commit(found->second, header);
}

void Transactions::commit(Transaction& transaction, const Header& header) {
    if (transaction.phase == Phase::committing && transaction.current.packet == header.packet)
        return; // a repetition: the master has not got its reply yet
    if (transaction.phase != Phase::tested) {
        refuse(header);
        return;
    }
    transaction.phase = Phase::committing;
    transaction.current = header;
    transaction.write->commit(whenDone(header, &Transactions::onCommitted));
}

void Transactions::onCommitted(const Header& header, SetResult result) {
    const Found found = current(header, Phase::committing);
    if (found == m_transactions.end())
        return;
    found->second.phase = Phase::committed;
    reply(header, result);
    if (found->second.undo)
        startUndo(found->second, *found->second.undo);
}

void Transactions::undo(Found found, const Header& header) {
    Transaction& transaction = found->second;
    switch (transaction.phase) {
    case Phase::testing:
    case Phase::tested: // nothing was written
        m_transactions.erase(found);
        reply(header, {});
        return;
    case Phase::committing:
        transaction.undo = header;
        return;
    case Phase::committed:
        startUndo(transaction, header);
        return;
    case Phase::undoing:
        if (transaction.current.packet != header.packet) // no repetition
            refuse(header);
    }
}

void Transactions::startUndo(Transaction& transaction, const Header& header) {
    transaction.phase = Phase::undoing;
    transaction.current = header;
    transaction.write->undo(whenDone(header, &Transactions::onUndone));
}

void Transactions::onUndone(const Header& header, SetResult result) {
    const Found found = current(header, Phase::undoing);
    if (found == m_transactions.end())
        return;
    m_transactions.erase(found);
    reply(header, result);
}

/** The end of a transaction. It gets no response. An undo ends the transaction itself. */
void Transactions::cleanUp(Found found) {
    if (found == m_transactions.end() || found->second.phase == Phase::undoing || found->second.undo)
        return;
    m_transactions.erase(found);
}

Write::Done Transactions::whenDone(const Header& header,
                                   void (Transactions::*next)(const Header&, SetResult)) {
    return [weak = weak_from_this(), header, next](SetResult result) {
        if (const std::shared_ptr<Transactions> self = weak.lock())
            self->m_connection->guard([&] { (self.get()->*next)(header, result); });
    };
}

/** The transaction in which a PDU is being carried out; end() if it is over. */
Transactions::Found Transactions::current(const Header& header, Phase phase) {
    const Found found = m_transactions.find(header.transaction);
    if (found == m_transactions.end() || found->second.phase != phase ||
        found->second.current.packet != header.packet)
        return m_transactions.end();
    return found;
}

void Transactions::reply(const Header& header, SetResult result) const {
    m_connection->send(ResponsePdu(header, static_cast<std::uint16_t>(result.error),
                                   static_cast<std::uint16_t>(result.index))
                           .take());
}

void Transactions::refuse(const Header& header) const {
    m_connection->send(
        ResponsePdu(header, static_cast<std::uint16_t>(agentx::Refusal::processingError)).take());
}

} // namespace snmp

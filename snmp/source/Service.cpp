// What the child process does: reads groups and writes values through the library.
#include "agent/Change.hpp"
#include "agent/Endpoint.hpp"
#include "agent/Group.hpp"
#include "snmp/Fields.hpp"
#include "snmp/mapping/Mapping.hpp"
#include "snmp/source/Child.hpp"
#include "snmp/source/Message.hpp"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <stdexcept>
#include <unistd.h>

namespace snmp {
namespace {

constexpr long processGroup = 16;
constexpr long processStatisticsGroup = 22;
/** Has one instance in every object manager: one that does not answer a read of it is lost. */
constexpr long probedGroup = 2;

/** False at the end of the stream. Throws std::runtime_error if it ends within the bytes, or fails. */
bool receive(int socket, void* bytes, std::size_t size) {
    std::size_t have = 0;
    while (have < size) {
        const ssize_t count = ::read(socket, static_cast<char*>(bytes) + have, size - have);
        if (count == 0 && have == 0)
            return false;
        if (count > 0)
            have += static_cast<std::size_t>(count);
        else if (count == 0 || errno != EINTR)
            throw std::runtime_error("no message");
    }
    return true;
}

std::optional<Message> receive(int socket) {
    MessageHead head{};
    if (!receive(socket, head.data(), sizeof head))
        return std::nullopt;
    Message message{static_cast<MessageKind>(head[0]), std::string(head[1], '\0')};
    receive(socket, message.bytes.data(), message.bytes.size());
    return message;
}

void send(int socket, const void* bytes, std::size_t size) {
    const char* next = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t count = ::write(socket, next, size);
        if (count < 0 && errno != EINTR)
            throw std::runtime_error("the parent is gone");
        if (count > 0) {
            next += count;
            size -= static_cast<std::size_t>(count);
        }
    }
}

void send(int socket, const Message& message) {
    const MessageHead head = headOf(message);
    send(socket, head.data(), sizeof head);
    send(socket, message.bytes.data(), message.bytes.size());
}

std::string itemsOf(const std::vector<agent::Row>& rows) {
    std::string items;
    for (const agent::Row& row : rows) {
        for (const agent::Property& property : row.properties) {
            for (const std::string& value : property.values)
                appendItem(items, row.number, property.attribute->nominator, value);
        }
    }
    return items;
}

class Service {
public:
    Service(int socket, const std::string& url)
        : m_socket(socket) {
        if (!url.empty())
            OWB_URLSet(url.c_str());
    }

    void run() {
        while (const std::optional<Message> message = receive(m_socket)) {
            if (message->kind == MessageKind::write)
                send(m_socket, {MessageKind::written, encoded(written(decodedOrder(message->bytes)))});
            else
                read(message->bytes);
        }
    }

private:
    void read(const std::string& groups) {
        ReadResult result = ReadResult::notAsked;
        for (FieldReader reader(groups); !reader.isAtEnd();) {
            const auto number = static_cast<long>(reader.number());
            if ((number == processGroup || number == processStatisticsGroup) && isLocal()) {
                if (number == processGroup)
                    sendProcesses();
                continue;
            }
            result = ReadResult::answered;
            if (readAndSend(number))
                continue;
            const agent::Group probe = agent::readGroup(probedGroup);
            if (probe.status != OWB_DONE) {
                sendEnd(ReadResult::lost, probe.failure.text);
                return;
            }
            // It may have come back only now.
            if (!readAndSend(number))
                sendFailure(number);
        }
        sendEnd(result, {});
    }

    void sendEnd(ReadResult result, const std::string& reason) {
        std::string bytes;
        appendNumber(bytes, static_cast<std::uint32_t>(result));
        appendText(bytes, reason);
        send(m_socket, {MessageKind::end, bytes});
    }

    bool readAndSend(long number) {
        const agent::Group group = agent::readGroup(number);
        if (group.status == OWB_DONE)
            sendGroup(number, group.rows);
        return group.status == OWB_DONE;
    }

    /** The inventory of the library knows the processes of this host better than a reply of their list. */
    void sendProcesses() {
        agent::Queue queue;
        OWB_getSWRun(queue.head());
        for (const long group : {processGroup, processStatisticsGroup})
            sendGroup(group, agent::rowsOf(group, queue));
    }

    void sendGroup(long number, const std::vector<agent::Row>& rows) {
        std::string bytes;
        appendNumber(bytes, static_cast<std::uint32_t>(number));
        bytes += itemsOf(rows);
        if (bytes.size() > longestMessage)
            sendFailure(number);
        else
            send(m_socket, {MessageKind::group, bytes});
    }

    void sendFailure(long number) {
        std::string bytes;
        appendNumber(bytes, static_cast<std::uint32_t>(number));
        send(m_socket, {MessageKind::failedGroup, bytes});
    }

    /** Whether the object manager is one of this host. */
    static bool isLocal() {
        try {
            const agent::Endpoint endpoint = agent::endpointOf(OWB_URLGet());
            return !endpoint.socketPath.empty() || endpoint.port == agent::Endpoint::ownSocket;
        } catch (...) { // a malformed URL: the read reports it
            return false;
        }
    }

    WriteOutcome written(const WriteOrder& order) {
        const TableRule& rule = tableRules().at(order.table);
        const std::optional<long> row = rowOf(rule, order);
        if (!row)
            return {false, true, {}};
        agent::WriteRequest request{order.group, *row, {}};
        for (const auto& [nominator, value] : order.values)
            request.assignments.push_back({attributeAt(order.group, nominator), value});
        return outcomeOf(agent::writeRow(request, nullptr), rule, order);
    }

    /** Number of the row that an index names now. */
    static std::optional<long> rowOf(const TableRule& rule, const WriteOrder& order) {
        const agent::Group group = agent::readGroup(order.group);
        if (group.status != OWB_DONE)
            return std::nullopt;
        Readings readings;
        readings.emplace_back(order.group, itemsOf(group.rows));
        for (const Record& record : recordsOf(rule, readings)) {
            if (indexOf(rule, record) == order.index)
                return record.base->row();
        }
        return std::nullopt;
    }

    /** Taken only if the values are there, in a row that still has its name. */
    static WriteOutcome outcomeOf(const agent::Write& write, const TableRule& rule, const WriteOrder& order) {
        WriteOutcome outcome;
        outcome.isTaken = write.error.empty();
        outcome.before.resize(write.changes.empty() ? 0 : order.values.size());
        for (const agent::Change& change : write.changes) {
            const auto& names = rule.index.nominators;
            const bool isName =
                std::find(names.begin(), names.end(), change.attribute->nominator) != names.end();
            if (change.isRejected() || (isName && change.isChanged()))
                outcome.isTaken = false;
            for (std::size_t i = 0; i < outcome.before.size(); ++i) {
                if (order.values[i].first == change.attribute->nominator && !change.before.empty())
                    outcome.before[i] = change.before.front();
            }
        }
        return outcome;
    }

    int m_socket;
};

} // namespace

void serveParent(int socket, const std::string& url) {
    Service(socket, url).run();
}

} // namespace snmp

#include "snmp/WriteSet.hpp"

#include <algorithm>
#include <utility>

namespace snmp {
namespace {

/** The values for one row. */
struct RowWrite {
    /** The first variable of the row, from 1. */
    std::size_t variable;
    WriteOrder order;
    /** Values to write back. */
    std::vector<std::string> before;
    /** The order may have changed the row. */
    bool isSent = false;
};

WriteOrder undoOf(const RowWrite& row) {
    WriteOrder order = row.order;
    for (std::size_t i = 0; i < order.values.size(); ++i)
        order.values[i].second = row.before[i];
    return order;
}

std::size_t subjectOf(const RowWrite& row) {
    return static_cast<std::size_t>(tableRules()[row.order.table].subject);
}

/** A phase that is under way. The orders hold it weakly: it ends with its set. */
class Phase : public std::enable_shared_from_this<Phase> {
public:
    Phase(boost::asio::io_context& io, std::weak_ptr<Snapshots> snapshots, std::vector<RowWrite> rows)
        : m_snapshots(std::move(snapshots))
        , m_rows(std::move(rows))
        , m_limit(io) {}

    void commit(Write::Done done) {
        begin(std::move(done), Error::commitFailed);
        m_next = 0;
        commitNext(m_phase);
    }

    void undo(Write::Done done) {
        begin(std::move(done), Error::undoFailed);
        m_next = m_rows.size();
        undoNext(m_phase);
    }

private:
    /** What arrives for an earlier phase is ignored. */
    void begin(Write::Done done, Error failure) {
        ++m_phase;
        m_done = std::move(done);
        m_failure = failure;
        m_isWritten = false;
        m_limit.expires_after(writeTime);
        m_limit.async_wait(
            [weak = weak_from_this(), phase = m_phase](const boost::system::error_code& error) {
                const std::shared_ptr<Phase> self = weak.lock();
                if (self && !error && self->m_phase == phase)
                    self->finish(self->m_isWritten);
            });
    }

    void commitNext(unsigned phase) {
        if (m_next == m_rows.size()) {
            readBack(phase);
            return;
        }
        RowWrite& row = m_rows[m_next];
        row.isSent = true;
        send(row.order, phase, [](Phase& self, const WriteOutcome& outcome) {
            RowWrite& written = self.m_rows[self.m_next];
            written.isSent = !outcome.isUntouched;
            if (outcome.before.size() == written.before.size())
                written.before = outcome.before;
            if (!outcome.isTaken) {
                self.finish(false);
                return;
            }
            ++self.m_next;
            self.commitNext(self.m_phase);
        });
    }

    void undoNext(unsigned phase) {
        while (m_next > 0 && !m_rows[m_next - 1].isSent)
            --m_next;
        if (m_next == 0) {
            readBack(phase);
            return;
        }
        send(undoOf(m_rows[m_next - 1]), phase, [](Phase& self, const WriteOutcome& outcome) {
            if (!outcome.isTaken) {
                self.finish(false);
                return;
            }
            --self.m_next;
            self.undoNext(self.m_phase);
        });
    }

    void send(const WriteOrder& order, unsigned phase, void (*then)(Phase&, const WriteOutcome&)) {
        const std::shared_ptr<Snapshots> snapshots = m_snapshots.lock();
        if (!snapshots)
            return;
        snapshots->source().write(order, [weak = weak_from_this(), phase, then](const WriteOutcome& outcome) {
            const std::shared_ptr<Phase> self = weak.lock();
            if (self && self->m_done && self->m_phase == phase)
                then(*self, outcome);
        });
    }

    /** Replaces the snapshots, so that the next get has the new values. */
    void readBack(unsigned phase) {
        m_isWritten = true;
        const std::shared_ptr<Snapshots> snapshots = m_snapshots.lock();
        if (!snapshots)
            return;
        Subjects subjects;
        for (const RowWrite& row : m_rows)
            subjects.set(subjectOf(row));
        snapshots->reread(subjects, writeTime, [weak = weak_from_this(), phase] {
            const std::shared_ptr<Phase> self = weak.lock();
            if (self && self->m_phase == phase)
                self->finish(true);
        });
    }

    void finish(bool isDone) {
        m_limit.cancel();
        const Write::Done done = std::exchange(m_done, nullptr);
        if (!done)
            return;
        if (isDone)
            done({});
        else
            done({m_failure, m_rows[std::min(m_next, m_rows.size() - 1)].variable});
    }

    std::weak_ptr<Snapshots> m_snapshots;
    std::vector<RowWrite> m_rows;
    boost::asio::steady_timer m_limit;
    unsigned m_phase = 0;
    /** Index of the row that is being written; in an undo, of the one after it. */
    std::size_t m_next = 0;
    bool m_isWritten = false;
    Error m_failure = Error::commitFailed;
    Write::Done m_done;
};

class WriteSet final : public Write {
public:
    explicit WriteSet(std::shared_ptr<Phase> phase)
        : m_phase(std::move(phase)) {}

    void commit(Done done) override { m_phase->commit(std::move(done)); }
    void undo(Done done) override { m_phase->undo(std::move(done)); }

private:
    std::shared_ptr<Phase> m_phase;
};

} // namespace

std::unique_ptr<Write> makeWrite(boost::asio::io_context& io, std::weak_ptr<Snapshots> snapshots,
                                 const std::vector<TestedValue>& values) {
    std::vector<RowWrite> rows;
    for (const TestedValue& value : values) {
        auto row = std::find_if(rows.begin(), rows.end(), [&value](const RowWrite& candidate) {
            return candidate.order.group == value.group && candidate.order.index == value.index;
        });
        if (row == rows.end())
            row = rows.insert(rows.end(),
                              {value.variable, {value.table, value.group, value.index, {}}, {}, false});
        row->order.values.emplace_back(value.nominator, value.text);
        row->before.push_back(value.before);
    }
    return std::make_unique<WriteSet>(std::make_shared<Phase>(io, std::move(snapshots), std::move(rows)));
}

} // namespace snmp

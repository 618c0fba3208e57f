#include "snmp/ManagedObjects.hpp"

#include "snmp/Snapshots.hpp"
#include "snmp/WriteSet.hpp"
#include "snmp/mapping/Mapping.hpp"
#include "snmp/tree/Tree.hpp"
#include "snmp/tree/Walks.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace snmp {
namespace {

std::size_t subjectOf(std::size_t table) {
    return static_cast<std::size_t>(tableMappings()[table].rule->subject);
}

Tree makeTree() {
    std::vector<TreeColumn> columns;
    const std::vector<TableMapping>& mappings = tableMappings();
    for (std::size_t table = 0; table < mappings.size(); ++table) {
        for (std::size_t cell = 0; cell < mappings[table].columns.size(); ++cell)
            columns.push_back(
                {joined(mappings[table].entry, {mappings[table].columns[cell].number}), table, cell});
    }
    return Tree(std::move(columns));
}

/** The table's own identifier, or those of the instances of objects that exist once. */
void addTables(std::set<Oid>& subtrees, const TableMapping& mapping) {
    if (mapping.rule->index.kind != IndexRule::Kind::zero) {
        subtrees.insert(Oid(mapping.entry.begin(), mapping.entry.end() - 1));
        return;
    }
    for (const Column& column : mapping.columns)
        subtrees.insert(joined(mapping.entry, {column.number, 0}));
}

Oid belowMib2(const char* oid) {
    return joined(mib2, parseOid(oid));
}

} // namespace

class ManagedObjects::State : public std::enable_shared_from_this<State> {
public:
    State(boost::asio::io_context& io, const ObjectSettings& settings)
        : m_io(io)
        , m_settings(settings)
        , m_tree(makeTree())
        , m_forget(io)
        , m_snapshots(std::make_shared<Snapshots>(io, settings, SourceSettings())) {
        m_snapshots->reread(Subjects().set(), answerTime, [] {});
    }

    void stop() {
        m_forget.cancel();
        m_snapshots.reset();
    }

    bool registersTables() const { return m_settings.registersTables; }
    Snapshots& snapshots() { return *m_snapshots; }

    void prepare(const std::vector<Oid>& starts, std::function<void()> ready) {
        Subjects touched;
        const Tree::Tables tables = [this, &touched](std::size_t table) {
            touched.set(subjectOf(table));
            return currentTable(table);
        };
        for (const Oid& start : starts) {
            m_tree.get(start, tables);
            m_tree.next({start, false, {}}, tables);
        }
        m_snapshots->refresh(touched, answerTime, std::move(ready));
    }

    Value get(const Oid& oid) const {
        return m_tree.get(oid, [this](std::size_t table) { return currentTable(table); });
    }

    VarBind next(const SearchRange& range) {
        const Clock::time_point now = Clock::now();
        const SnapshotPointer walk = m_walks.find(range.start, now);
        std::optional<Tree::Found> found = m_tree.next(range, [this, &walk](std::size_t table) {
            return walk && walk->subject == subjectOf(table) ? walk->table(table) : currentTable(table);
        });
        if (!found)
            return {range.start, {Type::endOfMibView, {}}};
        const std::size_t subject = subjectOf(found->table);
        m_walks.remember(found->object.oid,
                         walk && walk->subject == subject ? walk : m_snapshots->current(subject), now);
        forgetLater();
        return std::move(found->object);
    }

    TestedSet test(const std::vector<VarBind>& values) {
        std::vector<TestedValue> tested;
        for (std::size_t i = 0; i < values.size(); ++i) {
            TestedValue value;
            value.variable = i + 1;
            if (const Error error = test(values[i], value); error != Error::none)
                return {{error, i + 1}, nullptr};
            tested.push_back(std::move(value));
        }
        return {{}, makeWrite(m_io, m_snapshots, tested)};
    }

private:
    const Table* currentTable(std::size_t table) const {
        const SnapshotPointer snapshot = m_snapshots->current(subjectOf(table));
        return snapshot ? snapshot->table(table) : nullptr; // m_snapshots keeps it
    }

    /** In the order of RFC 3416, 4.2.5. */
    Error test(const VarBind& object, TestedValue& tested) const {
        const TreeColumn* const at = m_tree.find(object.oid);
        if (at == nullptr || m_settings.isReadOnly)
            return Error::notWritable;
        const Column& column = tableMappings()[at->table].columns[at->cell];
        if (column.rule.access != Access::readWrite)
            return Error::notWritable;
        if (object.value.type != typeOf(column.rule.syntax))
            return Error::wrongType;
        const auto& text = std::get<std::string>(object.value.content);
        if (text.size() > column.rule.size)
            return Error::wrongLength;
        if (!isUtf8(text) || text.find('\0') != std::string::npos)
            return Error::wrongValue;
        return testRow(object, *at, column, tested);
    }

    Error testRow(const VarBind& object, const TreeColumn& at, const Column& column,
                  TestedValue& tested) const {
        const Table* const table = currentTable(at.table);
        if (table == nullptr)
            return Error::resourceUnavailable;
        const Row* const row = table->find(indexIn(object.oid, at.oid));
        if (row == nullptr)
            return Error::noCreation;
        const agent::Attribute* const attribute = writableAttribute(column, row->group);
        if (attribute == nullptr)
            return Error::notWritable;
        const auto* const before = std::get_if<std::string>(&row->cells[at.cell].content);
        tested = {tested.variable,
                  at.table,
                  row->group,
                  row->index,
                  attribute->nominator,
                  std::get<std::string>(object.value.content),
                  before == nullptr ? std::string() : *before};
        return Error::none;
    }

    /** Releases the snapshots of walks that have ended. No timer runs while there are none. */
    void forgetLater() {
        if (m_isForgetting)
            return;
        m_isForgetting = true;
        m_forget.expires_after(Walks::memory);
        m_forget.async_wait([weak = weak_from_this()](const boost::system::error_code& error) {
            const std::shared_ptr<State> self = weak.lock();
            if (!self || error)
                return;
            self->m_isForgetting = false;
            if (self->m_walks.forget(Clock::now()))
                self->forgetLater();
        });
    }

    boost::asio::io_context& m_io;
    const ObjectSettings m_settings;
    const Tree m_tree;
    Walks m_walks;
    bool m_isForgetting = false;
    boost::asio::steady_timer m_forget;
    std::shared_ptr<Snapshots> m_snapshots;
};

ManagedObjects::ManagedObjects(boost::asio::io_context& io, ObjectSettings settings)
    : m_state(std::make_shared<State>(io, std::move(settings))) {}

ManagedObjects::~ManagedObjects() {
    m_state->stop();
}

std::vector<Oid> ManagedObjects::subtrees() const {
    std::set<Oid> subtrees;
    for (const TableMapping& mapping : tableMappings()) {
        if (m_state->registersTables())
            addTables(subtrees, mapping);
        else
            subtrees.insert(Oid(mapping.entry.begin(), mapping.entry.begin() + mib2.size() + 1));
    }
    return {subtrees.begin(), subtrees.end()};
}

std::vector<Module> ManagedObjects::modules() const {
    return {{belowMib2("31"), "The MIB module for generic objects of network interface sub-layers"},
            {belowMib2("48"), "The MIB module for managing IP and ICMP"},
            {belowMib2("49"), "The MIB module for managing TCP"},
            {belowMib2("50"), "The MIB module for managing UDP"},
            {belowMib2("25.7.1"), "The MIB module for managing host systems"},
            {belowMib2("47"), "The MIB module for physical parts"}};
}

void ManagedObjects::setUpTime(std::uint32_t hundredths) {
    m_state->snapshots().setUpTime(hundredths);
}

void ManagedObjects::prepare(const std::vector<Oid>& starts, std::function<void()> ready) {
    m_state->prepare(starts, std::move(ready));
}

Value ManagedObjects::get(const Oid& oid) {
    return m_state->get(oid);
}

VarBind ManagedObjects::next(const SearchRange& range) {
    return m_state->next(range);
}

TestedSet ManagedObjects::test(const std::vector<VarBind>& values) {
    return m_state->test(values);
}

} // namespace snmp

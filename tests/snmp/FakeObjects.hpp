#ifndef TESTS_SNMP_FAKE_OBJECTS_HPP
#define TESTS_SNMP_FAKE_OBJECTS_HPP
#include "snmp/Objects.hpp"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/** Objects from a map, which a test may change. All are texts that may be written. */
class FakeObjects : public snmp::Objects {
public:
    std::map<snmp::Oid, snmp::Value> values;
    std::vector<snmp::Oid> roots;
    std::vector<snmp::Module> capabilities;
    std::uint32_t upTime = 0;

    /** Whether prepare() leaves its callbacks to the test, in `waiting`. */
    bool holdsPreparations = false;
    std::vector<std::function<void()>> waiting;

    /** Results of the phases of a write, and whether they are left to the test, in `running`. */
    snmp::SetResult commitResult{};
    snmp::SetResult undoResult{};
    bool holdsPhases = false;
    std::vector<snmp::Write::Done> running;
    std::size_t writes = 0; // that exist

    /** Called by each get(). */
    std::function<void(const snmp::Oid&)> onGet = [](const snmp::Oid&) {};

    void setText(const snmp::Oid& oid, const std::string& text) {
        values[oid] = {snmp::Type::octetString, text};
    }
    std::string textOf(const snmp::Oid& oid) const { return std::get<std::string>(values.at(oid).content); }

    std::vector<snmp::Oid> subtrees() const override { return roots; }
    std::vector<snmp::Module> modules() const override { return capabilities; }
    void setUpTime(std::uint32_t hundredths) override { upTime = hundredths; }

    void prepare(const std::vector<snmp::Oid>&, std::function<void()> ready) override {
        if (holdsPreparations)
            waiting.push_back(std::move(ready));
        else
            ready();
    }
    snmp::Value get(const snmp::Oid& oid) override {
        onGet(oid);
        const auto found = values.find(oid);
        return found == values.end() ? snmp::Value{snmp::Type::noSuchInstance, {}} : found->second;
    }
    snmp::VarBind next(const snmp::SearchRange& range) override {
        const auto found = range.include ? values.lower_bound(range.start) : values.upper_bound(range.start);
        if (found == values.end() || (!range.end.empty() && found->first >= range.end))
            return {range.start, {snmp::Type::endOfMibView, {}}};
        return {found->first, found->second};
    }
    snmp::TestedSet test(const std::vector<snmp::VarBind>& wanted) override {
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            if (values.count(wanted[i].oid) == 0)
                return {{snmp::Error::noCreation, i + 1}, nullptr};
            if (wanted[i].value.type != snmp::Type::octetString)
                return {{snmp::Error::wrongType, i + 1}, nullptr};
        }
        return {{}, std::make_unique<FakeWrite>(*this, wanted)};
    }

private:
    class FakeWrite : public snmp::Write {
    public:
        FakeWrite(FakeObjects& objects, std::vector<snmp::VarBind> wanted)
            : m_objects(objects)
            , m_wanted(std::move(wanted)) {
            ++m_objects.writes;
        }
        ~FakeWrite() override { --m_objects.writes; }
        FakeWrite(const FakeWrite&) = delete;
        FakeWrite& operator=(const FakeWrite&) = delete;

        void commit(Done done) override {
            for (const snmp::VarBind& each : m_wanted)
                m_before.push_back({each.oid, std::exchange(m_objects.values[each.oid], each.value)});
            m_objects.end(std::move(done), m_objects.commitResult);
        }
        void undo(Done done) override {
            for (const snmp::VarBind& each : m_before)
                m_objects.values[each.oid] = each.value;
            m_objects.end(std::move(done), m_objects.undoResult);
        }

    private:
        FakeObjects& m_objects;
        std::vector<snmp::VarBind> m_wanted;
        std::vector<snmp::VarBind> m_before;
    };

    void end(snmp::Write::Done done, snmp::SetResult result) {
        if (holdsPhases)
            running.push_back(std::move(done));
        else
            done(result);
    }
};

#endif

// The search for duplicates within requests, compared with a search of all items for each append. The agent
// must see the same items, order, links, size, cursor after each append, and output.
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include "Agent.hpp"
#include "Instances.hpp"
#include "Interposed.hpp"
#include "NaiveQueue.hpp"
#include "support/Wire.hpp"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace wire = support::wire;
using namespace OpenWBEM;
using support::Step;

/** A property of a chassis: a text, an array of texts or null. */
struct Made {
    std::string name;
    enum Kind { text, array, null } kind;
    std::vector<std::string> values;
};

class Random {
public:
    explicit Random(unsigned seed)
        : m_engine(seed) {}

    long number(long least, long most) {
        return least + static_cast<long>(m_engine() % static_cast<unsigned long>(most - least + 1));
    }
    bool isOneIn(long count) { return number(1, count) == 1; }

    /** Some instances have a property twice, also in different case. */
    std::vector<Made> instance() {
        static const char* const names[] = {"Model",      "MODEL",       "Version", "ElementName",
                                            "PartNumber", "ELEMENTNAME", "Unknown", "UserTracking"};
        std::vector<Made> properties(static_cast<std::size_t>(number(0, 5)));
        for (Made& property : properties) {
            property.name = names[number(0, 7)];
            property.kind = static_cast<Made::Kind>(number(0, 2));
            property.values.resize(static_cast<std::size_t>(property.kind == Made::text ? 1 : number(0, 3)));
            for (std::string& value : property.values)
                value = std::to_string(number(0, 99));
        }
        return properties;
    }

private:
    std::mt19937 m_engine;
};

std::string onTheWire(const std::vector<Made>& made) {
    std::vector<std::string> properties;
    for (const Made& property : made) {
        std::vector<std::string> values;
        for (const std::string& value : property.values)
            values.push_back(wire::text(value));
        if (property.kind == Made::text)
            properties.push_back(wire::stringProperty(property.name, property.values[0]));
        else if (property.kind == Made::array)
            properties.push_back(wire::arrayProperty(property.name, wire::STRING, values));
        else
            properties.push_back(wire::nullProperty(property.name, wire::STRING));
    }
    return wire::instance("QAV_K70Chassis", properties);
}

CIMInstance inMemory(const std::vector<Made>& all) {
    CIMPropertyArray properties;
    for (const Made& made : all) {
        const CIMName name(made.name.c_str());
        StringArray texts;
        for (const std::string& text : made.values)
            texts.push_back(String(text.c_str()));
        if (made.kind == Made::text)
            properties.push_back(CIMProperty(name, CIMValue(texts[0])));
        else if (made.kind == Made::array)
            properties.push_back(CIMProperty(name, CIMValue(texts)));
        else
            properties.push_back(CIMProperty(name, CIMDataType::STRING));
    }
    CIMInstance instance("QAV_K70Chassis");
    instance.setProperties(properties);
    return instance;
}

/** Every third answer to an agent is a single instance, the others are enumerations. */
bool isSingle(std::size_t answer) {
    return answer % 3 == 2;
}

std::vector<Step> answers(unsigned seed, std::size_t count) {
    Random random(seed);
    std::vector<Step> steps;
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<std::string> instances(static_cast<std::size_t>(isSingle(i) ? 1 : random.number(0, 6)));
        for (std::string& instance : instances)
            instance = onTheWire(random.instance());
        steps.push_back(Step::answer(isSingle(i) ? wire::plainReply(std::string(1, '\0') + instances[0])
                                                 : wire::chunkedReply(wire::enumeration(instances))));
    }
    return steps;
}

char anyPath[] = "QAV_K70Chassis.Tag=\"t\"";

/** Random actions of an agent on one queue, and the expected contents of the queue. */
class Scenario {
public:
    Scenario(unsigned seed, TestQueue& queue)
        : m_random(seed)
        , m_queue(queue) {
        interposed::debug = [this](const interposed::Diagnostic& diagnostic) {
            EXPECT_EQ(std::string::npos, diagnostic.message.find("ERROR")) << diagnostic.message;
            if (diagnostic.function == "OWB_itemAdd" && diagnostic.line == 197)
                m_cursors.push_back(index(m_queue->cursor));
        };
        interposed::instanceData = [this](long group, CIMInstance& instance, long row, _qHead* q) {
            return interpose(group, instance, row, q);
        };
    }

    void run(std::size_t requests) {
        for (std::size_t i = 0; i < requests; ++i) {
            while (!m_random.isOneIn(3))
                actAsAgent();
            m_isInterposing = m_random.isOneIn(2);
            request(isSingle(i));
            m_isInterposing = false;
            compare();
        }
    }

    const std::string& printed() const { return m_model.printed(); }

private:
    long index(const _qItem* searched) {
        long position = 0;
        for (const _qItem* item = m_queue->first; item != m_queue.end(); item = item->next, ++position)
            if (item == searched)
                return position;
        return -1;
    }

    NaiveQueue::Item anyItem(long group, long row) {
        return {group, m_random.number(0, 12), row, m_random.number(0, 1), "own"};
    }

    void append(const NaiveQueue::Item& item) {
        m_model.append(item);
        OWB_itemAdd(m_queue.head(), item.group, item.nom, item.row, item.array, item.text.c_str());
    }

    void linkByHand(const NaiveQueue::Item& item) {
        m_model.link(item);
        auto* const made = static_cast<_qItem*>(std::calloc(1, sizeof(_qItem)));
        made->group = item.group;
        made->nom = item.nom;
        made->row = item.row;
        made->array = item.array;
        made->val = ::strdup(item.text.c_str());
        made->next = m_queue.end();
        made->prev = m_queue->last;
        (m_queue->last == m_queue.end() ? m_queue->first : m_queue->last->next) = made;
        m_queue->last = made;
        ++m_queue->size;
    }

    void takeOut(std::size_t position) {
        _qItem* const item = m_queue.at(position);
        (item->prev == m_queue.end() ? m_queue->first : item->prev->next) = item->next;
        (item->next == m_queue.end() ? m_queue->last : item->next->prev) = item->prev;
        --m_queue->size;
        std::free(item->val);
        std::free(item);
        m_model.erase(position);
    }

    void takeOutSome() {
        for (std::size_t position = m_model.size(); position-- > 0;)
            if (m_random.isOneIn(3))
                takeOut(position);
    }

    void actAsAgent() {
        switch (m_random.number(0, 5)) {
        case 0:
            takeOutSome();
            break;
        case 1:
            m_queue.clear();
            m_model.clear();
            break;
        case 2: { // an agent in C++ that chooses the rows
            const long first = m_random.number(-3, 6);
            for (long row = first; row < first + m_random.number(1, 4); ++row) {
                CIMInstance instance = inMemory(m_random.instance());
                OWB_getInstanceData(0, instance, row, m_queue.head());
            }
            break;
        }
        default:
            append(anyItem(m_random.isOneIn(2) ? 0 : 26, m_random.number(-3, 8)));
        }
    }

    void request(bool isSingleInstance) {
        try {
            const long result = isSingleInstance
                                    ? OWB_getInstance(0, anyPath, m_random.number(0, 8), m_queue.head())
                                    : OWB_getGroup(0, m_queue.head());
            EXPECT_EQ(OWB_DONE, result);
        } catch (const std::runtime_error&) {
        }
    }

    // Additional actions of the interposed function.
    void interfere(long row) {
        switch (m_random.number(0, 7)) {
        case 0:
            throw std::runtime_error("in the middle");
        case 1:
            linkByHand(anyItem(0, row + m_random.number(-2, 3)));
            break;
        case 2:
        case 3:
            append(anyItem(m_random.isOneIn(4) ? 26 : 0, row + m_random.number(-2, 3)));
            break;
        case 4: { // another request within this one, for the same queue
            CIMInstance instance = inMemory(m_random.instance());
            const long otherRow = row + m_random.number(-2, 3);
            m_model.convert(0, instance, otherRow);
            interposed::ownInstanceData(0, instance, otherRow, m_queue.head());
            break;
        }
        default:
            break;
        }
    }

    int interpose(long group, CIMInstance& instance, long row, _qHead* q) {
        if (m_isInterposing)
            interfere(row);
        m_model.convert(group, instance, row);
        const int result = interposed::ownInstanceData(group, instance, row, q);
        if (m_isInterposing)
            interfere(row);
        return result;
    }

    void compare() {
        ASSERT_EQ(m_model.items(), m_queue.items());
        ASSERT_EQ(m_model.cursors(), m_cursors);
        ASSERT_TRUE(m_queue.isConsistent());
    }

    Random m_random;
    TestQueue& m_queue;
    bool m_isInterposing = false;
    NaiveQueue m_model;
    std::vector<long> m_cursors;
};

class Search : public testing::TestWithParam<unsigned> {};

TEST_P(Search, WithinRequestsGivesTheResultOfASearchOfAllItems) {
    const std::size_t requests = 15;
    for (unsigned round = 0; round < 10; ++round) {
        const unsigned seed = GetParam() * 1000 + round;
        const Agent agent(answers(seed, requests));
        const std::string expected = agent.trace().directory().file("expected");
        const std::string printed = agent.run([&](TestQueue& q) {
            Scenario scenario(seed, q);
            scenario.run(requests);
            agent.trace().directory().write("expected", scenario.printed());
        });
        ASSERT_EQ(support::readFile(expected), printed) << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Search, testing::Range(1U, 9U));

TEST(Search, ReportsTheItemsOfAnEarlierReadOfTheGroup) {
    const std::string reply = wire::chunkedReply(
        wire::enumeration({wire::instance("QAV_K70Chassis", {wire::stringProperty("Model", "a")}),
                           wire::instance("QAV_K70Chassis", {wire::stringProperty("Model", "b")})}));
    const Agent agent({Step::answer(reply)});
    const std::string printed = agent.run([](TestQueue& q) {
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ(OWB_DONE, OWB_getGroup(0, q.head()));
        EXPECT_EQ((Items{"0/1/0/0=a", "0/1/1/0=b", "0/1/0/0=a", "0/1/1/0=b"}), q.items());
    });
    const std::string end = " array: 0\n\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n";
    EXPECT_EQ("ZUL: duplicate item 'Model' group: 0 nom: 1 row: 0" + end +
                  "ZUL: duplicate item 'Model' group: 0 nom: 1 row: 1" + end,
              printed);
}

TEST(Search, ReportsThePropertyThatAnInstanceHasTwice) {
    const std::string printed = runWithoutTrace([] {
        CIMInstance instance = inMemory({{"Model", Made::text, {"a"}}, {"MODEL", Made::text, {"b"}}});
        TestQueue q;
        EXPECT_EQ(OWB_DONE, OWB_getInstanceData(0, instance, 3, q.head()));
        EXPECT_EQ((Items{"0/1/3/0=a", "0/1/3/0=b"}), q.items());
        EXPECT_EQ(q.at(0), q->cursor);
    });
    EXPECT_EQ("ZUL: duplicate item 'Model' group: 0 nom: 1 row: 3 array: 0\n"
              "\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n",
              printed);
}

TEST(Search, OfTheRunningSoftwareReportsEarlierItems) {
    const std::string printed = runWithoutTrace([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 16, 2, 0, 0, "agent's");
        EXPECT_EQ(1, OWB_getSWRun(q.head()));
        EXPECT_TRUE(q.isConsistent());
    });
    EXPECT_EQ("ZUL: duplicate item 'Handle' group: 16 nom: 2 row: 0 array: 0\n"
              "\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n",
              printed);
}

} // namespace

#ifndef TESTS_OWB_NAIVE_QUEUE_HPP
#define TESTS_OWB_NAIVE_QUEUE_HPP
#include "OW_Array.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_String.hpp"

#include "TestQueue.hpp"

#include <algorithm>
#include <string>
#include <strings.h>
#include <vector>

/** The expected contents of a queue after the same calls: every append searches all items from the first. */
class NaiveQueue {
public:
    struct Item {
        long group;
        long nom;
        long row;
        long array;
        std::string text;
    };

    /** Like OWB_itemAdd(). */
    void append(const Item& item) {
        const auto match = std::find_if(m_items.begin(), m_items.end(),
                                        [&](const Item& other) { return isSameAddress(item, other); });
        m_cursors.push_back(match == m_items.end() ? -1 : match - m_items.begin());
        if (match != m_items.end())
            report(item);
        m_items.push_back(item);
    }

    /** Like an agent that links an item itself. */
    void link(const Item& item) { m_items.push_back(item); }

    /** Like OWB_getInstanceData(). */
    void convert(long group, OpenWBEM::CIMInstance& instance, long row) {
        for (const OpenWBEM::CIMProperty& property : instance.getProperties(OpenWBEM::CIMDataType::INVALID))
            if (const ExtItem* const known = find(group, property.getName().c_str()))
                convert(property.getValue(), group, known->nom, row);
    }

    void erase(std::size_t index) { m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(index)); }
    void clear() { m_items.clear(); }
    std::size_t size() const { return m_items.size(); }

    Items items() const {
        Items texts;
        for (const Item& item : m_items)
            texts.push_back(std::to_string(item.group) + "/" + std::to_string(item.nom) + "/" +
                            std::to_string(item.row) + "/" + std::to_string(item.array) + "=" + item.text);
        return texts;
    }
    /** The index of the item at the cursor after each append; -1 for the head. */
    const std::vector<long>& cursors() const { return m_cursors; }
    /** What the appends printed. */
    const std::string& printed() const { return m_printed; }

private:
    static bool isSameAddress(const Item& a, const Item& b) {
        return a.group == b.group && a.nom == b.nom && a.row == b.row && a.array == b.array;
    }

    static const ExtItem* find(long group, const char* name) {
        for (const ExtItem* row = ExtItemList; row->group >= 0; ++row)
            if (row->group == group && ::strcasecmp(row->property, name) == 0)
                return row;
        return nullptr;
    }

    void convert(const OpenWBEM::CIMValue& value, long group, long nom, long row) {
        if (!value)
            return;
        if (!value.isArray()) {
            append({group, nom, row, 0, value.toString().c_str()});
            return;
        }
        OpenWBEM::Array<OpenWBEM::String> texts;
        if (value.getType() != OpenWBEM::CIMDataType::STRING)
            return;
        value.get(texts);
        for (std::size_t i = 0; i < texts.size(); ++i)
            append({group, nom, row, static_cast<long>(i), texts[i].c_str()});
    }

    void report(const Item& item) {
        m_printed += "ZUL: duplicate item '" + std::string(OWB_propertyName(item.group, item.nom)) +
                     "' group: " + std::to_string(item.group) + " nom: " + std::to_string(item.nom) +
                     " row: " + std::to_string(item.row) + " array: " + std::to_string(item.array) +
                     "\n\n*** EXT_DIE() called: OWB_itemAdd:171 ***\n\n";
    }

    std::vector<Item> m_items;
    std::vector<long> m_cursors;
    std::string m_printed;
};

#endif

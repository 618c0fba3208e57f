/* The group write. */
#include "OW_CIMClass.hpp"
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMName.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"

#include "owb.h"

#include "OWB_enumerate.hpp"
#include "OWB_queue.hpp"
#include "OWB_trace.hpp"

#include <climits>

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_setGroup.cpp";

/*
 * Selects the items of one row after the other, in ascending rows. One walk of the queue finds the next row
 * with items and selects these, so rows without items cost no walk. The destructor leaves selected what one
 * walk for each row would have left: the items of the row visited last.
 */
class Selection {
public:
    Selection(_qHead* q, long group)
        : m_queue(q)
        , m_group(group)
        , m_visitedRow(-1)
        , m_selectedRow(-1) {}
    ~Selection() {
        if (m_selectedRow != none && m_selectedRow != m_visitedRow)
            select(m_visitedRow);
    }

    /* Moves to a row above the previous one. Returns whether it has items; if so, they are selected. */
    bool visit(long row) {
        m_visitedRow = row;
        m_queue->cursor = sentinelOf(m_queue);
        if (row > m_selectedRow)
            selectFrom(row);
        return row == m_selectedRow;
    }

private:
    static const long none = LONG_MAX; /* no instance has this row */

    void selectFrom(long row);
    void select(long row);

    _qHead* m_queue;
    long m_group;
    long m_visitedRow;
    long m_selectedRow;
};

/* Selects the items of the lowest row from `row` on. A queue with ascending rows needs one walk. */
void Selection::selectFrom(long row) {
    bool isMixed = false;
    m_selectedRow = none;
    for (_qItem* item = m_queue->first; item != sentinelOf(m_queue); item = item->next) {
        const bool isCandidate = item->group == m_group && item->row >= row && item->row != none;
        if (isCandidate && item->row < m_selectedRow) {
            isMixed = m_selectedRow != none;
            m_selectedRow = item->row;
        }
        item->selected = isCandidate && item->row == m_selectedRow;
    }
    if (isMixed)
        select(m_selectedRow);
}

void Selection::select(long row) {
    for (_qItem* item = m_queue->first; item != sentinelOf(m_queue); item = item->next)
        item->selected = item->group == m_group && item->row == row;
}

/* The keys of a group, up to one with a null name. A group beyond the table has none. */
const ExtCimKey* keysOf(long group) {
    static const ExtCimKey none = {NULL, NULL};
    const long groups = sizeof ExtCimKeyArray / sizeof *ExtCimKeyArray;
    return group < groups ? ExtCimKeyArray[group] : &none;
}

void copyKeys(long group, const CIMInstance& source, CIMInstance& target) {
    for (const ExtCimKey* key = keysOf(group); key->name; ++key) {
        OWB_TRACE("OWB_setGroup", 162, "Key name '%s'\n", key->name);
        const CIMName name(key->name);
        target.setProperty(name, source.getPropertyValue(name));
    }
}

/* The row of ExtItemList for a nominator of a group, or null. */
const ExtItem* findItem(long group, long nom) {
    for (const ExtItem* row = ExtItemList; row->group >= 0; ++row)
        if (row->group == group && row->nom == nom)
            return row;
    return NULL;
}

/* Every value is sent as a string: the CIMOM knows the type of the property. */
void setProperty(const _qItem& item, CIMInstance& target) {
    OWB_TRACE("OWB_setGroup", 175, "Need to set item nominator %d '%s'\n", static_cast<int>(item.nom),
              item.val);
    const ExtItem* const known = findItem(item.group, item.nom);
    if (!known) {
        OWB_TRACE_TEXT("OWB_setGroup", 190, "Error... cound not find CIM property\n");
        return;
    }
    OWB_TRACE("OWB_setGroup", 183, "found CIM property name %s'\n", known->property);
    target.setProperty(CIMName(known->property), CIMValue(static_cast<const char*>(item.val)));
}

/* Sends the keys of an instance and the values of the selected items. */
void writeInstance(CIMClient& client, long group, const char* className, const CIMInstance& source,
                   _qHead* q) {
    CIMInstance target = CIMClass(className).newInstance();
    copyKeys(group, source, target);
    for (q->cursor = q->first; q->cursor != sentinelOf(q); q->cursor = q->cursor->next)
        if (q->cursor->selected == 1)
            setProperty(*q->cursor, target);
    client.modifyInstance(target, WBEMFlags::E_INCLUDE_QUALIFIERS, NULL);
}

/* A failed write is traced, and the next instance follows. */
void tryToWriteInstance(CIMClient& client, long group, const char* className, const CIMInstance& source,
                        _qHead* q) {
    try {
        writeInstance(client, group, className, source, q);
    } catch (const Exception& e) {
        OWB_TRACE_TEXT("OWB_setGroup", 207, "Exception setting properties\n");
        OWB_TRACE_EXCEPTION("OWB_setGroup", 208, "\n>>ERROR", e);
    }
}

/* Numbers the instances as a read does, and writes each one that has items. */
long writeInstances(CIMClient& client, long group, const char* className, _qHead* q) {
    CIMInstanceEnumeration instances = owbEnumerate(client, className);
    if (!instances.hasMoreElements()) {
        OWB_TRACE_TEXT("OWB_setGroup", 113, "ERROR - no instances of class found in CIMOM database.\n");
        return OWB_NO_INSTANCE;
    }
    Selection selection(q, group);
    CIMInstance instance;
    for (long rowIndex = 0; instances.hasMoreElements(); ++rowIndex) {
        instances.nextElement(instance);
        OWB_TRACE("OWB_setGroup", 121, "Found instance: %d\n", static_cast<int>(rowIndex));
        /* Not before the enumeration: a class without instances is reported even if the queue is empty. */
        if (q->first == sentinelOf(q))
            return OWB_DONE;
        if (selection.visit(rowIndex))
            tryToWriteInstance(client, group, className, instance, q);
    }
    return OWB_DONE;
}

} // namespace

extern "C" long OWB_setGroup(long group, _qHead* q) {
    if (static_cast<unsigned long>(group) > OWB_MAX_GROUP || !q)
        return OWB_BAD_ARGUMENT;
    try {
        CIMClient* const client = OWB_connect(0);
        if (!client) {
            OWB_TRACE_TEXT("OWB_setGroup", 103, "no client connection\n");
            return OWB_NO_CONNECTION;
        }
        return writeInstances(*client, group, ExtGroupCimClass[group], q);
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_setGroup", 216, "\n>>ERROR", e);
        return OWB_EXCEPTION;
    }
}

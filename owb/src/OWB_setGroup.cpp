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

#include "OWB_queue.hpp"
#include "OWB_tables.hpp"
#include "OWB_trace.hpp"

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_setGroup.cpp";

/* Marks the items of a row of a group, and no others. Leaves the cursor on the head. Returns their number. */
long selectItems(_qHead* q, long group, long row) {
    long count = 0;
    for (q->cursor = q->first; q->cursor != sentinelOf(q); q->cursor = q->cursor->next) {
        q->cursor->selected = q->cursor->row == row && q->cursor->group == group;
        count += q->cursor->selected;
    }
    return count;
}

/* The names of the keys of a group, up to a null one. A group beyond the table has none. */
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

/* Every value goes as a string: the CIMOM knows the type of the property. */
void setProperty(const _qItem& item, CIMInstance& target) {
    OWB_TRACE("OWB_setGroup", 175, "Need to set item nominator %d '%s'\n", static_cast<int>(item.nom),
              item.val);
    const ExtItem* const known = owbFindItem(item.group, item.nom);
    if (!known) {
        OWB_TRACE("OWB_setGroup", 190, "Error... cound not find CIM property\n");
        return;
    }
    OWB_TRACE("OWB_setGroup", 183, "found CIM property name %s'\n", known->property);
    target.setProperty(CIMName(known->property), CIMValue(static_cast<const char*>(item.val)));
}

/* Sends the keys of an instance and the values of the items that are selected. */
void writeInstance(CIMClient& client, long group, const char* className, const CIMInstance& source,
                   _qHead* q) {
    CIMInstance target = CIMClass(className).newInstance();
    copyKeys(group, source, target);
    for (q->cursor = q->first; q->cursor != sentinelOf(q); q->cursor = q->cursor->next)
        if (q->cursor->selected == 1)
            setProperty(*q->cursor, target);
    client.modifyInstance(target, WBEMFlags::E_INCLUDE_QUALIFIERS, NULL);
}

/* An instance that cannot be written is traced and passed over. */
void tryToWriteInstance(CIMClient& client, long group, const char* className, const CIMInstance& source,
                        _qHead* q) {
    try {
        writeInstance(client, group, className, source, q);
    } catch (const Exception& e) {
        OWB_TRACE("OWB_setGroup", 207, "Exception setting properties\n");
        OWB_TRACE_EXCEPTION("OWB_setGroup", 208, "\n>>ERROR", e);
    }
}

/* Numbers the instances of the class as a read does, and writes each one that has items. */
long writeInstances(CIMClient& client, long group, const char* className, _qHead* q) {
    CIMInstanceEnumeration instances =
        client.enumInstancesE(className, WBEMFlags::E_DEEP, WBEMFlags::E_NOT_LOCAL_ONLY,
                              WBEMFlags::E_EXCLUDE_QUALIFIERS, WBEMFlags::E_EXCLUDE_CLASS_ORIGIN, NULL);
    if (!instances.hasMoreElements()) {
        OWB_TRACE("OWB_setGroup", 113, "ERROR - no instances of class found in CIMOM database.\n");
        return OWB_NO_INSTANCE;
    }
    CIMInstance instance;
    for (long rowIndex = 0; instances.hasMoreElements(); ++rowIndex) {
        instances.nextElement(instance);
        OWB_TRACE("OWB_setGroup", 121, "Found instance: %d\n", static_cast<int>(rowIndex));
        /* Here and not before the enumeration: whether the class has instances is told even to an agent that
         * has nothing to write. */
        if (q->first == sentinelOf(q))
            return OWB_DONE;
        if (selectItems(q, group, rowIndex) > 0)
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
            OWB_TRACE("OWB_setGroup", 103, "no client connection\n");
            return OWB_NO_CONNECTION;
        }
        return writeInstances(*client, group, ExtGroupCimClass[group], q);
    } catch (const Exception& e) {
        OWB_TRACE_EXCEPTION("OWB_setGroup", 216, "\n>>ERROR", e);
        return OWB_EXCEPTION;
    }
}

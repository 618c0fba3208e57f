/* The item queue, and the conversion of one CIM instance into items. */
#include "OW_Array.hpp"
#include "OW_CIMDataType.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include "owb.h"

#include "OWB_queue.hpp"
#include "OWB_trace.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_getInstanceData.cpp";

struct Address {
    long group;
    long nom;
    long row;
    long array;
};

/* The row comes first: in a queue that is being filled it tells most items apart. */
inline bool isAt(const _qItem* item, const Address& address) {
    return item->row == address.row && item->nom == address.nom && item->group == address.group &&
           item->array == address.array;
}

/*
 * The front-most item at an address, or the sentinel.
 *
 * Every append scans the whole queue, and a long list is scanned at the speed at which its links arrive from
 * memory. Walking both chains at once, until the walkers meet, lets two loads wait at the same time. A match
 * of the front walker ends the walk; of the back walker's matches the last one counts.
 */
_qItem* find(_qHead* q, const Address& address) {
    _qItem* const sentinel = sentinelOf(q);
    _qItem* found = sentinel;
    _qItem* front = q->first;
    _qItem* back = q->last;
    while (front != sentinel) {
        if (isAt(front, address))
            return front;
        if (front == back)
            break;
        if (isAt(back, address))
            found = back;
        front = front->next;
        if (front == back)
            break;
        back = back->prev;
    }
    return found;
}

void reportDuplicate(const Address& address) {
    std::printf("ZUL: duplicate item '%s' group: %ld nom: %ld row: %ld array: %ld\n",
                OWB_propertyName(address.group, address.nom), address.group, address.nom, address.row,
                address.array);
    std::printf("\n*** EXT_DIE() called: %s:%lu ***\n\n", "OWB_itemAdd", 171UL);
}

/* An item that is not yet linked, or null when there is no memory. */
_qItem* makeItem(const Address& address, const char* val) {
    const size_t size = std::strlen(val) + 1;
    _qItem* const item = static_cast<_qItem*>(std::malloc(sizeof(_qItem)));
    char* const copy = static_cast<char*>(item ? std::malloc(size) : NULL);
    if (!copy) {
        std::free(item);
        return NULL;
    }
    std::memcpy(copy, val, size);
    item->row = address.row;
    item->array = address.array;
    item->group = address.group;
    item->nom = address.nom;
    item->uval = std::strtoul(val, NULL, 10);
    item->lval = std::strtol(val, NULL, 10);
    item->val = copy;
    return item;
}

void append(_qHead* q, _qItem* item) {
    _qItem* const sentinel = sentinelOf(q);
    item->next = sentinel;
    item->prev = q->last;
    if (q->last == sentinel)
        q->first = item;
    else
        q->last->next = item;
    q->last = item;
    ++q->size;
}

/* The row of ExtItemList for a property name, or null. */
const ExtItem* findProperty(long group, const char* name) {
    for (const ExtItem* row = ExtItemList; row->group >= 0; ++row)
        if (row->group == group && strcasecmp(name, row->property) == 0)
            return row;
    return NULL;
}

/* Where the values of one property go. */
struct Target {
    _qHead* queue;
    long group;
    long nom;
    long row;

    void add(long array, const char* text) const { OWB_itemAdd(queue, group, nom, row, array, text); }
};

void addElement(const Target& target, long array, UInt16 element) {
    char text[128];
    std::snprintf(text, sizeof text, "%u", static_cast<unsigned>(element));
    target.add(array, text);
}

void addElement(const Target& target, long array, UInt64 element) {
    char text[128];
    std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(element));
    target.add(array, text);
}

void addElement(const Target& target, long array, const String& element) {
    target.add(array, element.c_str());
}

template <class Element>
void addElements(const CIMValue& value, const Target& target) {
    Array<Element> taken;
    value.get(taken);
    const Array<Element>& elements = taken; /* reading through const takes no copy of shared elements */
    for (size_t i = 0; i < elements.size(); ++i)
        addElement(target, static_cast<long>(i), elements[i]);
}

void addArray(const CIMValue& value, const Target& target) {
    switch (value.getType()) {
    case CIMDataType::UINT16:
        addElements<UInt16>(value, target);
        break;
    case CIMDataType::UINT64:
        addElements<UInt64>(value, target);
        break;
    case CIMDataType::STRING:
        addElements<String>(value, target);
        break;
    default:
        OWB_TRACE("OWB_getInstanceData", 316, "array type not handled\n");
    }
}

void addProperty(const CIMProperty& property, long group, long row, _qHead* q) {
    if (!property) {
        OWB_TRACE("OWB_getInstanceData", 240, "ERROR: prop == NULL\n");
        return;
    }
    const String name = property.getName();
    const ExtItem* const known = findProperty(group, name.c_str());
    if (!known) {
        OWB_TRACE("OWB_getInstanceData", 263, "Not handled: '%s'\n", name.c_str());
        return;
    }
    const CIMValue value = property.getValue();
    if (!value) {
        OWB_TRACE("OWB_getInstanceData", 328, "WARNING: value for property %s is invalid\n", name.c_str());
        return;
    }
    const Target target = {q, group, known->nom, row};
    if (!value.isArray()) {
        target.add(0, value.toString().c_str());
        return;
    }
    OWB_TRACE("OWB_getInstanceData", 273, "Property '%s' is an array\n", known->property);
    addArray(value, target);
}

} // namespace

extern "C" const char* OWB_propertyName(long group, long nom) {
    for (const ExtItem* row = ExtItemList; row->group != -1; ++row)
        if (row->group == group && row->nom == nom)
            return row->property;
    return "NOT FOUND";
}

extern "C" long OWB_itemExists(_qHead* q, long group, long nom, long row, long array) {
    if (!q)
        return 0;
    const Address address = {group, nom, row, array};
    q->cursor = find(q, address);
    return q->cursor != sentinelOf(q);
}

extern "C" long OWB_itemAdd(_qHead* q, long group, long nom, long row, long array, const char* val) {
    _qItem* item = NULL;
    if (q && val) {
        const Address address = {group, nom, row, array};
        if (OWB_itemExists(q, group, nom, row, array))
            reportDuplicate(address);
        item = makeItem(address, val);
    }
    if (!item) {
        OWB_TRACE("OWB_itemAdd", 203, "Failed to add item: '%s' group: %d nominator: %d row: %d array: %d\n",
                  OWB_propertyName(group, nom), static_cast<int>(group), static_cast<int>(nom),
                  static_cast<int>(row), static_cast<int>(array));
        return 0;
    }
    append(q, item);
    OWB_TRACE("OWB_itemAdd", 197, "Add item %lu: '%s' group: %d nom: %d row: %d array: %d val '%s'\n",
              static_cast<unsigned long>(q->size), OWB_propertyName(group, nom), static_cast<int>(group),
              static_cast<int>(nom), static_cast<int>(row), static_cast<int>(array), item->val);
    return 1;
}

int OWB_getInstanceData(long group, CIMInstance& instance, long row, _qHead* q) {
    int result = OWB_DONE;
    const CIMPropertyArray properties = instance.getProperties(CIMDataType::INVALID);
    OWB_TRACE("OWB_getInstanceData", 229, "got array of properties - size: %i\n",
              static_cast<int>(properties.size()));
    for (CIMPropertyArray::const_iterator it = properties.begin(); it != properties.end(); ++it) {
        try {
            addProperty(*it, group, row, q);
        } catch (const Exception& e) {
            OWB_TRACE_EXCEPTION("OWB_getInstanceData", 337, "ERROR", e);
            result = OWB_EXCEPTION;
        }
    }
    return result;
}

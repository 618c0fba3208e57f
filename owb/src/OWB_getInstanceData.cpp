/* The item queue, the names of properties, and the conversion of one CIM instance into items. */
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

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

using namespace OpenWBEM;

namespace {

const char traceFile[] = "../../owb/src/OWB_getInstanceData.cpp";

OwbRequest* innermost_p = NULL;

_qItem* itemAfter(_qHead* q, const _qItem* item) {
    return item == sentinelOf(q) ? q->first : item->next;
}

void reportDuplicate(long group, long nom, long row, long array) {
    std::printf("ZUL: duplicate item '%s' group: %ld nom: %ld row: %ld array: %ld\n",
                OWB_propertyName(group, nom), group, nom, row, array);
    std::printf("\n*** EXT_DIE() called: %s:%lu ***\n\n", "OWB_itemAdd", 171UL);
}

/* An unlinked item; null if out of memory. */
_qItem* makeItem(long group, long nom, long row, long array, const char* val) {
    const size_t size = std::strlen(val) + 1;
    _qItem* const item = static_cast<_qItem*>(std::malloc(sizeof(_qItem)));
    char* const copy = static_cast<char*>(item ? std::malloc(size) : NULL);
    if (!copy) {
        std::free(item);
        return NULL;
    }
    item->row = row;
    item->array = array;
    item->group = group;
    item->nom = nom;
    item->uval = std::strtoul(val, NULL, 10);
    item->lval = std::strtol(val, NULL, 10);
    item->val = static_cast<char*>(std::memcpy(copy, val, size));
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

} // namespace

OwbRequest::OwbRequest(_qHead* q, long group)
    : m_outer_p(innermost_p)
    , m_queue(q)
    , m_group(group)
    , m_row(LONG_MIN)
    , m_highestRow(LONG_MIN)
    , m_last_p(sentinelOf(q)) {
    if (!m_outer_p || !m_outer_p->appendsTo(q, group))
        innermost_p = this;
}

OwbRequest::~OwbRequest() {
    innermost_p = m_outer_p;
}

_qItem* OwbRequest::startOfSearch(_qHead* q, long group, long row) {
    const bool isRequest = innermost_p && innermost_p->appendsTo(q, group);
    return isRequest ? innermost_p->startOfSearch(row) : sentinelOf(q);
}

_qItem* OwbRequest::startOfSearch(long row) {
    if (row > m_row)
        startRow(row);
    return row > m_highestRow ? m_last_p : sentinelOf(m_queue);
}

void OwbRequest::startRow(long row) {
    _qItem* const sentinel = sentinelOf(m_queue);
    for (_qItem* item = itemAfter(m_queue, m_last_p); item != sentinel; item = item->next) {
        if (item->group == m_group && item->row > m_highestRow)
            m_highestRow = item->row;
        m_last_p = item;
    }
    m_row = row;
}

extern "C" long OWB_itemExists(_qHead* q, long group, long nom, long row, long array) {
    if (!q)
        return 0;
    _qItem* const sentinel = sentinelOf(q);
    _qItem* item = itemAfter(q, OwbRequest::startOfSearch(q, group, row));
    while (item != sentinel &&
           !(item->group == group && item->nom == nom && item->row == row && item->array == array))
        item = item->next;
    q->cursor = item;
    return item != sentinel;
}

extern "C" long OWB_itemAdd(_qHead* q, long group, long nom, long row, long array, const char* val) {
    _qItem* item = NULL;
    if (q && val) {
        if (OWB_itemExists(q, group, nom, row, array))
            reportDuplicate(group, nom, row, array);
        item = makeItem(group, nom, row, array, val);
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

void OwbRow::add(long nom, long array, const char* text) const {
    OWB_itemAdd(m_queue, m_group, nom, m_row, array, text);
}

void OwbRow::add(long nom, long array, const String& text) const {
    add(nom, array, text.c_str());
}

void OwbRow::add(long nom, long array, unsigned long long number) const {
    char text[32];
    std::snprintf(text, sizeof text, "%llu", number);
    add(nom, array, text);
}

extern "C" const char* OWB_propertyName(long group, long nom) {
    for (const ExtItem* row = ExtItemList; row->group != -1; ++row)
        if (row->group == group && row->nom == nom)
            return row->property;
    return "NOT FOUND";
}

namespace {

/* The first row of ExtItemList for a group, or the end of the list. */
const ExtItem* firstRowOf(long group) {
    const ExtItem* row = ExtItemList;
    while (row->group >= 0 && row->group != group)
        ++row;
    return row;
}

/* The row of a property, looked for from the first row of its group on; null if there is none. */
const ExtItem* findProperty(const ExtItem* first, const char* name) {
    for (const ExtItem* row = first; row->group >= 0; ++row)
        if (row->group == first->group && strcasecmp(name, row->property) == 0)
            return row;
    return NULL;
}

template <class Element>
void addElements(const CIMValue& value, long nom, const OwbRow& items) {
    Array<Element> array;
    value.get(array);
    const Array<Element>& elements = array; /* operator[] of a non-const Array copies shared elements */
    for (size_t i = 0; i < elements.size(); ++i)
        items.add(nom, static_cast<long>(i), elements[i]);
}

void addArray(const CIMValue& value, long nom, const OwbRow& items) {
    switch (value.getType()) {
    case CIMDataType::UINT16:
        addElements<UInt16>(value, nom, items);
        break;
    case CIMDataType::UINT64:
        addElements<UInt64>(value, nom, items);
        break;
    case CIMDataType::STRING:
        addElements<String>(value, nom, items);
        break;
    default:
        OWB_TRACE_TEXT("OWB_getInstanceData", 316, "array type not handled\n");
    }
}

void addProperty(const CIMProperty& property, const ExtItem* firstRow, const OwbRow& items) {
    if (!property) {
        OWB_TRACE_TEXT("OWB_getInstanceData", 240, "ERROR: prop == NULL\n");
        return;
    }
    const String name = property.getName();
    const ExtItem* const known = findProperty(firstRow, name.c_str());
    if (!known) {
        OWB_TRACE("OWB_getInstanceData", 263, "Not handled: '%s'\n", name.c_str());
        return;
    }
    const CIMValue value = property.getValue();
    if (!value) {
        OWB_TRACE("OWB_getInstanceData", 328, "WARNING: value for property %s is invalid\n", name.c_str());
        return;
    }
    if (!value.isArray()) {
        items.add(known->nom, 0, value.toString());
        return;
    }
    OWB_TRACE("OWB_getInstanceData", 273, "Property '%s' is an array\n", known->property);
    addArray(value, known->nom, items);
}

} // namespace

int OWB_getInstanceData(long group, CIMInstance& instance, long row, _qHead* q) {
    int result = OWB_DONE;
    const CIMPropertyArray properties = instance.getProperties(CIMDataType::INVALID);
    OWB_TRACE("OWB_getInstanceData", 229, "got array of properties - size: %i\n",
              static_cast<int>(properties.size()));
    const OwbRequest request(q, group);
    const ExtItem* const firstRow = firstRowOf(group);
    const OwbRow items(q, group, row);
    for (CIMPropertyArray::const_iterator it = properties.begin(); it != properties.end(); ++it) {
        try {
            addProperty(*it, firstRow, items);
        } catch (const Exception& e) {
            OWB_TRACE_EXCEPTION("OWB_getInstanceData", 337, "ERROR", e);
            result = OWB_EXCEPTION;
        }
    }
    return result;
}

/* The item queue. */
#include "owb.h"

#include "OWB_queue.hpp"
#include "OWB_trace.hpp"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdint.h>

namespace {

/* Readers of logs know the queue's lines by this file. */
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
 * Asks for memory ahead of need. A hint: any address will do. gcc has none of its own for i686, where
 * processors without this instruction pass over it.
 */
inline void prefetch(const _qItem* item, long distance) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what lies there need be no object
    const char* const address = reinterpret_cast<const char*>(reinterpret_cast<uintptr_t>(item) + distance);
#ifdef __i386__
    __asm__ volatile("prefetcht0 %0" : : "m"(*address));
#else
    __builtin_prefetch(address);
#endif
}

/*
 * The front-most item at an address, or the sentinel.
 *
 * Every append scans the whole queue, and a long list is scanned at the speed at which its links arrive from
 * memory. Walking both chains at once, until the walkers meet, lets two loads wait at the same time. A match
 * of the front walker ends the walk; of the back walker's matches the last one counts.
 *
 * Processors foresee the way through new memory, where one item lies behind the other, but not through memory
 * that an agent has freed: malloc() hands it out again from its end, a few items at a time. So the walk asks
 * ahead, against the order of new memory.
 */
_qItem* find(_qHead* q, const Address& address) {
    const long ahead = 1024; /* bytes; some fifteen items */
    _qItem* const sentinel = sentinelOf(q);
    _qItem* found = sentinel;
    _qItem* front = q->first;
    _qItem* back = q->last;
    while (front != sentinel) {
        prefetch(front, -ahead);
        prefetch(back, ahead);
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
    item->lval = std::strtol(val, NULL, 10);
    item->uval = static_cast<unsigned long>(item->lval);
    if (item->lval == LONG_MAX || item->lval == LONG_MIN) /* or beyond: there the two differ */
        item->uval = std::strtoul(val, NULL, 10);
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

} // namespace

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

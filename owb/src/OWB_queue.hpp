#ifndef OWB_QUEUE_HPP
#define OWB_QUEUE_HPP
/* How the bridge's own sources walk the agent's queue and append to it. */
#include "OW_String.hpp"

#include "owb.h"

/* The head of a queue as the sentinel of its list. */
inline _qItem* sentinelOf(_qHead* q) {
    return reinterpret_cast<_qItem*>(q);
}

/*
 * A request that appends rows of one group to a queue, for as long as the object lives. It limits the search
 * for duplicates, which every append makes.
 *
 * Requests number their rows upward, and until they return only the library changes the queue. An item of a
 * row above all earlier ones can therefore only match items that were appended after the row began: the
 * search starts there. For any other row the whole queue is searched.
 *
 * Functions that an agent interposes may append items during a request, but must not remove any.
 *
 * Requests nest. OWB_itemExists() asks the innermost one; a request within another one for the same queue and
 * group leaves the outer one in charge.
 */
class OwbRequest {
public:
    OwbRequest(_qHead* q, long group);
    ~OwbRequest();

    /* The item after which to search for items of a group and row; the sentinel for the whole queue. */
    static _qItem* startOfSearch(_qHead* q, long group, long row);

private:
    OwbRequest(const OwbRequest&);
    OwbRequest& operator=(const OwbRequest&);

    bool appendsTo(_qHead* q, long group) const { return m_queue == q && m_group == group; }
    _qItem* startOfSearch(long row);
    void startRow(long row);

    OwbRequest* m_outer_p;
    _qHead* m_queue;
    long m_group;
    long m_row;        /* the row that is being appended */
    long m_highestRow; /* of the group, up to m_last_p */
    _qItem* m_last_p;  /* the last item when the row began */
};

/* Appends the items of one row of a group. Items that cannot be appended are traced and left out. */
class OwbRow {
public:
    OwbRow(_qHead* q, long group, long row)
        : m_queue(q)
        , m_group(group)
        , m_row(row) {}

    void add(long nom, long array, const char* text) const;
    void add(long nom, long array, const OpenWBEM::String& text) const;
    void add(long nom, long array, unsigned long long number) const;

private:
    _qHead* m_queue;
    long m_group;
    long m_row;
};

#endif

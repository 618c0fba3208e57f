#ifndef OWB_QUEUE_HPP
#define OWB_QUEUE_HPP
/* How the bridge's own sources walk the agent's queue. */
#include "owb.h"

/* The head in its role as the sentinel of the list. */
inline _qItem* sentinelOf(_qHead* q) {
    return reinterpret_cast<_qItem*>(q);
}

/*
 * A request that appends rows of one group to a queue, for as long as the object lives.
 *
 * Every append looks for a duplicate. Requests number their rows upward, and until they return only the
 * library touches the queue. So an item of a new row can only match items that were appended after that row
 * began, unless the queue held a row as high before: the search starts there, and the queue is not searched
 * again for each item. Rows that are not above all earlier ones are searched for in the whole queue.
 *
 * Functions that an agent interposes may append items during a request, but take none out.
 *
 * OWB_itemExists() asks the innermost request by startOfSearch(), whoever called it. A request within another
 * one for the same queue and group leaves the work to the outer one.
 */
class OwbRequest {
public:
    OwbRequest(_qHead* q, long group);
    ~OwbRequest();

    /*
     * The item after which the first item of a row and group is, if the queue has one; the sentinel to search
     * the whole queue.
     */
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

#endif

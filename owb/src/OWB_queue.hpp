#ifndef OWB_QUEUE_HPP
#define OWB_QUEUE_HPP
/* How the bridge's own sources walk the agent's queue. */
#include "owb.h"

/* The head, in its part as the sentinel of the list. */
inline _qItem* sentinelOf(_qHead* q) {
    return reinterpret_cast<_qItem*>(q);
}

#endif

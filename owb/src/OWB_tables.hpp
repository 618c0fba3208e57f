#ifndef OWB_TABLES_HPP
#define OWB_TABLES_HPP
/* How the bridge's own sources look into the tables of owb.h. */
#include "owb.h"

/* The row of ExtItemList for a nominator of a group, or null. */
const ExtItem* owbFindItem(long group, long nom);

#endif

#ifndef OWBCTL_CATALOGUE_HPP
#define OWBCTL_CATALOGUE_HPP

#include <owb.h>

#include <vector>

namespace owbctl {

/** Rows of ExtItemList that belong to `group`, in the order of the list; none for an unknown group. */
std::vector<const ExtItem*> propertiesOf(long group);

} // namespace owbctl
#endif

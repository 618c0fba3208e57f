#include "Catalogue.hpp"

namespace owbctl {

std::vector<const ExtItem*> propertiesOf(long group) {
    std::vector<const ExtItem*> properties;
    if (group < 0) // the end row carries -1
        return properties;
    for (const ExtItem& item : ExtItemList) {
        if (item.group == group)
            properties.push_back(&item);
    }
    return properties;
}

} // namespace owbctl

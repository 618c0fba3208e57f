#include "Catalogue.hpp"

#include "Number.hpp"

#include <strings.h>

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

const ExtItem* findProperty(long group, const std::string& nameOrNominator) {
    const auto nominator = decimal(nameOrNominator);
    for (const ExtItem* item : propertiesOf(group)) {
        if (nominator == item->nom || strcasecmp(item->property, nameOrNominator.c_str()) == 0)
            return item;
    }
    return nullptr;
}

std::vector<long> groupsOfClass(const std::string& className) {
    std::vector<long> groups;
    for (long group = 0; group <= OWB_MAX_GROUP; ++group) {
        if (strcasecmp(ExtGroupCimClass[group], className.c_str()) == 0)
            groups.push_back(group);
    }
    return groups;
}

} // namespace owbctl

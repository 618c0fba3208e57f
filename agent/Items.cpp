#include "agent/Items.hpp"

#include "agent/Number.hpp"

#include <iterator>
#include <numeric>
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

std::vector<long> everyGroup() {
    std::vector<long> groups(OWB_MAX_GROUP + 1);
    std::iota(groups.begin(), groups.end(), 0);
    return groups;
}

std::vector<std::string> keysOf(long group) {
    std::vector<std::string> keys;
    if (group < 0 || static_cast<std::size_t>(group) >= std::size(ExtCimKeyArray))
        return keys;
    for (const ExtCimKey* key = ExtCimKeyArray[group]; key->name != nullptr; ++key) {
        if (*key->name != '\0')
            keys.emplace_back(key->name);
    }
    return keys;
}

std::vector<long> groupsOfClass(const std::string& className) {
    std::vector<long> groups;
    for (const long group : everyGroup()) {
        if (strcasecmp(ExtGroupCimClass[group], className.c_str()) == 0)
            groups.push_back(group);
    }
    return groups;
}

} // namespace owbctl

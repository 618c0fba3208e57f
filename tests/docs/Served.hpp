#ifndef DOCS_SERVED_HPP
#define DOCS_SERVED_HPP

#include <string>
#include <vector>

namespace docs {

/** A property as owbcimomd declares it. */
struct ServedProperty {
    std::string className;
    std::string name;
    /** As in MOF, with "[]" for an array: "uint16[]", "REF". */
    std::string type;
    bool isKey;
    /** Whether the site may write it. */
    bool isWritable;
};

/** The properties of all classes that owbcimomd serves, each class in the order of its declaration. */
std::vector<ServedProperty> servedProperties();

/** The property of a class, without regard to case; null for none. */
const ServedProperty* findServed(const std::vector<ServedProperty>& served, const std::string& className,
                                 const std::string& name);

} // namespace docs
#endif

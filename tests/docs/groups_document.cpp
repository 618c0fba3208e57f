// Prints docs/groups.md from the catalogue and from the declarations of owbcimomd.
#include "Served.hpp"
#include "agent/Catalogue.hpp"

#include <algorithm>
#include <iostream>
#include <string>

using namespace agent;
using docs::ServedProperty;

namespace {

const char* const introduction =
    R"(<!-- Written by tests/docs/groups_document.cpp: cmake --build --preset release --target update_groups -->
# Groups

A **CIMOM**, a CIM object manager, is a server that answers requests about a host. It has classes, and each class has
instances with named properties. This project has the CIMOM `owbcimomd`; any other works that speaks one of the
[protocols](protocols.md).

A **group** is a class as an agent numbers it, from 0 to 30. Two groups may share one class and show different properties
of it.

A **nominator** is the number of an attribute within a group. Each nominator maps to one property of the group's class. A
name that begins with `_` has no property in the common model; agents and CIMOMs agree on it.

A **row** is the number of an instance within a group: 0 is the first instance that the CIMOM delivers, 1 the second, and so
on. It counts within one reading only. The next reading may give the same row to another instance.

Each item has one more number, its array index. The elements of a property with several values count from 0. The index is 0
for any other property.

A program finds the same facts in `agent/Catalogue.hpp`; `owbctl groups` lists the groups. Every command of `owbctl` takes
the name of a group in place of its number: `owbctl get udp`.

## All groups

| group | name | class | subject |
|---:|---|---|---|
)";

const char* const legend = R"(
## Nominators

Items hold texts, whatever the type. The columns:

- **kind** says how to read the value:

  | kind | value |
  |---|---|
  | `key` | a text that identifies the instance and never changes |
  | `index` | identifies the row in a standard MIB table, alone or with others |
  | `reference` | identifies another instance, by its path or by its index; a path is a key, too |
  | `state` | a code; the list below the table names the codes |
  | `counter` | a number of events; it only grows, until it restarts from 0 |
  | `gauge` | any other number |
  | `size` | an amount of memory, storage or data |
  | `date` | a CIM date, `yyyymmddhhmmss.mmmmmmsutc` |
  | `interval` | a CIM interval, `ddddddddhhmmss.mmmmmm:000` |
  | `flag` | `true` or `false` |
  | `text` | any other text |

- **unit** is the unit of the number. A block in group 3 has `Blocksize` bytes.
- **type** is the CIM type that `owbcimomd` declares.
- **MIB object** is the standard object with the same content, and its object identifier below `mib-2` (1.3.6.1.2.1). Some
  values need a conversion, and a counter of 32 bits is the value modulo 2<sup>32</sup>.
- **written** is *yes* if `owbctl set` and `OWB_setGroup` can change the value in `owbcimomd`. *Others* means that only
  other CIM clients can: the request of the library does not carry the keys of the class.

Keys without a nominator are listed above the table.
)";

std::string quoted(const std::string& text) {
    return "`" + text + "`";
}

const char* writtenWord(const Attribute& attribute) {
    if (!attribute.isWritable)
        return "";
    return attribute.isSettable() ? "yes" : "others";
}

std::string mibText(const MibObject& object) {
    return *object.oid == '\0' ? std::string() : quoted(object.name) + " " + object.oid;
}

void printRow(const Attribute& attribute, const std::vector<ServedProperty>& served) {
    const ServedProperty* const declared =
        findServed(served, classOf(attribute.group).name, attribute.property);
    std::cout << "| " << attribute.nominator << " | " << quoted(attribute.property) << " | "
              << attribute.description << " | " << wordOf(attribute.kind) << " | " << attribute.unit << " | "
              << (declared != nullptr ? declared->type : "not served") << " | " << mibText(attribute.mib)
              << " | " << writtenWord(attribute) << " |\n";
}

void printValues(const Attribute& attribute) {
    std::cout << "- " << quoted(attribute.property) << ':';
    const char* separator = " ";
    for (const ValueName& each : attribute.values) {
        std::cout << separator << each.value << ' ' << each.name;
        separator = ", ";
    }
    std::cout << '\n';
}

void printOtherKeys(long group, const std::vector<ServedProperty>& served) {
    std::string keys;
    for (const ServedProperty& each : served) {
        if (each.isKey && each.className == classOf(group).name && findAttribute(group, each.name) == nullptr)
            keys += (keys.empty() ? "" : ", ") + quoted(each.name);
    }
    if (!keys.empty())
        std::cout << "\nKeys without a nominator: " << keys << ".\n";
}

void printGroup(long group, const std::vector<ServedProperty>& served) {
    const GroupClass& described = classOf(group);
    std::cout << "\n### Group " << group << ", " << described.shortName << ", " << quoted(described.name)
              << "\n\n"
              << described.subject << ".\n";
    printOtherKeys(group, served);

    const std::vector<const Attribute*> all = attributesByNominator(group);
    std::cout << "\n| nominator | property | description | kind | unit | type | MIB object | written |\n"
                 "|---:|---|---|---|---|---|---|---|\n";
    for (const Attribute* attribute : all)
        printRow(*attribute, served);

    const char* separator = "\n";
    for (const Attribute* attribute : all) {
        if (attribute->values.empty())
            continue;
        std::cout << separator;
        printValues(*attribute);
        separator = "";
    }
}

} // namespace

int main() {
    const std::vector<ServedProperty> served = docs::servedProperties();
    std::cout << introduction;
    for (const long group : everyGroup())
        std::cout << "| " << group << " | " << quoted(classOf(group).shortName) << " | "
                  << quoted(classOf(group).name) << " | " << classOf(group).subject << " |\n";
    std::cout << legend;
    for (const long group : everyGroup())
        printGroup(group, served);
    if (std::cout.flush())
        return 0;
    std::cerr << "groups_document: cannot write standard output\n";
    return 1;
}

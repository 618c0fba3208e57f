// The catalogue describes what owbcimomd serves.
#include "Served.hpp"
#include "agent/Catalogue.hpp"

#include <gtest/gtest.h>
#include <set>

using namespace agent;

namespace {

std::string shown(const Attribute& attribute) {
    return std::to_string(attribute.group) + "/" + std::to_string(attribute.nominator) + " " +
           attribute.property;
}

/** The types that a value of a kind may have. */
std::set<std::string> typesOf(Kind kind) {
    switch (kind) {
    case Kind::key:
        return {"string"};
    case Kind::index:
        return {"uint32", "string"};
    case Kind::reference:
        return {"uint32", "REF"};
    case Kind::state:
        return {"uint16", "uint16[]", "uint32"};
    case Kind::counter:
        return {"uint32", "uint64"};
    case Kind::gauge:
        return {"uint32", "uint64", "sint32"};
    case Kind::size:
        return {"uint32", "uint64"};
    case Kind::date:
    case Kind::interval:
        return {"datetime"};
    case Kind::flag:
        return {"boolean"};
    case Kind::text:
        break;
    }
    return {"string", "string[]"};
}

} // namespace

TEST(ServedAttribute, IsDeclaredWithATypeOfItsKind) {
    const std::vector<docs::ServedProperty> served = docs::servedProperties();
    for (const Attribute& attribute : attributes) {
        const docs::ServedProperty* const declared =
            findServed(served, classOf(attribute.group).name, attribute.property);
        ASSERT_NE(declared, nullptr) << shown(attribute);
        EXPECT_EQ(typesOf(attribute.kind).count(declared->type), 1U)
            << shown(attribute) << ": " << declared->type;
    }
}

TEST(ServedAttribute, IsAKeyOfItsClassExactlyIfItIsAKeyOrAPath) {
    const std::vector<docs::ServedProperty> served = docs::servedProperties();
    for (const Attribute& attribute : attributes) {
        const docs::ServedProperty* const declared =
            findServed(served, classOf(attribute.group).name, attribute.property);
        ASSERT_NE(declared, nullptr) << shown(attribute);
        EXPECT_EQ(declared->isKey, attribute.kind == Kind::key || declared->type == "REF")
            << shown(attribute);
    }
}

TEST(ServedAttribute, IsWritableExactlyIfTheSiteMayWriteIt) {
    const std::vector<docs::ServedProperty> served = docs::servedProperties();
    for (const Attribute& attribute : attributes) {
        const docs::ServedProperty* const declared =
            findServed(served, classOf(attribute.group).name, attribute.property);
        ASSERT_NE(declared, nullptr) << shown(attribute);
        EXPECT_EQ(declared->isWritable, attribute.isWritable) << shown(attribute);
    }
}

TEST(ServedAttribute, IsWritableThroughTheLibraryOnlyWhereAWriteCarriesAllKeys) {
    const std::vector<docs::ServedProperty> served = docs::servedProperties();
    for (const long group : everyGroup()) {
        const std::vector<std::string>& keys = classOf(group).writeKeys;
        if (keys.empty())
            continue;
        std::set<std::string> declared;
        for (const docs::ServedProperty& each : served) {
            if (each.isKey && each.className == classOf(group).name)
                declared.insert(each.name);
        }
        EXPECT_EQ(declared, std::set<std::string>(keys.begin(), keys.end())) << group;
    }
}

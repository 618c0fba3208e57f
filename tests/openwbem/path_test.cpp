#include "OW_Array.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "OW_NoSuchPropertyException.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;

CIMObjectPath pathOf(const char* text) {
    return CIMObjectPath::parse(text);
}

TEST(Path, OfAnInstanceHasItsClassAndKeys) {
    CIMInstance instance("Foo");
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("Name", CIMValue("x")));
    instance.setKeys(keys);
    EXPECT_EQ("/root/cimv2:Foo.Name=\"x\"", CIMObjectPath("/root/cimv2", instance).toString());
    EXPECT_EQ("Bar.Name=\"x\"", CIMObjectPath("Bar").setKeys(instance).modelPath());
}

TEST(Path, RemovesBlanksAndLeadingSlashesFromItsNameSpace) {
    EXPECT_EQ("root/cimv2", CIMObjectPath("Foo", String(" //root/cimv2 ")).getNameSpace());
    EXPECT_EQ("", CIMObjectPath("Foo").setNameSpace("/").getNameSpace());
}

TEST(Path, HasTheHostThatWasSet) {
    EXPECT_EQ("127.0.0.1", CIMObjectPath("Foo").getHost());
    CIMObjectPath path("Foo");
    path.setHost("box");
    EXPECT_EQ("box", path.getHost());
}

TEST(Path, FindsAKeyWithoutCase) {
    const CIMObjectPath path = pathOf("Foo.Name=\"x\",Id=5");
    EXPECT_EQ("Name", path.getKey("NAME").getName());
    EXPECT_EQ("5", path.getKeyT("id").getValue().toString());
    EXPECT_EQ("x", path.getKeyValue("name").toString());
    EXPECT_TRUE(path.keyHasValue("id"));
}

TEST(Path, AMissingKeyIsNull) {
    const CIMObjectPath path = pathOf("Foo.Name=\"x\"");
    EXPECT_FALSE(path.getKey("y"));
    EXPECT_FALSE(path.getKeyValue("y"));
    EXPECT_FALSE(path.keyHasValue("y"));
    try {
        path.getKeyT("y");
        FAIL() << "no exception";
    } catch (const NoSuchPropertyException& e) {
        EXPECT_STREQ("y", e.getMessage());
    }
}

TEST(Path, SetKeyValueChangesOrAddsAKey) {
    CIMObjectPath path("Foo");
    EXPECT_TRUE(path.isClassPath());
    path.setKeyValue("Id", CIMValue(UInt32(1)))
        .setKeyValue("ID", CIMValue("2"))
        .setKeyValue("N", CIMValue(CIMNULL));
    EXPECT_TRUE(path.isInstancePath());
    EXPECT_EQ("Foo.Id=\"2\",N=\"null\"", path.modelPath());
    EXPECT_EQ(CIMDataType::UINT32, path.getKeyValue("Id").getType()) << "cast to the type of the key";
    EXPECT_EQ("Bar", path.setClassName("Bar").getClassName());
}

TEST(Path, EscapesBackslashesQuotesAndLineFeeds) {
    EXPECT_EQ("a\\\\b\\\"c\\nd\te", CIMObjectPath::escape("a\\b\"c\nd\te"));
    EXPECT_EQ("a\\b\"cnd", CIMObjectPath::unEscape("a\\\\b\\\"c\\nd\\"));
    EXPECT_EQ("/root:Foo.Name=\\\"x\\\"", pathOf("Foo.Name=x").toMOF());
}

TEST(Path, NestedInPathsIsLimitedToTheMaximumLength) {
    CIMObjectPath path("Foo");
    path.setKeyValue("Name", CIMValue("\""));
    unsigned levels = 0;
    std::string message;
    while (message.empty() && levels < 64) {
        CIMObjectPath outer("Foo");
        outer.setKeyValue("Inner", CIMValue(path));
        path = outer;
        ++levels;
        try {
            EXPECT_GE(16U * 1024 * 1024 + 100, path.toString().length()) << levels;
        } catch (const CIMException& e) {
            message = e.getMessage();
        }
    }
    EXPECT_EQ("general error (object path is too long)", message);
    EXPECT_LT(10U, levels);
}

TEST(Path, EqualsAPathOfTheSameObject) {
    const CIMObjectPath path = pathOf("root:Foo.Name=\"x\",Id=5");
    EXPECT_EQ(path, pathOf("root:FOO.id=5,NAME=x"));
    EXPECT_EQ(path, pathOf("http://localhost:99/root:Foo.Name=\"x\",Id=5"));
    EXPECT_EQ(path, pathOf("root:Foo.Name=\"x\"").setKeyValue("Id", CIMValue(UInt8(5))));
    EXPECT_TRUE(path.equals(path) && CIMObjectPath(CIMNULL) == CIMObjectPath(CIMNULL));
}

TEST(Path, DiffersInHostNameSpaceClassKeysAndValues) {
    const CIMObjectPath path = pathOf("root:Foo.Name=\"x\"");
    for (const char* text : {"http://h/root:Foo.Name=\"x\"", "Root:Foo.Name=\"x\"", "root:Bar.Name=\"x\"",
                             "root:Foo.Name=\"x\",Id=5", "root:Foo.Id=\"x\"", "root:Foo.Name=\"X\""}) {
        EXPECT_NE(path, pathOf(text)) << text;
        EXPECT_NE(path < pathOf(text), pathOf(text) < path) << text;
    }
    EXPECT_NE(path, CIMObjectPath(CIMNULL));
    EXPECT_TRUE(CIMObjectPath(CIMNULL) < path);
    EXPECT_NE(pathOf("http://h:1/root:Foo.Name=\"x\""), pathOf("http://h:2/root:Foo.Name=\"x\""));
}

TEST(Path, InAValueIsComparedAsAPath) {
    EXPECT_NE(CIMValue(pathOf("Foo.A=1")), CIMValue(pathOf("Foo.A=2")));
    EXPECT_EQ(CIMValue(pathOf("Foo.A=1")), CIMValue(pathOf("foo.a=1")));
}

} // namespace

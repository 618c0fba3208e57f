#include "OW_Array.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace {

using namespace OpenWBEM;

struct Example {
    const char* text;
    const char* nameSpace;
    const char* className;
    const char* keys; // in the form of modelPath()
};
std::ostream& operator<<(std::ostream& out, const Example& example) {
    return out << example.text;
}

class PathText : public testing::TestWithParam<Example> {};

TEST_P(PathText, IsParsed) {
    const CIMObjectPath path = CIMObjectPath::parse(GetParam().text);
    EXPECT_EQ(GetParam().nameSpace, path.getNameSpace());
    EXPECT_EQ(GetParam().className, path.getClassName());
    const std::string keys = GetParam().keys;
    EXPECT_EQ(GetParam().className + (keys.empty() ? "" : "." + keys), path.modelPath().c_str());
    const CIMPropertyArray properties = path.getKeys();
    for (const CIMProperty& key : properties)
        EXPECT_EQ(CIMDataType::STRING, key.getValue().getType());
}

INSTANTIATE_TEST_SUITE_P(
    Examples, PathText,
    testing::Values(
        Example{R"(Foo.Name="x")", "root", "Foo", R"(Name="x")"},
        Example{R"(Foo.Id=5,Name="x")", "root", "Foo", R"(Id="5",Name="x")"},
        Example{R"(Foo.Name="a,b",Id=5)", "root", "Foo", R"(Name="a,b",Id="5")"},
        Example{R"(Foo.Name="a\"b\\c")", "root", "Foo", R"(Name="a\"b\\c")"},
        Example{R"(Foo.Name="a\nb")", "root", "Foo", R"(Name="anb")"},
        Example{R"(root/cimv2:Foo.Name="x")", "root/cimv2", "Foo", R"(Name="x")"},
        Example{R"(//root/cimv2:Foo.Name="x")", "root/cimv2", "Foo", R"(Name="x")"},
        Example{R"(//myhost/root/cimv2:Foo.Name="x")", "myhost/root/cimv2", "Foo", R"(Name="x")"},
        Example{R"(http://myhost/root/cimv2:Foo.Name="x")", "root/cimv2", "Foo", R"(Name="x")"},
        Example{R"(HTTP://myhost:1234/root/cimv2:Foo.Name="x")", "root/cimv2", "Foo", R"(Name="x")"},
        Example{R"(http://localhost:99/root:Foo.Name="x")", "root", "Foo", R"(Name="x")"},
        Example{"  Foo.Name=\"x\" \t\n", "root", "Foo", R"(Name="x")"},
        Example{"Foo.=@", "root", "Foo", R"(="@")"}, Example{"Foo.Name=", "root", "Foo", R"(Name="")"},
        Example{R"(Foo.Name="x)", "root", "Foo", ""},
        Example{R"(Foo.Name="x",)", "root", "Foo", R"(Name="x\"")"},
        Example{"Foo.Id=5,", "root", "Foo", R"(Id="5,")"},
        Example{"Foo.Id=5,,Name=1", "root", "Foo", R"(Id="5",,Name="1")"},
        Example{"Foo.A=b=c", "root", "Foo", R"(A=b="c")"},
        Example{R"(Foo.Name="x"y)", "root", "Foo", R"(Name="x\"")"},
        Example{R"(Foo.Name="a=b")", "root", "Foo", R"(Name="a=b")"},
        Example{R"(root:Foo.Name="a:b")", "root", "Foo", R"(Name="a:b")"},
        Example{R"(Foo.Name="http://x/y.z")", "root", "y", ""},
        Example{R"(Foo.Name="a.b")", "root", "Foo", R"(Name="a.b")"},
        Example{R"(Foo.Bar.Name="x")", "root", "Foo", R"(Bar.Name="x")"},
        Example{"Foo.Flag=true,Num=-3,R=1.5", "root", "Foo", R"(Flag="true",Num="-3",R="1.5")"},
        Example{R"(Foo.Ref="root/cimv2:Bar.Id=\"3\"")", R"(Foo.Ref="root/cimv2)", "Bar", ""},
        Example{R"(Foo. Name = "x" , Id = 5)", "root", "Foo", R"( Name =" \"x\" ", Id =" 5")"},
        Example{R"(Foo.Name="x" ,Id=5)", "root", "Foo", R"(Name="x\"",Id="5")"},
        Example{"Foo.Name='x'", "root", "Foo", R"(Name="'x'")"},
        Example{R"(Foo.Name=x\)", "root", "Foo", R"(Name="x")"},
        Example{R"(Foo.Name=x\n)", "root", "Foo", ""},
        Example{R"(Foo.Name=a\,b)", "root", "Foo", R"(Name="a,b")"},
        Example{R"(QAV_System.Name="h",CreationClassName="QAV_System")", "root", "QAV_System",
                R"(Name="h",CreationClassName="QAV_System")"},
        Example{"a:b:Foo.X=1", "a", "b:Foo", R"(X="1")"},
        Example{R"(Foo.name="x",NAME="y")", "root", "Foo", R"(name="x",NAME="y")"},
        Example{R"(Foo.A=1,"B"=2)", "root", "Foo", R"(A="1")"},
        Example{"Foo.A=1,B", "root", "Foo", R"(A="1")"},
        Example{R"(Foo.A="x",Name=")", "root", "Foo", R"(A="x")"}, Example{":.=", "", "", R"(="")"}));

TEST(Path, OfARemoteHostIsWrittenWithItsAddress) {
    for (const char* text :
         {R"(http://myhost/root/cimv2:Foo.Name="x")", R"(HTTP://myhost:1234/root/cimv2:Foo.Name="x")"})
        EXPECT_EQ(text, CIMObjectPath::parse(text).toString());
    EXPECT_EQ(R"(Foo.Name="http://x/root:y)", CIMObjectPath::parse(R"(Foo.Name="http://x/y.z")").toString());
}

TEST(Path, OfTheLocalHostIsWrittenWithoutItsAddress) {
    EXPECT_EQ(R"(/root:Foo.Name="x")",
              CIMObjectPath::parse(R"(http://localhost:99/root:Foo.Name="x")").toString());
    EXPECT_EQ(R"(/root:Foo.Name="x")", CIMObjectPath::parse(R"(Foo.Name="x")").toString());
}

TEST(Path, OfBlanksIsNull) {
    EXPECT_FALSE(CIMObjectPath::parse(""));
    EXPECT_FALSE(CIMObjectPath::parse(String()));
    EXPECT_FALSE(CIMObjectPath::parse(" \t\n"));
}

TEST(Path, OfManyKeysIsParsed) {
    std::string text = "Foo.K=1";
    for (int i = 0; i < 100000; ++i)
        text += ",K=\\\"\"v\"";
    EXPECT_EQ(100001U, CIMObjectPath::parse(text.c_str()).getKeys().size());
}

struct InvalidExample {
    const char* text;
    int code;
    const char* message;
};
std::ostream& operator<<(std::ostream& out, const InvalidExample& example) {
    return out << example.text;
}

class InvalidPathText : public testing::TestWithParam<InvalidExample> {};

TEST_P(InvalidPathText, IsRejected) {
    try {
        CIMObjectPath::parse(GetParam().text);
        FAIL() << "no exception";
    } catch (const CIMException& e) {
        EXPECT_EQ(GetParam().code, e.getErrNo());
        EXPECT_STREQ(GetParam().message, e.getMessage());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Examples, InvalidPathText,
    testing::Values(
        InvalidExample{R"(https://h:x/root:Foo.Name="x")", 4,
                       "invalid parameter passed to method (Invalid port in Object Path)"},
        InvalidExample{R"(https://h:/root:Foo.Name="x")", 4,
                       "invalid parameter passed to method (Invalid port in Object Path)"},
        InvalidExample{"http://myhost", 4,
                       "invalid parameter passed to method (Invalid instance name: http://myhost)"},
        InvalidExample{"Foo", 4,
                       "invalid parameter passed to method (class name not found in instance name: Foo)"},
        InvalidExample{"Foo=@", 4,
                       "invalid parameter passed to method (class name not found in instance name: Foo=@)"},
        InvalidExample{
            R"(Foo.Name="a:b")", 4,
            R"(invalid parameter passed to method (class name not found in instance name: Foo.Name="a:b"))"},
        InvalidExample{" Foo. ", 4,
                       "invalid parameter passed to method (No key values found in instance name:  Foo. )"},
        InvalidExample{"Foo.bar", 6, "requested object could not be found (Bad key in string (bar))"},
        InvalidExample{"Foo.bar,A=1", 6, "requested object could not be found (Bad key in string (bar))"}));

} // namespace

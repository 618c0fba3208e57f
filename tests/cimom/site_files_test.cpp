#include "Collected.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "schema/Namespace.hpp"
#include "site/SiteInstances.hpp"
#include "support/TempDir.hpp"
#include "types/ObjectData.hpp"

#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>

using namespace cimom;
using namespace OpenWBEM;
using support::TempDir;

namespace {

using Type = CIMDataType;

const ClassDeclaration lamp{"QAV_Lamp",
                            {{"Colour", Type::STRING, Role::key},
                             {"Number", Type::UINT32, Role::key},
                             {"Room", Type::STRING, Role::site}}};
const ClassDeclaration wiring{
    "QAV_Wiring",
    {{"Switch", Type::STRING, Role::key}, {"Lamp", Type::REFERENCE, Role::key, false, "QAV_Lamp"}}};
const ClassDeclaration plan{"QAV_Plan", {{"Wiring", Type::REFERENCE, Role::key, false, "QAV_Wiring"}}};
class SiteFilesTest : public ::testing::Test {
protected:
    SiteInstances load() const { return SiteInstances(m_directory.path(), {&lamp, &wiring, &plan}); }
    void write(const std::string& name, const std::string& content) const {
        m_directory.write(name, content);
    }
    const TempDir& directory() const { return m_directory; }

    /** The instances of a class in a file. */
    std::vector<CIMInstance> read(const ClassDeclaration& declaration, const std::string& content) const {
        write("site.json", content);
        return collected(*load().instances(declaration));
    }
    /** Why the files are rejected, without the directory. */
    std::string rejection() const {
        try {
            load();
        } catch (const std::runtime_error& e) {
            const std::string why = e.what();
            EXPECT_EQ(0u, why.find(m_directory.path() + "/")) << why;
            return why.substr(m_directory.path().size() + 1);
        }
        return "not rejected";
    }
    std::string rejectionOf(const std::string& content) const {
        write("f.json", content);
        return rejection();
    }

private:
    TempDir m_directory;
};

std::string colours(const std::vector<CIMInstance>& lamps) {
    std::string text;
    for (const CIMInstance& each : lamps)
        text += (text.empty() ? "" : " ") + std::string(each.getPropertyValue("Colour").toString().c_str());
    return text;
}

std::string oneLamp(const std::string& colour, int number = 1) {
    return R"({"QAV_Lamp": [{"Colour": ")" + colour + R"(", "Number": )" + std::to_string(number) + "}]}";
}

CIMObjectPath lampPath(const char* colour, UInt32 number) {
    CIMObjectPath path("QAV_Lamp", "root/cimv2");
    return path.setKeyValue("Colour", CIMValue(colour)).setKeyValue("Number", CIMValue(number));
}

/** Numbers of two red lamps whose paths have the same hash. */
std::pair<int, int> numbersThatHashAlike() {
    std::unordered_map<std::size_t, int> numbers;
    for (int number = 1;; ++number) {
        const std::string path = "QAV_Lamp.Colour=\"red\",Number=\"" + std::to_string(number) + "\"";
        const auto [first, isNew] = numbers.emplace(std::hash<std::string>()(path), number);
        if (!isNew)
            return {first->second, number};
    }
}

} // namespace

TEST_F(SiteFilesTest, ThereAreNoneWithoutADirectory) {
    EXPECT_TRUE(collected(*SiteInstances().instances(lamp)).empty());
    EXPECT_FALSE(SiteInstances().find(lampPath("red", 1)));
}

TEST_F(SiteFilesTest, AClassHasTheInstancesOfAllFilesInTheOrderOfTheirNames) {
    write("b.json", oneLamp("blue"));
    write(
        "a.json",
        R"({"QAV_Lamp": [{"Colour": "red", "Number": 1}, {"Colour": "green", "Number": 2}], "QAV_Plan": []})");
    write("c.json", "{}");
    EXPECT_EQ("red green blue", colours(collected(*load().instances(lamp))));
    EXPECT_TRUE(collected(*load().instances(plan)).empty());
    EXPECT_TRUE(collected(*load().instances(wiring)).empty());
}

TEST_F(SiteFilesTest, OtherFilesAndDirectoriesAreIgnored) {
    write("notes.txt", "no JSON");
    write("a.json~", "no JSON");
    write(".hidden.json", "no JSON");
    write("sub.json/inner.json", "no JSON");
    write("sub/inner.json", "no JSON");
    write("lamp.json", oneLamp("red"));
    EXPECT_EQ("red", colours(collected(*load().instances(lamp))));
}

TEST_F(SiteFilesTest, AnInstanceCarriesEveryPropertyAndItsKeys) {
    const CIMInstance instance =
        read(lamp, R"({"QAV_Lamp": [{"Number": 7, "Room": null, "Colour": "red"}]})").at(0);
    EXPECT_STREQ("QAV_Lamp", instance.getClassName().c_str());
    EXPECT_EQ(lampPath("red", 7), pathOf(instance));
    const CIMPropertyArray properties = instance.getProperties();
    ASSERT_EQ(3u, properties.size());
    EXPECT_STREQ("Colour", properties[0].getName().c_str());
    EXPECT_STREQ("Number", properties[1].getName().c_str());
    EXPECT_STREQ("Room", properties[2].getName().c_str());
    EXPECT_EQ(Type::STRING, properties[2].getDataType().getType());
    EXPECT_FALSE(properties[2].getValue());
}

TEST_F(SiteFilesTest, TheCaseOfNamesDoesNotMatter) {
    const CIMInstance instance = read(lamp, R"({"qav_LAMP": [{"COLOUR": "Red", "number": 1}]})").at(0);
    EXPECT_STREQ("QAV_Lamp", instance.getClassName().c_str());
    EXPECT_STREQ("Colour", instance.getProperties()[0].getName().c_str());
    EXPECT_STREQ("Red", instance.getProperties()[0].getValue().toString().c_str());
}

TEST_F(SiteFilesTest, AnInstanceIsFoundByAnyFormOfItsPath) {
    write("site.json", oneLamp("red", 7));
    const SiteInstances site = load();
    EXPECT_EQ(lampPath("red", 7), pathOf(site.find(lampPath("red", 7))));
    CIMObjectPath other("qav_lamp", "another/namespace");
    other.setKeyValue("NUMBER", CIMValue("7")).setKeyValue("colour", CIMValue("red"));
    EXPECT_TRUE(site.find(other));
    EXPECT_FALSE(site.find(lampPath("red", 8)));
    EXPECT_FALSE(site.find(lampPath("RED", 7))) << "the case of values matters";
    EXPECT_FALSE(site.find(CIMObjectPath("QAV_Lamp", "root/cimv2")));
    EXPECT_FALSE(site.find(CIMObjectPath("QAV_Unknown", "root/cimv2")));
    CIMObjectPath odd("QAV_Lamp", "root/cimv2");
    odd.setKeyValue("Number", CIMValue("seven")).setKeyValue("Colour", CIMValue("red"));
    EXPECT_FALSE(site.find(odd));
    EXPECT_FALSE(site.find(lampPath("red", 7).setClassName("QAV_Wiring")));
}

TEST_F(SiteFilesTest, AnInstanceIsFoundByAnyFormOfAReference) {
    write(
        "site.json",
        R"({"QAV_Plan": [{"Wiring": "QAV_Wiring.Switch=\"s\",Lamp=\"QAV_Lamp.Colour=\\\"a:b\\\",Number=7\""}]})");
    const SiteInstances site = load();
    CIMObjectPath lampReference("QAV_LAMP", "");
    lampReference.setKeyValue("number", CIMValue("07")).setKeyValue("COLOUR", CIMValue("a:b"));
    CIMObjectPath wiringReference("qav_wiring", "/root/CIMV2");
    wiringReference.setKeyValue("lamp", CIMValue(lampReference)).setKeyValue("switch", CIMValue("s"));
    CIMObjectPath path("QAV_Plan", "root/cimv2");
    EXPECT_TRUE(site.find(path.setKeyValue("Wiring", CIMValue(wiringReference))));
    path = CIMObjectPath("QAV_Plan", "root/cimv2");
    EXPECT_TRUE(site.find(path.setKeyValue("Wiring", CIMValue(wiringReference.toString()))));
    path = CIMObjectPath("QAV_Plan", "root/cimv2");
    wiringReference.setKeyValue("switch", CIMValue("t"));
    EXPECT_FALSE(site.find(path.setKeyValue("Wiring", CIMValue(wiringReference))));
    path = CIMObjectPath("QAV_Plan", "root/cimv2");
    EXPECT_FALSE(site.find(path.setKeyValue("Wiring", CIMValue(UInt32{7}))));
    path = CIMObjectPath("QAV_Plan", "root/cimv2");
    EXPECT_FALSE(site.find(path.setKeyValue("Wiring", CIMValue("no path"))));
}

TEST_F(SiteFilesTest, InstancesWithTheSameHashAreDistinguished) {
    const auto [one, other] = numbersThatHashAlike();
    write("a.json", oneLamp("red", one));
    write("b.json", oneLamp("red", other));
    const SiteInstances site = load();
    for (const int number : {one, other})
        EXPECT_EQ(lampPath("red", static_cast<UInt32>(number)),
                  pathOf(site.find(lampPath("red", static_cast<UInt32>(number)))));
}

TEST_F(SiteFilesTest, ASourceOutlivesItsSiteInstances) {
    write("site.json", oneLamp("red"));
    auto site = std::make_unique<SiteInstances>(load());
    const std::unique_ptr<InstanceSource> source = site->instances(lamp);
    site.reset();
    EXPECT_EQ("red", colours({source->next()}));
    EXPECT_FALSE(source->next());
    EXPECT_FALSE(source->next());
}

TEST_F(SiteFilesTest, InstancesShareDeclarationsAndNullProperties) {
    const auto all =
        read(lamp, R"({"QAV_Lamp": [{"Colour": "a", "Number": 1}, {"Colour": "b", "Number": 2}]})");
    for (std::size_t i = 0; i < lamp.properties.size(); ++i)
        EXPECT_EQ(&ObjectAccess::declaration(all[0].getProperties()[i]),
                  &ObjectAccess::declaration(all[1].getProperties()[i]));
    EXPECT_EQ(&ObjectAccess::declaration(all[0].getProperties()[0]),
              &ObjectAccess::declaration(all[0].getKeyValuePairs()[0]));
}

TEST_F(SiteFilesTest, AFileThatIsNotAnObjectOfClassesIsRejected) {
    EXPECT_EQ(0u, rejectionOf("{\n\"QAV_Lamp\": [\n}").find("f.json:3: syntax error"));
    EXPECT_EQ(0u, rejectionOf("").find("f.json:1: syntax error"));
    EXPECT_EQ("f.json:1: expected an object of classes", rejectionOf("[]"));
    EXPECT_EQ("f.json:2: QAV_Lamp: expected an array of instances", rejectionOf("{\"QAV_Lamp\":\n{}}"));
    EXPECT_EQ("f.json:2: QAV_Lamp: expected an object of properties", rejectionOf("{\"QAV_Lamp\": [\n7]}"));
    EXPECT_EQ("f.json:2: unknown class \"QAV_Lam\"", rejectionOf("{\"QAV_Lam\":\n[]}"));
    EXPECT_EQ("f.json:1: unknown class \"\"", rejectionOf("{\"\": []}"));
    EXPECT_EQ("f.json:1: unknown class \"QAV_Lamp", rejectionOf(R"({"QAV_Lamp\u0000": []})"));
}

TEST_F(SiteFilesTest, AnUndeclaredPropertyIsRejected) {
    EXPECT_EQ("f.json:1: QAV_Lamp has no property \"Room",
              rejectionOf(R"({"QAV_Lamp": [{"Colour": "red", "Number": 1, "Room\u0000": null}]})"));
    EXPECT_EQ("f.json:3: QAV_Lamp has no property \"Color\"",
              rejectionOf("{\"QAV_Lamp\": [{\"Colour\": \"red\",\n\"Number\": 1,\n\"Color\": null}]}"));
}

TEST_F(SiteFilesTest, AnInvalidValueIsReportedWithItsProperty) {
    EXPECT_EQ("f.json:2: Number: expected an integer from 0 to 4294967295 (uint32)",
              rejectionOf("{\"QAV_Lamp\": [{\"Colour\": \"red\", \"number\":\n\"1\"}]}"));
}

TEST_F(SiteFilesTest, ADuplicatePropertyIsRejected) {
    EXPECT_EQ("f.json:2: duplicate name \"Colour\"",
              rejectionOf("{\"QAV_Lamp\": [{\"Colour\": \"red\",\n\"Colour\": \"red\", \"Number\": 1}]}"));
    EXPECT_EQ("f.json:2: duplicate name \"COLOUR\" (in another case)",
              rejectionOf("{\"QAV_Lamp\": [{\"Colour\": null,\n\"COLOUR\": \"red\", \"Number\": 1}]}"));
}

TEST_F(SiteFilesTest, AKeyWithoutAValueIsRejected) {
    EXPECT_EQ("f.json:2: key \"Number\" has no value",
              rejectionOf("{\"QAV_Lamp\": [\n{\"Colour\": \"red\"}]}"));
    EXPECT_EQ("f.json:2: key \"Colour\" has no value",
              rejectionOf("{\"QAV_Lamp\": [\n{\"Colour\": null, \"Number\": 1}]}"));
}

TEST_F(SiteFilesTest, ADuplicateInstanceIsReportedWithThePositionOfTheFirst) {
    write("0.json", oneLamp("blue"));
    write("a.json",
          "{\"QAV_Lamp\": [{\"Colour\": \"red\", \"Number\": 1},\n{\"Colour\": \"red\", \"Number\": 2}]}");
    EXPECT_EQ("f.json:1: duplicate instance, first one at " + directory().file("a.json:2"),
              rejectionOf(R"({"QAV_Lamp": [{"number": 2, "Colour": "red"}]})"));
    EXPECT_EQ("not rejected", rejectionOf(oneLamp("red", 3)));
}

TEST_F(SiteFilesTest, KeysThatReferToTheSameInstanceAreEqual) {
    EXPECT_EQ("f.json:2: duplicate instance, first one at " + directory().file("f.json:1"),
              rejectionOf(
                  "{\"QAV_Wiring\": [{\"Switch\": \"s\", \"Lamp\": \"QAV_Lamp.Colour=\\\"a\\\",Number=1\"},\n"
                  "{\"Switch\": \"s\", \"Lamp\": "
                  "\"/root/cimv2:qav_lamp.NUMBER=\\\"01\\\",colour=\\\"a\\\"\"}]}"));
}

TEST_F(SiteFilesTest, ADirectoryThatCannotBeReadIsRejected) {
    const std::string missing = directory().file("missing");
    try {
        const SiteInstances site(missing, {&lamp});
        FAIL() << "not rejected";
    } catch (const std::runtime_error& e) {
        EXPECT_EQ(missing + ": No such file or directory", std::string(e.what()));
    }
}

TEST_F(SiteFilesTest, AFileThatCannotBeReadIsRejected) {
    ASSERT_EQ(0, ::mkfifo(directory().file("pipe.json").c_str(), 0600));
    EXPECT_EQ("pipe.json: not a regular file", rejection());
    ASSERT_EQ(0, ::symlink("nowhere", directory().file("a.json").c_str()));
    EXPECT_EQ("a.json: No such file or directory", rejection());
}

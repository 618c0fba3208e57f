#include "Collected.hpp"
#include "Failure.hpp"
#include "LampProvider.hpp"
#include "OW_CIMClass.hpp"
#include "service/Log.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <filesystem>
#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

struct Given {
    const char* name;
    CIMValue value;
};

CIMValue null() {
    return CIMValue(CIMNULL);
}

CIMInstance request(const char* className, const std::vector<Given>& properties) {
    CIMInstance instance(className);
    CIMPropertyArray all;
    for (const Given& each : properties)
        all.push_back(each.value ? CIMProperty(each.name, each.value) : CIMProperty(CIMName(each.name)));
    instance.setProperties(all);
    return instance;
}

class Modify : public ::testing::Test {
protected:
    /** Modifies the red lamp. */
    void modify(std::vector<Given> properties, const PropertyList* listed = nullptr) {
        properties.insert(properties.begin(), {"Colour", CIMValue("red")});
        manager.modifyInstance("root/cimv2", request("QAV_Lamp", properties), listed, Access::write);
    }
    std::string errorOf(const std::vector<Given>& properties) {
        return cimErrorOf([&] { modify(properties); });
    }
    /** A value of a lamp. Checks that EnumerateInstances and GetInstance return the same lamp. */
    std::string value(const char* property, const char* colour = "red") {
        CIMObjectPath path("QAV_Lamp");
        path.setKeyValue("Colour", CIMValue(colour));
        const CIMInstance one = manager.getInstance("root/cimv2", path, nullptr);
        for (const CIMInstance& each :
             collected(*manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr))) {
            if (each.getPropertyValue("Colour").toString() == colour) {
                EXPECT_EQ(one.toString(), each.toString());
            }
        }
        return one.getPropertyValue(property).toString().c_str();
    }
    /** The line that an action logs. */
    template <class Action>
    std::string logOf(Action action) {
        service::nameLog("owbcimomd");
        testing::internal::CaptureStderr();
        action();
        return support::withoutTime(testing::internal::GetCapturedStderr());
    }

    ObjectManager manager = lampManager({"red", "green"});
};

} // namespace

TEST_F(Modify, APropertyOfTheSiteIsNullUntilItIsWritten) {
    EXPECT_EQ("(null)", value("Room"));
    modify({{"Room", CIMValue("hall")}});
    EXPECT_EQ("hall", value("Room"));
    modify({{"Room", CIMValue("cellar")}});
    EXPECT_EQ("cellar", value("Room"));
}

TEST_F(Modify, PropertiesThatTheRequestDoesNotCarryKeepTheirValues) {
    modify({{"Room", CIMValue("hall")}, {"Owner", CIMValue("me")}});
    modify({{"Owner", CIMValue("you")}});
    EXPECT_EQ("hall", value("Room"));
    EXPECT_EQ("you", value("Owner"));
    EXPECT_EQ("60", value("Watts"));
    EXPECT_EQ("(null)", value("Room", "green")) << "another instance does not change";
}

TEST_F(Modify, NullAndTheEmptyTextAreDifferentValues) {
    modify({{"Room", CIMValue("")}, {"Owner", CIMValue("me")}});
    EXPECT_EQ("", value("Room"));
    modify({{"Room", null()}});
    EXPECT_EQ("(null)", value("Room"));
    EXPECT_EQ("me", value("Owner"));
}

TEST_F(Modify, APropertyWrittenNullKeepsItsType) {
    modify({{"Room", null()}});
    const auto all = collected(*manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr));
    EXPECT_EQ(CIMDataType::STRING, all.at(0).getProperty("Room").getDataType().getType());
    EXPECT_EQ("Room", all.at(0).getProperties()[3].getName()) << "and its index";
}

TEST_F(Modify, TheCaseOfNamesDoesNotMatter) {
    manager.modifyInstance("//ROOT/cimv2",
                           request("qav_LAMP", {{"cOLOUR", CIMValue("red")}, {"rOOM", CIMValue("hall")}}),
                           nullptr, Access::write);
    EXPECT_EQ("hall", value("Room"));
}

TEST_F(Modify, ValuesAreConvertedToTheTypesOfTheirProperties) {
    modify({{"Room", CIMValue(UInt32{12})}});
    EXPECT_EQ("12", value("Room"));
    EXPECT_EQ("no error", errorOf({{"Watts", CIMValue("60")}})) << "the same value as text";
}

TEST_F(Modify, AValueThatDoesNotConvertIsATypeMismatchAndNothingIsWritten) {
    EXPECT_EQ("13 Watts: general error (Unable to convert \"many\" into UInt16)",
              errorOf({{"Room", CIMValue("hall")}, {"Watts", CIMValue("many")}, {"Owner", CIMValue("me")}}));
    EXPECT_EQ("(null)", value("Room"));
    EXPECT_EQ("(null)", value("Owner"));
    EXPECT_EQ("13 LitSince: Invalid format for date time", errorOf({{"LitSince", CIMValue("yesterday")}}));
    EXPECT_EQ("13 Room: not UTF-8", errorOf({{"Room", CIMValue("d\xfcne")}}));
}

TEST_F(Modify, ObjectsAndArraysDoNotConvertToStrings) {
    StringArray two;
    two.push_back("hall");
    two.push_back("cellar");
    for (const CIMValue& value : {CIMValue(two), CIMValue(StringArray()), CIMValue(CIMInstance("X")),
                                  CIMValue(CIMClass("X")), CIMValue(CIMObjectPath("X"))}) {
        EXPECT_EQ("13 Room: a value of another kind", errorOf({{"Room", value}}));
        EXPECT_EQ("13 Colour: a value of another kind", cimErrorOf([&] {
                      manager.modifyInstance("root/cimv2", request("QAV_Lamp", {{"Colour", value}}), nullptr,
                                             Access::write);
                  }));
    }
}

TEST_F(Modify, ANewValueOfTheHostsStateIsNotSupportedAndNothingIsWritten) {
    EXPECT_EQ("7 Watts", errorOf({{"Room", CIMValue("hall")}, {"Watts", CIMValue("61")}}));
    EXPECT_EQ("(null)", value("Room"));
    EXPECT_EQ("7 Watts", errorOf({{"Watts", null()}}));
    EXPECT_EQ("7 LitSince", errorOf({{"LitSince", CIMValue("20260101000000.000000+000")}}));
}

TEST_F(Modify, ThePresentValueOfTheHostsStateIsAccepted) {
    EXPECT_EQ("no error", errorOf({{"Watts", CIMValue(UInt16{60})}, {"LitSince", null()}}));
}

TEST_F(Modify, OfTwoValuesForOnePropertyTheLaterIsWritten) {
    modify({{"Room", CIMValue("hall")}, {"ROOM", CIMValue("cellar")}});
    EXPECT_EQ("cellar", value("Room"));
}

TEST_F(Modify, AnUndeclaredPropertyIsIgnoredAndLogged) {
    const std::string log = logOf([&] {
        modify({{"", null()},
                {"_INDEX", CIMValue("1")},
                {"Line\nend", CIMValue("x")},
                {"Room", CIMValue("hall")}});
    });
    const std::string start = "owbcimomd: ModifyInstance /root/cimv2:QAV_Lamp.Colour=\"red\": ";
    EXPECT_EQ(start + "ignored undeclared properties: \"\", \"_INDEX\", \"Line end\"\n", log);
    EXPECT_EQ("hall", value("Room"));
}

TEST_F(Modify, OnlyListedPropertiesAreWritten) {
    const PropertyList listed = {"rOOM"};
    EXPECT_EQ("", logOf([&] {
                  modify({{"Room", CIMValue("hall")},
                          {"Owner", CIMValue("me")},
                          {"Watts", CIMValue("many")},
                          {"_INDEX", CIMValue("1")}},
                         &listed);
              }));
    EXPECT_EQ("hall", value("Room"));
    EXPECT_EQ("(null)", value("Owner"));
    const PropertyList none;
    modify({{"Owner", CIMValue("me")}}, &none);
    EXPECT_EQ("(null)", value("Owner"));
}

TEST_F(Modify, AnUndeclaredListedNameIsAnInvalidParameter) {
    const PropertyList listed = {"Room", "Nope"};
    EXPECT_EQ("4 PropertyList: the class has no property Nope", cimErrorOf([&] {
                  modify({{"Room", CIMValue("hall")}}, &listed);
              }));
    EXPECT_EQ("(null)", value("Room"));
}

TEST_F(Modify, ARequestWithoutAKeyIsAnInvalidParameter) {
    const auto error = [this](const CIMInstance& instance) {
        return cimErrorOf([&] { manager.modifyInstance("root/cimv2", instance, nullptr, Access::write); });
    };
    EXPECT_EQ("4 object path (/root/cimv2:QAV_Lamp) has key (Colour) with NULL value",
              error(request("QAV_Lamp", {{"Room", CIMValue("hall")}})));
    EXPECT_EQ("4 object path (/root/cimv2:QAV_Lamp) has key (Colour) with NULL value",
              error(request("QAV_Lamp", {{"Colour", null()}})));
    CIMInstance keyed = request("QAV_Lamp", {});
    CIMPropertyArray keys;
    keys.push_back(CIMProperty("Colour", CIMValue("red")));
    keyed.setKeys(keys);
    EXPECT_EQ("no error", error(keyed)) << "the keys identify the instance, too";
    keyed.setProperty("Colour", CIMValue("green"));
    keyed.setKeys(keys);
    EXPECT_EQ("7 Colour", error(keyed)) << "but keys and properties must agree";
}

TEST_F(Modify, AnInstanceThatDoesNotExistIsNotFound) {
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"", cimErrorOf([this] {
                  manager.modifyInstance("root/cimv2", request("QAV_Lamp", {{"Colour", CIMValue("blue")}}),
                                         nullptr, Access::write);
              }));
}

TEST_F(Modify, ClassAndNamespaceMustBeServed) {
    const auto error = [this](const char* nameSpace, const char* className) {
        return cimErrorOf(
            [&] { manager.modifyInstance(nameSpace, request(className, {}), nullptr, Access::write); });
    };
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", error("root/cimv2", "QAV_Nope"));
    EXPECT_EQ("3 root", error("root", "QAV_Lamp"));
}

TEST_F(Modify, AClientThatMayOnlyReadIsDeniedWhateverTheRequest) {
    for (const char* const className : {"QAV_Lamp", "QAV_Nope"})
        EXPECT_EQ("2 only root, the object manager's user and users not marked read-only may write",
                  cimErrorOf([&] {
                      manager.modifyInstance("root/cimv2", request(className, {{"Colour", CIMValue("red")}}),
                                             nullptr, Access::read);
                  }));
}

TEST_F(Modify, AValueThatCannotBeSavedIsNotServedEither) {
    const support::TempDir directory;
    manager = lampManager({"red"}, SiteValues(std::make_unique<StateFile>(directory.file("state"))));
    directory.write("state.new/in the way", "");
    const std::string why = "cannot save values: " + directory.file("state.new") + ": Is a directory";
    EXPECT_EQ("owbcimomd: " + why + "\n", logOf([&] {
                  EXPECT_EQ("1 " + why, errorOf({{"Room", CIMValue("hall")}}));
              }));
    EXPECT_EQ("(null)", value("Room"));
    std::filesystem::remove_all(directory.file("state.new"));
    modify({{"Room", CIMValue("hall")}});
    EXPECT_EQ("hall", value("Room"));
}

TEST_F(Modify, ValuesOutliveTheObjectManager) {
    const support::TempDir directory;
    const auto start = [&directory] {
        return lampManager({"red"}, SiteValues(std::make_unique<StateFile>(directory.file("state"))));
    };
    manager = start();
    modify({{"Room", CIMValue("hall")}});
    manager = lampManager({});
    manager = start();
    EXPECT_EQ("hall", value("Room"));
}

TEST(ModifyWithoutState, AllWritesAreRejected) {
    ObjectManager manager({lampProvider({"red"})}, std::nullopt);
    CIMInstance lamp("QAV_Lamp");
    lamp.setProperty("Colour", CIMValue("red"));
    lamp.setProperty("Room", CIMValue("hall"));
    EXPECT_EQ("7 the object manager keeps no values (--no-state)",
              cimErrorOf([&] { manager.modifyInstance("root/cimv2", lamp, nullptr, Access::write); }));
    const CIMObjectPath path = CIMObjectPath::parse("QAV_Lamp.Colour=\"red\"");
    EXPECT_FALSE(manager.getProperty("root/cimv2", path, "Room")) << "reads are allowed";
}

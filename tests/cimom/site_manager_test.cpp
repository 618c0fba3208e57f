// Instances of the site together with those of the host.
#include "Collected.hpp"
#include "Failure.hpp"
#include "LampProvider.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

class SiteManagerTest : public ::testing::Test {
protected:
    SiteManagerTest() {
        declare(R"({"QAV_Lamp": [{"Colour": "red", "Watts": 7}, {"Colour": "blue", "Room": "hall"}]})");
    }

    void declare(const std::string& document) {
        m_directory.write("site.json", document);
        manager.setSiteInstances(SiteInstances(m_directory.path(), manager.declarations()));
    }
    std::unique_ptr<InstanceSource> lamps() const {
        return manager.enumerateInstances("root/cimv2", "QAV_Lamp", nullptr);
    }
    /** "colour=watts" of each lamp in turn. */
    static std::string listed(InstanceSource& lamps) {
        std::string all;
        for (const CIMInstance& lamp : collected(lamps))
            all += std::string(all.empty() ? "" : " ") + lamp.getPropertyValue("Colour").toString().c_str() +
                   "=" + lamp.getPropertyValue("Watts").toString().c_str();
        return all;
    }
    CIMInstance lamp(const char* colour) const {
        CIMObjectPath path("QAV_Lamp");
        path.setKeyValue("Colour", CIMValue(colour));
        return manager.getInstance("root/cimv2", path, nullptr);
    }
    void setRoom(const char* colour, const char* room) {
        CIMInstance modified("QAV_Lamp");
        modified.setProperty("Colour", CIMValue(colour));
        modified.setProperty("Room", CIMValue(room));
        manager.modifyInstance("root/cimv2", modified, nullptr, Access::write);
    }

    ObjectManager manager = lampManager({"red", "green"});

private:
    support::TempDir m_directory;
};

} // namespace

TEST_F(SiteManagerTest, InstancesOfTheSiteFollowThoseOfTheHostAndReplaceThem) {
    EXPECT_EQ("green=60 red=7 blue=(null)", listed(*lamps()));
}

TEST_F(SiteManagerTest, NamesAreThoseOfHostAndSite) {
    std::string all;
    for (const CIMObjectPath& path : collected(*manager.enumerateInstanceNames("root/cimv2", "QAV_Lamp")))
        all += path.modelPath().c_str() + std::string(" ");
    EXPECT_EQ("QAV_Lamp.Colour=\"green\" QAV_Lamp.Colour=\"red\" QAV_Lamp.Colour=\"blue\" ", all);
}

TEST_F(SiteManagerTest, EachIsFoundByItsPath) {
    EXPECT_EQ("7", lamp("red").getPropertyValue("Watts").toString());
    EXPECT_EQ("60", lamp("green").getPropertyValue("Watts").toString());
    EXPECT_EQ("hall", lamp("blue").getPropertyValue("Room").toString());
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"white\"", cimErrorOf([this] { lamp("white"); }));
}

TEST_F(SiteManagerTest, WrittenValuesOverrideBoth) {
    setRoom("green", "cellar");
    setRoom("blue", "attic");
    EXPECT_EQ("cellar", lamp("green").getPropertyValue("Room").toString());
    EXPECT_EQ("attic", lamp("blue").getPropertyValue("Room").toString());
    declare(R"({"QAV_Lamp": [{"Colour": "blue", "Room": "shed"}]})");
    EXPECT_EQ("attic", lamp("blue").getPropertyValue("Room").toString()) << "whatever the file holds";
}

TEST_F(SiteManagerTest, NewInstancesReplaceTheOldOnes) {
    declare(R"({"QAV_Lamp": [{"Colour": "white"}]})");
    EXPECT_EQ("red=60 green=60 white=(null)", listed(*lamps()));
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"", cimErrorOf([this] { lamp("blue"); }));
}

TEST_F(SiteManagerTest, AnEnumerationUnderWayKeepsTheOldInstances) {
    const std::unique_ptr<InstanceSource> source = lamps();
    EXPECT_EQ("green", source->next().getPropertyValue("Colour").toString());
    declare("{}");
    EXPECT_EQ("red=7 blue=(null)", listed(*source));
}

TEST_F(SiteManagerTest, OtherClassesDoNotChange) {
    EXPECT_EQ(1u, collected(*manager.enumerateInstances("root/cimv2", "QAV_Socket", nullptr)).size());
}

// `-o line` and `-o csv`: one value or one record on each line.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

using namespace support::wire;

support::Step twoChassis() {
    return instances({instance("QAV_K70Chassis",
                               {stringProperty("Model", "a,\"b\"\nc"), stringProperty("SerialNumber", ""),
                                arrayProperty("OtherIdentifyingInfo", STRING, {text("one"), text("two")})}),
                      instance("QAV_K70Chassis", {stringProperty("Model", "M\xff")})});
}

TEST(Line, EachValueIsOneLineWithItsFullAddress) {
    const support::ProgramResult result = get({twoChassis()}, {"0", "-o", "line"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "0 QAV_K70Chassis[0].Model = a,\"b\"\\nc\n"
                          "0 QAV_K70Chassis[0].SerialNumber = \n"
                          "0 QAV_K70Chassis[0].OtherIdentifyingInfo[0] = one\n"
                          "0 QAV_K70Chassis[0].OtherIdentifyingInfo[1] = two\n"
                          "0 QAV_K70Chassis[1].Model = M\\xff\n");
}

TEST(Csv, ARowIsOneRecordOfAllPropertiesOfTheGroup) {
    const support::ProgramResult result = get({twoChassis()}, {"0", "-o", "csv"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const std::string header = result.out.substr(0, result.out.find('\n'));
    EXPECT_EQ(header.rfind("group,class,row,Model,VendorEquipmentType,", 0), 0u) << header;
    EXPECT_NE(result.out.find("\n0,QAV_K70Chassis,0,\"a,\"\"b\"\"\nc\","), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(",\"\","), std::string::npos) << "an empty text is not a missing one";
    EXPECT_NE(result.out.find(",\"one\ntwo\","), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\n0,QAV_K70Chassis,1,M\xef\xbf\xbd,,"), std::string::npos) << result.out;
}

TEST(Csv, SeveralGroupsFormOneTable) {
    const support::Step one = instanceOf(
        {property("InDatagrams", UINT32, bigEndian(5, 4)), stringProperty("LastChangeTime", "now")});
    EXPECT_EQ(get({one}, {"14", "1", "-o", "csv"}).out,
              "group,class,row,InDatagrams,NoPorts,InErrors,OutDatagrams,LastChangeTime\n"
              "14,QAV_UDPStatisticalData,0,5,,,,\n"
              "1,QAV_System,0,,,,,now\n");
}

TEST(Csv, AFailedGroupHasColumnsButNoRecords) {
    const support::ProgramResult result = owbctl({"--url", deadUrl(), "get", "25", "-o", "csv"});
    EXPECT_EQ(result.exitCode, 15);
    EXPECT_EQ(result.out, "group,class,row,_HR_NETWORK_INDEX,_HR_DEVICE_INDEX\n");
}

TEST(Line, AWriteShowsTheNewAndThePreviousValue) {
    const support::Step before = instanceOf({stringProperty("PrimaryOwnerContact", "you")});
    const support::Step after = instanceOf(
        {stringProperty("PrimaryOwnerContact", "me"), stringProperty("InstalledLocation", "here")});
    const std::vector<std::string> write{"set", "2", "0", "3=me", "5=here", "-o"};
    auto line = write;
    line.emplace_back("line");
    EXPECT_EQ(owbctlAt(writeOf(before, after), line).out,
              "2 QAV_System[0].PrimaryOwnerContact = me (was you)\n"
              "2 QAV_System[0].InstalledLocation = here (was -)\n");
    auto csv = write;
    csv.emplace_back("csv");
    EXPECT_EQ(owbctlAt(writeOf(before, after), csv).out, "group,class,row,property,asked,before,after\n"
                                                         "2,QAV_System,0,PrimaryOwnerContact,yes,you,me\n"
                                                         "2,QAV_System,0,InstalledLocation,yes,,here\n");
}

TEST(Line, ATimeIsShownAsANumber) {
    EXPECT_EQ(owbctl({"time", "interval", "00000000000102.000000:000", "-o", "line"}).out, "62\n");
    EXPECT_EQ(owbctl({"time", "interval", "00000000000102.000000:000", "-o", "csv"}).out,
              "text,unit,value\n00000000000102.000000:000,s,62\n");
}

TEST(Line, AProcessHasOneLineForEachProperty) {
    const std::string line = owbctl({"processes", "-o", "line"}).out;
    EXPECT_NE(line.find(".Name = owbctl\n"), std::string::npos) << line;
    EXPECT_NE(line.find(".Parameters[1] = -o\n"), std::string::npos) << line;
    const std::string csv = owbctl({"processes", "-o", "csv"}).out;
    EXPECT_EQ(
        csv.rfind("Handle,Name,ModulePath,Parameters,RunType,ExecutionState,TotalCPUTime,RealText,RealData,"
                  "RealStack\n",
                  0),
        0u);
    EXPECT_NE(csv.find(",\"processes\n-o\ncsv\","), std::string::npos) << csv;
}

} // namespace
} // namespace owbctl_test

// An independent client on the network.
#include "StartedDaemon.hpp"

using support::contains;
using support::ProgramResult;
using support::runProgram;

namespace {

class Wbemcli : public StartedDaemon {
protected:
    Wbemcli() {
        const std::string users =
            directory().writeSecret("users", "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5Rj/"
                                             "j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n"); // "secret"
        directory().write("site/chassis.json",
                          R"({"QAV_K70Chassis": [{"Tag": "shelf 2", "CreationClassName": "QAV_K70Chassis",
                           "Model": "K70", "Version": "<&>", "CanBeFRUed": true, "PhysicalType": 23}],
                           "QAV_UnixProcess": [{"CreationClassName": "QAV_UnixProcess", "Handle": "none",
                           "Parameters": ["one", "", "three, four"]}],
                           "QAV_XRUPackageDependency": [{
                           "Antecedent": "QAV_K70Chassis.Tag=\"shelf 2\",CreationClassName=\"QAV_K70Chassis\"",
                           "Dependent": "QAV_XRULogicalModule.CreationClassName=\"QAV_XRULogicalModule\",DeviceID=\"m\""}]})");
        start({"--listen", "0", "--users", users, "--instances", directory().file("site")});
    }

    /** The output of a command, or its error output if it fails. */
    std::string run(std::vector<std::string> command, const std::string& path,
                    const std::string& argument = "", const std::string& login = "") const {
        command.insert(command.begin(), WBEMCLI);
        command.push_back("http://" + login + host() + "/root/cimv2:" + path);
        if (!argument.empty())
            command.push_back(argument);
        const ProgramResult result = runProgram(command);
        return result.exitCode == 0 && result.err.empty() ? result.out : result.err;
    }
    std::string host() const { return "127.0.0.1:" + std::to_string(port()); }
};

const std::string shelf = R"(QAV_K70Chassis.Tag="shelf 2",CreationClassName="QAV_K70Chassis")";
const std::string process = R"(QAV_UnixProcess.CreationClassName="QAV_UnixProcess",Handle="none")";

} // namespace

TEST_F(Wbemcli, ListsTheClasses) {
    const std::string classes = run({"ecn"}, "");
    EXPECT_TRUE(contains(classes, host() + "/root/cimv2:QAV_System\n")) << classes;
    EXPECT_TRUE(contains(classes, host() + "/root/cimv2:HR_NETWORK\n")) << classes;
}

TEST_F(Wbemcli, ReadsAClass) {
    const std::string found = run({"gc"}, "QAV_K70Chassis");
    EXPECT_TRUE(contains(found, "QAV_K70Chassis Tag=")) << found;
    EXPECT_TRUE(contains(found, ",UserTracking=")) << found;
    EXPECT_TRUE(contains(run({"-t", "gc"}, "QAV_UnixProcess"), "Parameters[]="));
    EXPECT_TRUE(contains(run({"gc"}, "QAV_Nope"), "Cim: (6) CIM_ERR_NOT_FOUND"));
}

TEST_F(Wbemcli, ListsTheInstancesOfAClass) {
    const std::string names = run({"ein"}, "QAV_K70Chassis");
    EXPECT_TRUE(contains(names, host() + "/root/cimv2:" + shelf)) << names;
}

TEST_F(Wbemcli, ListsTheInstancesOfAnAssociation) {
    const std::string names = run({"ein"}, "QAV_XRUPackageDependency");
    EXPECT_TRUE(contains(names, "Antecedent=")) << names;
    EXPECT_TRUE(contains(names, "QAV_XRULogicalModule.CreationClassName=")) << names;
}

TEST_F(Wbemcli, ReadsTheInstancesOfAClass) {
    const std::string found = run({"-nl", "ei"}, "QAV_K70Chassis");
    EXPECT_TRUE(contains(found, "-Model=\"K70\"\n")) << found;
    EXPECT_TRUE(contains(found, "-Version=\"<&>\"\n")) << found;
    EXPECT_TRUE(contains(found, "-CanBeFRUed=true\n")) << found;
    EXPECT_TRUE(contains(found, "-PhysicalType=23\n")) << found;
    EXPECT_TRUE(contains(found, "-Location=\n")) << found;
}

TEST_F(Wbemcli, ReadsAnInstance) {
    EXPECT_TRUE(contains(run({"-nl", "gi"}, shelf), "-Model=\"K70\"\n")) << run({"-nl", "gi"}, shelf);
    EXPECT_TRUE(contains(run({"-nl", "gi"}, process), "-Parameters=\"one\",\"\",\"three, four\"\n"))
        << run({"-nl", "gi"}, process);
    EXPECT_TRUE(contains(run({"gi"}, "QAV_UnixProcess.CreationClassName=\"QAV_UnixProcess\",Handle=\"no\""),
                         "Cim: (6) CIM_ERR_NOT_FOUND"));
}

TEST_F(Wbemcli, ReadsAProperty) {
    EXPECT_EQ("K70\n", run({"gp"}, shelf, "Model"));
    EXPECT_TRUE(contains(run({"gp"}, shelf, "Volts"), "Cim: (12) CIM_ERR_NO_SUCH_PROPERTY"));
}

TEST_F(Wbemcli, WritesAPropertyOfTheSiteAfterALogin) {
    EXPECT_EQ("", run({"mi"}, shelf, "UserTracking=inventory 7", "agent:secret@"));
    EXPECT_EQ("inventory 7\n", run({"gp"}, shelf, "UserTracking"));
}

TEST_F(Wbemcli, CannotWriteWithoutALogin) {
    EXPECT_TRUE(contains(run({"mi"}, shelf, "UserTracking=x"), "Username/password required."));
    EXPECT_TRUE(contains(run({"mi"}, shelf, "UserTracking=x", "agent:secre@"), "Invalid username/password."));
    EXPECT_EQ("", run({"gp"}, shelf, "UserTracking"));
    const std::string readOnly = run({"mi"}, shelf, "Model=K71", "agent:secret@");
    EXPECT_TRUE(contains(readOnly, "Cim: (7) CIM_ERR_NOT_SUPPORTED")) << readOnly;
    EXPECT_EQ("K70\n", run({"gp"}, shelf, "Model"));
}

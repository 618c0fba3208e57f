#include "HostTree.hpp"
#include "objects/ObjectManager.hpp"
#include "providers/Providers.hpp"
#include "system/Text.hpp"

#include <cstdio>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

const char* const status = "/var/lib/dpkg/status";

/** A stanza of an installed package, with further lines. */
std::string stanza(const std::string& name, const std::string& version, const std::string& more = "") {
    return "Package: " + name + "\nStatus: install ok installed\nArchitecture: amd64\n" + more +
           "Version: " + version + "\nDescription: text\n Package: quoted\n\n";
}

/** A value of each package, separated by blanks. */
std::string each(const Provider& provider, const char* property = "Name") {
    std::string result;
    for (const CIMInstance& instance : allInstances(provider))
        result += (result.empty() ? "" : " ") + text(instance, property);
    return result;
}

/** The names of the packages in a status file. */
std::string namesIn(const std::string& content) {
    HostTree tree;
    tree.write(status, content);
    return each(providerOf("QAV_SoftwareIdentity", tree.host()));
}

std::string classificationOf(const std::string& section) {
    HostTree tree;
    tree.write(status, stanza("a", "1", "Section: " + section + "\n"));
    return each(providerOf("QAV_SoftwareIdentity", tree.host()), "Classifications");
}

/** Installs a script as rpm(8), and a database. */
void writeRpm(const HostTree& tree, const std::string& script) {
    tree.write("/var/lib/rpm/Packages", "db");
    tree.write("/usr/bin/rpm", "#!/bin/sh\n" + script);
    ASSERT_EQ(0, ::chmod(tree.realPath("/usr/bin/rpm").c_str(), 0755));
}

/** The names of the packages if rpm prints a text and exits with a status. */
std::string namesPrinted(const std::string& lines, int exitStatus = 0) {
    HostTree tree;
    writeRpm(tree, "printf '" + lines + "'\nexit " + std::to_string(exitStatus) + "\n");
    return each(providerOf("QAV_SoftwareIdentity", tree.host()));
}

} // namespace

TEST(SoftwareIdentity, APackageHasNameVersionAndDate) {
    const TimeZone zone("TST-05:30");
    HostTree tree;
    tree.write(status, stanza("hello-doc", "1:2.10-3", "Section: doc\n"));
    tree.write("/var/lib/dpkg/info/hello-doc.list", "");
    tree.setModificationTime("/var/lib/dpkg/info/hello-doc.list", 1700000000, 123456789);
    const CIMInstance package = onlyInstance(providerOf("QAV_SoftwareIdentity", tree.host()));
    EXPECT_EQ("QAV_SoftwareIdentity", package.getClassName());
    EXPECT_EQ("InstanceID", names(package.getKeyValuePairs()));
    EXPECT_EQ("InstanceID Name Classifications InstalledDate", names(package.getProperties()));
    EXPECT_EQ("dpkg:hello-doc:amd64", text(package, "InstanceID"));
    EXPECT_EQ("hello-doc-1:2.10-3", text(package, "Name"));
    EXPECT_EQ("(null)", text(package, "Classifications"));
    EXPECT_EQ("20231115034320.123456+330", text(package, "InstalledDate"));
}

TEST(SoftwareIdentity, PackagesAreSortedByName) {
    EXPECT_EQ("a-1 a+-1 a-b-1 b-1",
              namesIn(stanza("b", "1") + stanza("a-b", "1") + stanza("a+", "1") + stanza("a", "1")));
}

TEST(SoftwareIdentity, OnlyInstalledPackagesAreServed) {
    HostTree tree;
    std::string content;
    for (const char* const state :
         {"install ok installed", "deinstall ok config-files", "install ok half-configured",
          "install ok not-installed", "hold ok installed", "installed", "install ok installed maybe", ""})
        content += "Package: p" + std::to_string(content.size()) + "\nStatus: " + state +
                   "\nArchitecture: all\nVersion: 1\n\n";
    tree.write(status, content);
    const std::string found = each(providerOf("QAV_SoftwareIdentity", tree.host()));
    EXPECT_EQ(2u, words(found).size()) << found;
    EXPECT_EQ("p0-1", words(found)[0]);
}

TEST(SoftwareIdentity, EachArchitectureOfAPackageHasItsDate) {
    const TimeZone zone("UTC0");
    HostTree tree;
    tree.write(status, "Package: lib\nStatus: install ok installed\nArchitecture: i386\nMulti-Arch: same\n"
                       "Version: 1\n\n" +
                           stanza("lib", "1", "Multi-Arch: same\n") +
                           stanza("tool", "1", "Multi-Arch: foreign\n"));
    for (const char* const list : {"lib:amd64", "lib:i386", "lib", "tool", "tool:amd64"})
        tree.write(std::string("/var/lib/dpkg/info/") + list + ".list", "");
    tree.setModificationTime("/var/lib/dpkg/info/lib:amd64.list", 1, 0);
    tree.setModificationTime("/var/lib/dpkg/info/lib:i386.list", 2, 0);
    tree.setModificationTime("/var/lib/dpkg/info/tool.list", 3, 0);
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("dpkg:lib:amd64 dpkg:lib:i386 dpkg:tool:amd64", each(provider, "InstanceID"));
    EXPECT_EQ("19700101000001.000000+000 19700101000002.000000+000 19700101000003.000000+000",
              each(provider, "InstalledDate"));
}

TEST(SoftwareIdentity, APackageWithoutAListHasNoDate) {
    HostTree tree;
    tree.write(status, stanza("a", "1"));
    EXPECT_EQ("(null)", each(providerOf("QAV_SoftwareIdentity", tree.host()), "InstalledDate"));
}

TEST(SoftwareIdentity, ASectionOfOneKindDeterminesTheClassification) {
    EXPECT_EQ("4", classificationOf("games"));
    EXPECT_EQ("4", classificationOf("contrib/video"));
    EXPECT_EQ("8", classificationOf("kernel"));
    EXPECT_EQ("8", classificationOf("non-free/kernel"));
    EXPECT_EQ("10", classificationOf("non-free-firmware/kernel"));
    for (const char* const other : {"admin", "libs", "game", "", "games/", "x/y/games"})
        EXPECT_EQ("(null)", classificationOf(other)) << other;
}

TEST(SoftwareIdentity, ADuplicatePackageIsServedOnce) {
    HostTree tree;
    tree.write(status, stanza("a", "1") + stanza("b", "1") + stanza("a", "1"));
    EXPECT_EQ("dpkg:a:amd64 dpkg:b:amd64",
              each(providerOf("QAV_SoftwareIdentity", tree.host()), "InstanceID"));
}

TEST(SoftwareIdentity, MalformedStanzasAreSkipped) {
    EXPECT_EQ("a-1 b-2",
              namesIn("\n\n" + stanza("", "1") + stanza("a", "1") + stanza("c", "") + stanza("../../x", "1") +
                      stanza("d:e", "1") + "Package: f\nStatus: install ok installed\nVersion: 1\n\n" +
                      "rubbish without a colon\n: nothing\n\n \n" + stanza("b", "2")));
    EXPECT_EQ("", namesIn(""));
    EXPECT_EQ("", namesIn("\n\n\n"));
}

TEST(SoftwareIdentity, ATruncatedStatusFileHasItsCompleteStanzas) {
    const std::string whole = stanza("a", "1.23") + stanza("b", "45");
    HostTree tree;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        tree.write(status, whole.substr(0, size));
        const std::string found = each(providerOf("QAV_SoftwareIdentity", tree.host()));
        EXPECT_TRUE(found.empty() || found == "a-1.23" || found == "a-1.23 b-45") << size << found;
    }
    EXPECT_EQ("a-1.23 b-45", namesIn(whole));
    EXPECT_EQ("a-1", namesIn("Package: a\nStatus: install ok installed\nArchitecture: x\nVersion: 1\n"));
}

TEST(SoftwareIdentity, AnUnchangedStatusFileIsNotReadAgain) {
    HostTree tree;
    tree.write(status, stanza("a", "1"));
    tree.setModificationTime(status, 1700000000, 5);
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("a-1", each(provider));
    tree.write(status, stanza("b", "1"));
    tree.setModificationTime(status, 1700000000, 5);
    EXPECT_EQ("a-1", each(provider));
}

TEST(SoftwareIdentity, AStatusFileThatDiffersInTimeSizeOrInodeIsReadAgain) {
    HostTree tree;
    tree.write(status, stanza("a", "1"));
    tree.setModificationTime(status, 1700000000, 5);
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("a-1", each(provider));
    tree.write(status, stanza("b", "1"));
    tree.setModificationTime(status, 1700000000, 6);
    EXPECT_EQ("b-1", each(provider));
    tree.write(status, stanza("c", "1"));
    tree.setModificationTime(status, 1700000001, 6);
    EXPECT_EQ("c-1", each(provider));
    tree.write(status, stanza("dd", "1"));
    tree.setModificationTime(status, 1700000001, 6);
    EXPECT_EQ("dd-1", each(provider));
    tree.write("/new", stanza("ee", "1"));
    tree.setModificationTime("/new", 1700000001, 6);
    ASSERT_EQ(0, std::rename(tree.realPath("/new").c_str(), tree.realPath(status).c_str()));
    EXPECT_EQ("ee-1", each(provider));
    ASSERT_EQ(0, std::remove(tree.realPath(status).c_str()));
    EXPECT_EQ("", each(provider));
}

TEST(SoftwareIdentity, AnEnumerationKeepsThePackagesAtItsBeginning) {
    HostTree tree;
    tree.write(status, stanza("a", "1") + stanza("b", "1"));
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    const std::unique_ptr<InstanceSource> source = provider.instances();
    EXPECT_EQ("a-1", text(source->next(), "Name"));
    tree.write(status, stanza("c", "1"));
    EXPECT_EQ("c-1", each(provider));
    EXPECT_EQ("b-1", text(source->next(), "Name"));
    EXPECT_FALSE(source->next());
    EXPECT_FALSE(source->next());
}

TEST(SoftwareIdentity, APackageIsFoundByItsKey) {
    HostTree tree;
    tree.write(status, stanza("a", "1") + stanza("b", "2"));
    const ObjectManager manager(makeProviders(tree.host(), loop()));
    const CIMObjectPath path =
        CIMObjectPath::parse("root/cimv2:QAV_SoftwareIdentity.InstanceID=\"dpkg:b:amd64\"");
    EXPECT_EQ("b-2", text(manager.getInstance("root/cimv2", path, nullptr), "Name"));
}

TEST(SoftwareIdentity, WithoutDpkgPackagesComeFromRpm) {
    const TimeZone zone("UTC0");
    HostTree tree;
    writeRpm(tree, R"(printf 'tool\t2-3.fc40\tx86_64\t1700000000\tApplications/System\n'
printf 'kernel\t6.1-1\tx86_64\t1700000001\tSystem Environment/Kernel\n'
printf 'kernel\t6.0-1\tx86_64\t(none)\tUnspecified\n'
)");
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("rpm:kernel-6.0-1.x86_64 rpm:kernel-6.1-1.x86_64 rpm:tool-2-3.fc40.x86_64",
              each(provider, "InstanceID"));
    EXPECT_EQ("kernel-6.0-1 kernel-6.1-1 tool-2-3.fc40", each(provider));
    EXPECT_EQ("(null) 8 4", each(provider, "Classifications"));
    EXPECT_EQ("(null) 20231114221321.000000+000 20231114221320.000000+000", each(provider, "InstalledDate"));
}

TEST(SoftwareIdentity, RpmIsAskedForTheDatabaseOfTheHost) {
    HostTree tree;
    writeRpm(tree, R"([ "$1 $2 $3 $4" = "--dbpath ${0%/usr/bin/rpm}/var/lib/rpm -qa --qf" ] || exit 1
printf '%s' "$5" | sed 's/%{NAME}/n/; s/%{VERSION}/v/; s/%{RELEASE}/r/; s/%{ARCH}/a/; s/%{INSTALLTIME}/1/
s/%{GROUP}/Amusements/; s/\\t/\t/g; s/\\n//'
)");
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("rpm:n-v-r.a", each(provider, "InstanceID"));
    EXPECT_EQ("4", each(provider, "Classifications"));
}

TEST(SoftwareIdentity, RpmIsFoundInADirectoryWithShellCharactersInItsName) {
    HostTree tree;
    const std::string root = "/it's $HOME; exit";
    tree.write(root + "/usr/lib/sysimage/rpm/rpmdb.sqlite", "");
    tree.write(root + "/usr/bin/rpm", "#!/bin/sh\n[ -d \"$2\" ] && printf 'a\\t1-1\\tx\\t1\\t\\n'\n");
    ASSERT_EQ(0, ::chmod(tree.realPath(root + "/usr/bin/rpm").c_str(), 0755));
    const Host host(tree.realPath(root));
    EXPECT_EQ("a-1-1", each(providerOf("QAV_SoftwareIdentity", host)));
}

TEST(SoftwareIdentity, IncompleteEntriesOfRpmAreSkipped) {
    EXPECT_EQ("a-1-1", namesPrinted("a\\t1-1\\tx\\t1\\t\\n"
                                    "gpg-pubkey\\t1-1\\t(none)\\t1\\tPublic Keys\\n"
                                    "\\t1-1\\tx\\t1\\t\\nb\\t\\tx\\t1\\t\\nc\\t1-1\\t\\t1\\t\\n"
                                    "d\\t1-1\\tx\\t1\\ne\\t1-1\\tx\\t1\\t\\t\\n\\nrubbish"));
    EXPECT_EQ("", namesPrinted("a\\t1-1\\tx\\t1\\t\\n", 1));
    EXPECT_EQ("", namesPrinted(""));
}

TEST(SoftwareIdentity, RpmRunsAgainOnlyAfterItsDatabaseHasChanged) {
    HostTree tree;
    writeRpm(tree, "echo >>\"${0%/usr/bin/rpm}/runs\"\nprintf 'a\\t1-1\\tx\\t1\\t\\n'\n");
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("a-1-1", each(provider));
    EXPECT_EQ("a-1-1", each(provider));
    EXPECT_EQ("\n", tree.host().readFile("/runs"));
    tree.write("/usr/lib/sysimage/rpm/rpmdb.sqlite-wal", "changes");
    EXPECT_EQ("a-1-1", each(provider));
    EXPECT_EQ("\n\n", tree.host().readFile("/runs"));
}

TEST(SoftwareIdentity, AFailureOfRpmIsCached) {
    HostTree tree;
    writeRpm(tree, "cat \"${0%/usr/bin/rpm}/packages\"\n");
    const Provider provider = providerOf("QAV_SoftwareIdentity", tree.host());
    EXPECT_EQ("", each(provider));
    tree.write("/packages", "a\t1-1\tx\t1\t\n");
    EXPECT_EQ("", each(provider)) << "the failure is cached";
    tree.write("/usr/lib/sysimage/rpm/rpmdb.sqlite-wal", "changes");
    EXPECT_EQ("a-1-1", each(provider));
}

TEST(SoftwareIdentity, WithoutADatabaseRpmIsNotRun) {
    HostTree tree;
    writeRpm(tree, "printf 'a\\t1-1\\tx\\t1\\t\\n'\n");
    ASSERT_EQ(0, std::remove(tree.realPath("/var/lib/rpm/Packages").c_str()));
    EXPECT_EQ("", each(providerOf("QAV_SoftwareIdentity", tree.host())));
}

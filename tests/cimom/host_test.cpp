#include "HostTree.hpp"
#include "system/Text.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

using namespace cimom;

namespace {

/** Prevents this process from opening descriptors for a scope. */
class NoDescriptors {
public:
    NoDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit none = {0, m_before.rlim_max};
        EXPECT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &none));
    }
    ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

private:
    rlimit m_before{};
};

/** The error of a function that runs without free descriptors; nothing if it succeeds. */
template <class Function>
std::error_code errorWithoutDescriptors(const Function& function) {
    try {
        const NoDescriptors none;
        function();
        return {};
    } catch (const std::system_error& e) {
        return e.code();
    }
}

} // namespace

TEST(Host, AFileBelowTheRootIsReadWhole) {
    HostTree tree;
    const std::string content = std::string(40000, 'x') + '\0' + "end\n";
    tree.write("/proc/net/snmp", content);
    EXPECT_EQ(content, tree.host().readFile("/proc/net/snmp"));
}

TEST(Host, AFileThatCannotBeReadIsAbsent) {
    HostTree tree;
    tree.write("/etc/hostname", "box\n");
    EXPECT_FALSE(tree.host().readFile("/etc/nothing"));
    EXPECT_FALSE(tree.host().readFile("/etc"));
    EXPECT_FALSE(tree.host().listDirectory("/etc/hostname"));
    EXPECT_FALSE(tree.host().modificationTime("/etc/nothing"));
}

TEST(Host, WithoutDescriptorsReadsThrow) {
    HostTree tree;
    tree.write("/etc/hostname", "box\n");
    const Host& host = tree.host();
    EXPECT_EQ(std::errc::too_many_files_open,
              errorWithoutDescriptors([&] { host.readFile("/etc/hostname"); }));
    EXPECT_EQ(std::errc::too_many_files_open, errorWithoutDescriptors([&] { host.listDirectory("/etc"); }));
    EXPECT_EQ("box\n", host.readFile("/etc/hostname"));
}

TEST(Host, APipeInPlaceOfAFileDoesNotBlock) {
    HostTree tree;
    ASSERT_EQ(0, ::mkfifo(tree.realPath("/pipe").c_str(), 0600));
    EXPECT_EQ("", tree.host().readFile("/pipe"));
}

TEST(Host, ASlashAtTheEndOfTheRootMakesNoDifference) {
    HostTree tree;
    tree.write("/etc/hostname", "box\n");
    EXPECT_EQ("box\n", Host(tree.realPath("//")).readFile("/etc/hostname"));
}

TEST(Host, ALineIsReadWithoutTheBlanksAroundIt) {
    HostTree tree;
    tree.write("/line", " two words \n");
    tree.write("/empty", "\n");
    EXPECT_EQ("two words", tree.host().readLine("/line"));
    EXPECT_FALSE(tree.host().readLine("/empty"));
}

TEST(Host, ANumberThatDoesNotFitInTheTypeIsAbsent) {
    HostTree tree;
    tree.write("/largest", "4294967295\n");
    tree.write("/larger", "4294967296\n");
    tree.write("/word", "12 pm\n");
    EXPECT_EQ(4294967295u, tree.host().readNumber<unsigned>("/largest"));
    EXPECT_FALSE(tree.host().readNumber<unsigned>("/larger"));
    EXPECT_FALSE(tree.host().readNumber<unsigned>("/word"));
}

TEST(Host, ADirectoryListsAllButItselfAndItsParent) {
    HostTree tree;
    tree.write("/proc/1/stat", "");
    tree.write("/proc/stat", "");
    std::vector<std::string> names = tree.host().listDirectory("/proc").value();
    std::sort(names.begin(), names.end());
    EXPECT_EQ((std::vector<std::string>{"1", "stat"}), names);
}

TEST(Host, ALinkIsReadEvenIfItsTargetDoesNotExist) {
    HostTree tree;
    tree.write("/file", "");
    ASSERT_EQ(0, ::symlink("../../sda1", tree.realPath("/link").c_str()));
    EXPECT_EQ("../../sda1", tree.host().readLink("/link"));
    EXPECT_FALSE(tree.host().readLink("/file"));
    EXPECT_FALSE(tree.host().readLink("/nothing"));
}

TEST(Host, SizesAreThoseOfTheFileSystemThatHoldsTheFile) {
    HostTree tree;
    tree.write("/directory/file", "");
    struct statvfs expected;
    ASSERT_EQ(0, ::statvfs(tree.realPath("/directory").c_str(), &expected));
    const std::optional<struct statvfs> found = tree.host().fileSystemStatus("/directory");
    ASSERT_TRUE(found);
    EXPECT_EQ(expected.f_fsid, found->f_fsid);
    EXPECT_EQ(expected.f_blocks, found->f_blocks);
    EXPECT_FALSE(tree.host().fileSystemStatus("/nothing"));
}

TEST(Text, LinesAndWordsAreSplitWhateverSeparatesThem) {
    EXPECT_EQ((std::vector<std::string_view>{"a b", "c"}), lines("\na b\n\nc"));
    EXPECT_EQ((std::vector<std::string_view>{"a", "b", "c"}), words("  a\tb   c \r"));
    EXPECT_TRUE(lines("").empty());
    EXPECT_TRUE(words(" \t").empty());
}

TEST(Text, ATextWithMoreThanANumberIsNotANumber) {
    EXPECT_EQ(-1, number<int>("-1"));
    EXPECT_EQ(0x1F90u, number<unsigned>("1F90", 16));
    for (const char* const text : {"", " 1", "1 ", "+1", "0x1", "one"})
        EXPECT_FALSE(number<int>(text)) << text;
    EXPECT_FALSE(number<unsigned>("-1"));
}

#include "Failure.hpp"
#include "support/TempDir.hpp"
#include "users/PasswordHash.hpp"
#include "users/UsersFile.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace cimom;
using support::readFile;
using support::TempDir;

namespace {

const std::string unusual = "gr\xc3\xbc\xc3\x9f"
                            "e, \xe4\xb8\x96\xe7\x95\x8c \xf0\x9f\x92\xa1";
const std::string longest(maximumPassword, 'x');

// Hashes of "secret" that take little time to check.
const std::string secretHash = "$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                               "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";
const std::string secretYescrypt =
    "$y$j75$3sTpz0WvVFq1Na7JQr8bE.$hP8wKHlBk1ox7pbFzGadS2/L.0aeLVKwGKeyoGXK6C5";

/** "<line>: <why>" of a text that is rejected. */
std::string textError(const std::string& text) {
    try {
        Users{text};
        return "not rejected";
    } catch (const Users::Error& e) {
        return std::to_string(e.line()) + ": " + e.what();
    }
}

class UsersFileTest : public ::testing::Test {
protected:
    std::string path() const { return m_directory.file("users"); }
    void write(const std::string& content, mode_t mode = 0600) const {
        m_directory.write("users", content);
        ASSERT_EQ(0, ::chmod(path().c_str(), mode));
    }
    mode_t mode() const {
        struct stat status;
        return ::stat(path().c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
    const TempDir& directory() const { return m_directory; }

private:
    TempDir m_directory;
};

} // namespace

// The hashes were made by another build of libcrypt, for amd64.
TEST(PasswordHash, HashesOfOtherProgramsAreAccepted) {
    const std::string yescrypt = "$y$j9T$F5Jx5fExrKuPp53xLKQ..1$";
    EXPECT_TRUE(isPasswordOf(yescrypt + "GmcwIgvdUC9qLWcKCi6gklUa1dM3ziD43YxYNURLKy0", "secret"));
    EXPECT_TRUE(isPasswordOf(yescrypt + "78ctRWRUCxHlGlkl8NQZWFHhcT.KXiZNpGd34QuuYg.", unusual));
    EXPECT_TRUE(isPasswordOf(yescrypt + "SKWEFc3JzY.BdrViNq3nv07G6mq6swgB6.1OEv5TPj2", longest));
    EXPECT_TRUE(isPasswordOf(yescrypt + "5P1uc1zvKhieqEtKttbwCQrTPXpY1cK9wEnTDKAqLD8", ""));
    EXPECT_TRUE(isPasswordOf(secretYescrypt, "secret"));
    const std::string sha512 = "$6$saltstring$";
    EXPECT_TRUE(isPasswordOf(
        sha512 + "AIsRs/Ee56G/tC8MEHhvReZTfx8u3rXXMl6eYrjCG9ibix19DxoMBLogdTET5Ukw9Sf7eZTITsuk0Ry5qulYz.",
        "secret"));
    EXPECT_TRUE(isPasswordOf(
        sha512 + "OVuV7Db1Nd.7JMa/TEexjQiFW0RX4imr4UWZ7qAxjRs5B5d.vdfsw6k2rABSTICpAXQKzii6ipCWkTsG4zXiA/",
        unusual));
    EXPECT_TRUE(isPasswordOf(
        sha512 + "sB5o1/NAESoB6Sqlk/y.q3xgRCfOVIq1NhoQMI9.qi.bR1CmOnPRBoQLKbvRhMdPSll2ff/NXPkwIW7YkGJeH/",
        longest));
    EXPECT_TRUE(isPasswordOf(secretHash, "secret"));
}

TEST(PasswordHash, AnotherPasswordDoesNotMatch) {
    EXPECT_FALSE(isPasswordOf(secretHash, "Secret"));
    EXPECT_FALSE(isPasswordOf(secretHash, ""));
    EXPECT_FALSE(isPasswordOf(secretHash, std::string("secret\0more", 11)));
    EXPECT_FALSE(isPasswordOf(secretHash, "secret" + longest));
    EXPECT_FALSE(isPasswordOf(secretYescrypt, "Secret"));
    EXPECT_FALSE(isPasswordOf("", "secret"));
    EXPECT_FALSE(isPasswordOf("*0", longest + "x")) << "crypt(3) has no answer to either";
}

TEST(PasswordHash, ANewHashHasItsMethodAndANewSalt) {
    const std::string yescrypt = hashOf("secret", HashMethod::yescrypt);
    EXPECT_EQ(0u, yescrypt.find("$y$j9T$"));
    EXPECT_TRUE(isPasswordOf(yescrypt, "secret"));
    const std::string sha512 = hashOf(longest, HashMethod::sha512);
    EXPECT_EQ(0u, sha512.find("$6$"));
    EXPECT_TRUE(isPasswordOf(sha512, longest));
    EXPECT_EQ("", faultOfHash(yescrypt));
    EXPECT_EQ("", faultOfHash(sha512));
    EXPECT_NE(sha512, hashOf(longest, HashMethod::sha512));
}

TEST(PasswordHash, APasswordThatCannotBeHashedIsAnError) {
    EXPECT_EQ("password: longer than 511 bytes", errorOf([] { hashOf(longest + "x", HashMethod::sha512); }));
    EXPECT_EQ("password: cannot be hashed",
              errorOf([] { hashOf(std::string("a\0b", 3), HashMethod::sha512); }));
}

TEST(PasswordHash, OnlyCompleteHashesOfTheTwoMethodsAreAccepted) {
    EXPECT_EQ("", faultOfHash(secretHash));
    EXPECT_EQ("", faultOfHash(secretYescrypt));
    const std::string method = "is of neither yescrypt ($y$) nor sha512crypt ($6$)";
    for (const char* const other :
         {"", "x", "!", "*", "$1$salt$qJH7.N4xYta3aEG/dfqo/0", "$6", "$gy$", "secret"})
        EXPECT_EQ(method, faultOfHash(other)) << other;
    const std::string malformed = "is malformed";
    for (const std::string& cut : {secretHash, secretYescrypt}) {
        EXPECT_EQ(malformed, faultOfHash(cut.substr(0, cut.size() - 1)));
        EXPECT_EQ(malformed, faultOfHash(cut + "x"));
        EXPECT_EQ(malformed, faultOfHash(cut + ":"));
        EXPECT_EQ(malformed, faultOfHash(cut + " "));
    }
    EXPECT_EQ(malformed, faultOfHash("$6$"));
    EXPECT_EQ(malformed, faultOfHash("$y$"));
    EXPECT_EQ(malformed, faultOfHash("$y$" + std::string(1000000, 'x')));
}

TEST(Users, AUserHasItsPassword) {
    const Users users("# who\n\nbob:" + secretHash + "\nann lee:" + secretYescrypt);
    EXPECT_TRUE(users.matches("bob", "secret"));
    EXPECT_TRUE(users.matches("ann lee", "secret"));
    EXPECT_FALSE(users.matches("bob", "other"));
}

TEST(Users, AnUnknownUserHasNoPassword) {
    const Users users("# who\n\nbob:" + secretHash);
    for (const char* const other : {"", "Bob", "bo", "# who", "bob:"})
        EXPECT_FALSE(users.matches(other, "secret")) << other;
    EXPECT_FALSE(Users().matches("bob", "secret"));
    EXPECT_FALSE(Users("# none").matches("", ""));
}

TEST(Users, AnInvalidTextIsReportedWithItsLine) {
    EXPECT_EQ("2: no colon after the user name", textError("#\nbob"));
    EXPECT_EQ("1: no colon after the user name", textError(" "));
    EXPECT_EQ("1: user name: empty", textError(":" + secretHash));
    EXPECT_EQ("3: duplicate user \"bob\", first on line 1",
              textError("bob:" + secretHash + "\n\nbob:" + secretYescrypt));
    EXPECT_EQ("1: contains a control character", textError("bob:" + secretHash + "\r\n"));
    EXPECT_EQ("1: contains a control character", textError("b\tob:" + secretHash));
    EXPECT_EQ("1: contains a control character", textError("# \x7f"));
    EXPECT_EQ("1: contains a control character", textError(std::string("\0", 1)));
    EXPECT_EQ("1: the hash of user \"bob\" is of neither yescrypt ($y$) nor sha512crypt ($6$)",
              textError("bob:secret"));
    EXPECT_EQ("2: the hash of user \"ann\" is malformed", textError("\nann:$6$salt$"));
}

TEST(Users, AChangeKeepsTheOtherLines) {
    Users users("# who\n\nbob:" + secretHash + "\nann:" + secretHash);
    users.set("bob", secretYescrypt);
    users.set("eve", secretHash);
    EXPECT_EQ("# who\n\nbob:" + secretYescrypt + "\nann:" + secretHash + "\neve:" + secretHash + "\n",
              users.text());
    EXPECT_TRUE(users.remove("bob"));
    EXPECT_FALSE(users.remove("bob"));
    EXPECT_FALSE(users.remove(""));
    EXPECT_EQ("# who\n\nann:" + secretHash + "\neve:" + secretHash + "\n", users.text());
    EXPECT_EQ("", Users().text());
}

TEST(Users, AnInvalidNameIsAnError) {
    const auto nameError = [](const std::string& name) {
        return errorOf([&] { Users().set(name, secretHash); });
    };
    EXPECT_EQ("user name: empty", nameError(""));
    EXPECT_EQ("user name: begins with #", nameError("#bob"));
    EXPECT_EQ("user name: contains a colon", nameError("b:ob"));
    EXPECT_EQ("user name: contains a control character", nameError("bob\n"));
}

TEST_F(UsersFileTest, TheFileHoldsTheUsers) {
    write("bob:" + secretHash + "\n");
    EXPECT_TRUE(readUsers(path()).matches("bob", "secret"));
}

TEST_F(UsersFileTest, AnInvalidFileIsReportedWithItsLine) {
    write("# who\nbob\n");
    EXPECT_EQ(path() + ":2: no colon after the user name", errorOf([&] { readUsers(path()); }));
}

TEST_F(UsersFileTest, AMissingFileIsAnError) {
    EXPECT_EQ(path() + ": No such file or directory", errorOf([&] { readUsers(path()); }));
    ASSERT_EQ(0, ::mkfifo(path().c_str(), 0600));
    EXPECT_EQ(path() + ": not a regular file", errorOf([&] { readUsers(path()); }));
}

TEST_F(UsersFileTest, AFileThatOthersCanWriteOrReadIsAnError) {
    for (const mode_t mode : {0620, 0602, 0666}) {
        write("", mode);
        EXPECT_EQ(path() + ": writable by group or others", errorOf([&] { readUsers(path()); }));
    }
    write("", 0604);
    EXPECT_EQ(path() + ": readable by others", errorOf([&] { readUsers(path()); }));
    for (const mode_t mode : {0600, 0640, 0711, 0400}) {
        write("", mode);
        EXPECT_EQ("no error", errorOf([&] { readUsers(path()); })) << std::oct << mode;
    }
}

TEST_F(UsersFileTest, AChangeCreatesTheFileForItsOwnerOnly) {
    const mode_t before = ::umask(0);
    changeUsers(path(), [](Users& users) { users.set("bob", secretHash); });
    ::umask(before);
    EXPECT_EQ("bob:" + secretHash + "\n", readFile(path()));
    EXPECT_EQ(0600u, mode());
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(directory().path()), {}));
}

TEST_F(UsersFileTest, AChangeKeepsTheMode) {
    write("# who\n", 0440);
    changeUsers(path(), [](Users& users) { users.set("bob", secretHash); });
    EXPECT_EQ("# who\nbob:" + secretHash + "\n", readFile(path()));
    EXPECT_EQ(0440u, mode());
}

TEST_F(UsersFileTest, AChangeKeepsTheOwner) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    write("");
    ASSERT_EQ(0, ::chown(path().c_str(), 12345, 54321));
    changeUsers(path(), [](Users& users) { users.set("bob", secretHash); });
    struct stat status;
    ASSERT_EQ(0, ::stat(path().c_str(), &status));
    EXPECT_EQ(12345u, status.st_uid);
    EXPECT_EQ(54321u, status.st_gid);
}

TEST_F(UsersFileTest, AChangeFollowsASymbolicLink) {
    write("# who\n");
    const std::string link = directory().file("link");
    ASSERT_EQ(0, ::symlink("users", link.c_str()));
    changeUsers(link, [](Users& users) { users.set("bob", secretHash); });
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ("# who\nbob:" + secretHash + "\n", readFile(path()));
}

TEST_F(UsersFileTest, AnInvalidFileIsNotChanged) {
    const auto change = [&] { changeUsers(path(), [](Users& users) { users.set("bob", secretHash); }); };
    write("nonsense");
    EXPECT_EQ(path() + ":1: no colon after the user name", errorOf(change));
    EXPECT_EQ("nonsense", readFile(path()));
    write("# who\n", 0604);
    EXPECT_EQ(path() + ": readable by others", errorOf(change));
    EXPECT_EQ("# who\n", readFile(path()));
}

TEST_F(UsersFileTest, AChangeThatFailsChangesNothing) {
    write("# who\n");
    EXPECT_EQ("no", errorOf([&] {
                  changeUsers(path(), [](Users& users) {
                      users.set("bob", secretHash);
                      throw std::runtime_error("no");
                  });
              }));
    EXPECT_EQ("# who\n", readFile(path()));
}

TEST_F(UsersFileTest, TwoChangesAtATimeExcludeEachOther) {
    write("# who\n");
    changeUsers(path(), [&](Users&) {
        EXPECT_EQ(path() + ": another process is changing it",
                  errorOf([&] { changeUsers(path(), [](Users&) {}); }));
    });
}

TEST(Users, MayBeMarkedAsReadOnly) {
    const std::string text = "bob:" + secretHash + ":read-only\nann:" + secretHash + "\n";
    const Users users(text);
    EXPECT_EQ(Access::read, users.access("bob"));
    EXPECT_EQ(Access::write, users.access("ann"));
    EXPECT_EQ(Access::read, users.access("nobody"));
    EXPECT_TRUE(users.matches("bob", "secret"));
    EXPECT_EQ(text, users.text());
    EXPECT_EQ("1: invalid mark after the hash, not \"read-only\"",
              textError("bob:" + secretHash + ":readonly"));
    EXPECT_EQ("1: invalid mark after the hash, not \"read-only\"", textError("bob:" + secretHash + ":"));
}

TEST(Users, KeepTheirAccessWithANewPassword) {
    Users users("bob:" + secretHash + ":read-only\n");
    users.set("bob", secretYescrypt);
    users.set("ann", secretYescrypt);
    EXPECT_EQ("bob:" + secretYescrypt + ":read-only\nann:" + secretYescrypt + "\n", users.text());
    users.restrict("ann");
    users.restrict("nobody");
    EXPECT_EQ(Access::read, users.access("ann"));
}

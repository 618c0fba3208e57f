// The files of a server with TLS. The owner of a file is what the test says.
#include "http/Tls.hpp"
#include "support/Certificates.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::optional<uid_t> owner; // of each file; nothing: the real one

} // namespace

extern "C" __attribute__((visibility("default"))) int fstat(int descriptor, struct stat* status) noexcept {
    const int result = ::fstatat(descriptor, "", status, AT_EMPTY_PATH);
    if (result == 0 && owner)
        status->st_uid = *owner;
    return result;
}

namespace {

class TlsFilesTest : public testing::Test {
protected:
    TlsFilesTest() { files.certificate = support::certificate("localhost.crt"); }
    ~TlsFilesTest() override { owner.reset(); }

    /** Uses a copy of a key with a file mode. */
    void useKey(const std::string& name, mode_t mode) {
        files.key = m_directory.write("key", support::readFile(support::certificate(name)));
        ::chmod(files.key.c_str(), mode);
    }
    std::string path(const std::string& name) const { return m_directory.file(name); }
    /** Why the files are rejected, without the path of the key; empty if they are not. */
    std::string failure() const {
        try {
            EXPECT_NE(nullptr, http::readTlsFiles(files));
            return std::string();
        } catch (const std::runtime_error& e) {
            const std::string text = e.what();
            return text.compare(0, files.key.size() + 2, files.key + ": ") == 0
                       ? text.substr(files.key.size() + 2)
                       : text;
        }
    }

    http::TlsFiles files;

private:
    support::TempDir m_directory;
};

} // namespace

TEST_F(TlsFilesTest, AKeyMayBelongToRootOrToThisUser) {
    useKey("localhost.key", 0600);
    EXPECT_EQ("", failure());
    owner = 0;
    EXPECT_EQ("", failure());
}

TEST_F(TlsFilesTest, AKeyOfAnotherUserIsRejected) {
    useKey("localhost.key", 0600);
    owner = ::geteuid() + 1;
    EXPECT_EQ("private key of another user (uid " + std::to_string(*owner) + ")", failure());
}

TEST_F(TlsFilesTest, TheGroupMayReadAKeyAndNoMore) {
    for (const mode_t mode : {0400, 0600, 0640, 0700, 0710}) {
        useKey("localhost.key", mode);
        EXPECT_EQ("", failure()) << std::oct << mode;
    }
    for (const mode_t mode : {0604, 0644, 0606}) {
        useKey("localhost.key", mode);
        EXPECT_EQ("private key readable by others", failure()) << std::oct << mode;
    }
    for (const mode_t mode : {0620, 0660, 0602}) {
        useKey("localhost.key", mode);
        EXPECT_EQ("private key writable by group or others", failure()) << std::oct << mode;
    }
}

TEST_F(TlsFilesTest, AKeyIsARegularFile) {
    files.key = path("pipe");
    ASSERT_EQ(0, ::mkfifo(files.key.c_str(), 0600));
    EXPECT_EQ("not a regular file", failure());
    files.key = path("directory");
    ASSERT_EQ(0, ::mkdir(files.key.c_str(), 0700));
    EXPECT_EQ("not a regular file", failure());
    files.key = "/dev/null";
    EXPECT_EQ("not a regular file", failure());
}

TEST_F(TlsFilesTest, AKeyThatIsEncryptedOrOfAnotherCertificateIsRejected) {
    useKey("encrypted.key", 0600);
    EXPECT_EQ("the private key is encrypted", failure());
    useKey("self_signed.key", 0600);
    EXPECT_EQ("key values mismatch", failure());
    useKey("weak_key.key", 0600);
    EXPECT_EQ("different key types", failure());
    useKey("localhost.crt", 0600);
    EXPECT_EQ("unsupported", failure());
}

#include "FakeHost.hpp"

#include "support/Child.hpp"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const std::string noNamespaces = "no namespaces: ";

void require(int result, const std::string& what) {
    if (result != 0)
        throw std::system_error(errno, std::generic_category(), what);
}

void put(const char* path, const std::string& text) {
    std::ofstream out(path);
    out << text;
    if (!out.flush())
        throw std::runtime_error(std::string("cannot write ") + path);
}

/** Moves this process to a new mount namespace; without privileges, to a new user namespace first. */
void unshareMounts() {
    if (::unshare(CLONE_NEWNS) != 0) {
        const std::string user = std::to_string(::geteuid());
        const std::string group = std::to_string(::getegid());
        require(::unshare(CLONE_NEWUSER | CLONE_NEWNS), "unshare");
        put("/proc/self/setgroups", "deny");
        put("/proc/self/uid_map", "0 " + user + " 1");
        put("/proc/self/gid_map", "0 " + group + " 1");
    }
    require(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), "mount --make-rprivate");
}

/** Mounts a directory of the real host read-only at a second path. */
void bindReadOnly(const std::string& directory, const std::string& target) {
    fs::create_directory(target);
    require(::mount(directory.c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr),
            "mount --bind " + directory);
    struct statvfs now {};
    require(::statvfs(target.c_str(), &now), "statvfs");
    const unsigned long kept = now.f_flag & (ST_NOSUID | ST_NODEV | ST_NOEXEC);
    require(::mount("none", target.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY | kept, nullptr),
            "mount -o remount,ro " + directory);
}

void showPrograms(const std::string& root) {
    for (const std::string name : {"bin", "dev", "lib", "lib32", "lib64", "libx32", "usr"}) {
        const fs::path target = root + "/" + name;
        if (fs::is_symlink(target))
            fs::remove(target);
        if (fs::is_symlink("/" + name))
            fs::copy_symlink("/" + name, target);
        else if (fs::is_directory("/" + name))
            bindReadOnly("/" + name, target);
    }
}

/** Sets the root directory of this process; the destructor restores the real one. */
class Root {
public:
    explicit Root(const std::string& directory)
        : m_real(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        require(::chroot(directory.c_str()), "chroot");
        require(::chdir("/"), "chdir");
    }
    ~Root() {
        if (::fchdir(m_real) != 0 || ::chroot(".") != 0)
            std::perror("cannot restore the root directory");
        ::close(m_real);
    }
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;

private:
    int m_real;
};

} // namespace

void FakeHost::setTool(const std::string& script) const {
    fs::permissions(m_root.write("kq/bin/softinv", "#!/bin/sh\n" + script), fs::perms::owner_all);
}

void FakeHost::addDriver() const {
    m_processes.add("7");
    m_processes.add("8");
    setTool("echo prog a b Driver\n");
}

void FakeHost::run(const std::function<void()>& body, const std::string& expectedOutput,
                   Programs programs) const {
    const std::string output = support::inChild("/", [&] {
        try {
            unshareMounts();
            if (programs == Programs::real)
                showPrograms(m_root.path());
        } catch (const std::exception& e) {
            std::printf("%s%s", noNamespaces.c_str(), e.what());
            return;
        }
        const Root root(m_root.path());
        body();
    });
    if (output.compare(0, noNamespaces.size(), noNamespaces) == 0)
        GTEST_SKIP() << output;
    EXPECT_EQ(expectedOutput, output);
}

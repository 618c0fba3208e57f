#include "FakeHost.hpp"

#include "support/Child.hpp"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const std::string refusal = "no namespaces: ";

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

/** Gives this process mounts of its own; without privileges by way of a user namespace. */
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

/** Shows a folder of the real host at another place too, where it is not to be written to. */
void bindReadOnly(const std::string& folder, const std::string& place) {
    fs::create_directory(place);
    require(::mount(folder.c_str(), place.c_str(), nullptr, MS_BIND | MS_REC, nullptr),
            "mount --bind " + folder);
    struct statvfs now {};
    require(::statvfs(place.c_str(), &now), "statvfs");
    const unsigned long kept = now.f_flag & (ST_NOSUID | ST_NODEV | ST_NOEXEC);
    require(::mount("none", place.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY | kept, nullptr),
            "mount -o remount,ro " + folder);
}

void showPrograms(const std::string& root) {
    for (const std::string name : {"bin", "dev", "lib", "lib32", "lib64", "libx32", "usr"}) {
        const fs::path place = root + "/" + name;
        if (fs::is_symlink(place))
            fs::remove(place);
        if (fs::is_symlink("/" + name))
            fs::copy_symlink("/" + name, place);
        else if (fs::is_directory("/" + name))
            bindReadOnly("/" + name, place);
    }
}

/** A folder as the root of this process, as long as this lives. */
class Root {
public:
    explicit Root(const std::string& folder)
        : m_real(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        require(::chroot(folder.c_str()), "chroot");
        require(::chdir("/"), "chdir");
    }
    ~Root() {
        if (::fchdir(m_real) != 0 || ::chroot(".") != 0)
            std::perror("cannot leave the root folder");
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

std::string FakeHost::run(const std::function<void()>& body, Programs programs, std::string& reason) const {
    const std::string output = support::inChild("/", [&] {
        try {
            unshareMounts();
            if (programs == Programs::real)
                showPrograms(m_root.path());
        } catch (const std::exception& e) {
            std::printf("%s%s", refusal.c_str(), e.what());
            return;
        }
        const Root root(m_root.path());
        body();
    });
    reason = output.compare(0, refusal.size(), refusal) == 0 ? output : "";
    return output;
}

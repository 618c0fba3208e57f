#include "doctor/HostChecks.hpp"

#include "agent/Number.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

std::string countProcesses() {
    std::size_t count = 0;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored))
        count += decimal(entry.path().filename().string()) ? 1 : 0;
    return std::to_string(count) + (count == 1 ? " process" : " processes");
}

} // namespace

Check checkProcessTable() {
    constexpr const char* name = "/proc";
    if (!std::ifstream("/proc/self/stat"))
        return {Result::fail, name, "no process can be read", "Mount it: mount -t proc proc /proc"};
    // Process 1 is there on every host, and is another user's to all but root.
    if (!std::ifstream("/proc/1/stat"))
        return {Result::warn, name, countProcesses() + ", without those of other users",
                "It is mounted with hidepid: run agents as root or in the group that its option gid names"};
    return {Result::ok, name, countProcesses() + ", those of other users too", {}};
}

Check checkSoftwareInventory() {
    constexpr const char* name = "inventory";
    constexpr const char* program = "/kq/bin/softinv";
    if (::access(program, X_OK) == 0)
        return {Result::ok, name, std::string(program) + " can be run", {}};
    return {Result::warn, name, std::string(program) + ": " + std::strerror(errno),
            "Only the kind of a process (group 16, RunType) needs it"};
}

} // namespace owbctl

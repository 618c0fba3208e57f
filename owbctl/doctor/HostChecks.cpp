#include "doctor/HostChecks.hpp"

#include "util/Number.hpp"

#include <owb.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

/** Switch files, in the order in which the library looks for them. */
constexpr const char* switches[] = {"vdxDebug", "/tmp/vdxDebug"};
/** Length that the library reads of the first line of a switch file. */
constexpr std::size_t longestLine = 255;

std::string logOf(std::ifstream& file) {
    std::string line;
    std::getline(file, line);
    line.resize(std::min(line.size(), longestLine));
    owbStringClean(line.data(), nullptr);
    line.resize(std::strlen(line.data()));
    return line;
}

std::string whyNotWritable(const std::string& log) {
    std::error_code ignored;
    if (std::filesystem::is_directory(log, ignored))
        return std::strerror(EISDIR);
    const bool exists = ::access(log.c_str(), F_OK) == 0;
    const std::size_t slash = log.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : log.substr(0, slash + 1);
    const int result = ::access(exists ? log.c_str() : directory.c_str(), W_OK);
    return result == 0 ? std::string() : std::strerror(errno);
}

Check checkSwitch(const char* name, const std::string& path, std::ifstream& file) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    const std::string log = logOf(file);
    const std::string start = path + ", of " + userName(status.st_uid);
    if (log.empty())
        return {Result::ok, name, "off: " + start + ", names no log", {}};
    const std::string why = whyNotWritable(log);
    const std::string finding =
        "on: " + start + ", names " + log + (why.empty() ? "" : ", which cannot be written: " + why);
    if (status.st_uid != 0 && status.st_uid != ::geteuid())
        return {Result::warn, name, finding,
                "This user decides where agents write: remove the switch unless it is intended"};
    return {Result::warn, name, finding,
            "Remove the switch when the trace is no longer needed: it grows without limit"};
}

std::string countProcesses() {
    std::size_t count = 0;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored))
        count += util::decimal<long>(entry.path().filename().string()) ? 1 : 0;
    return std::to_string(count) + (count == 1 ? " process" : " processes");
}

} // namespace

Check checkTrace() {
    constexpr const char* name = "trace";
    for (const char* const path : switches) {
        std::error_code ignored;
        if (std::filesystem::is_fifo(path, ignored))
            return {Result::fail, name,
                    std::string(path) + " is a named pipe: agents block at their first request", "Remove it"};
        std::ifstream file(path);
        if (file)
            return checkSwitch(name, path, file);
    }
    return {Result::ok, name, "off: neither vdxDebug here nor /tmp/vdxDebug can be read", {}};
}

Check checkProcessTable() {
    constexpr const char* name = "/proc";
    if (!std::ifstream("/proc/self/stat"))
        return {Result::fail, name, "cannot read any process", "Mount it: mount -t proc proc /proc"};
    // Process 1 exists on every host and belongs to root.
    if (!std::ifstream("/proc/1/stat"))
        return {Result::warn, name, countProcesses() + ", only those of this user",
                "It is mounted with hidepid: run agents as root, or in the group of its mount option gid"};
    return {Result::ok, name, countProcesses() + ", of all users", {}};
}

Check checkSoftwareInventory() {
    constexpr const char* name = "inventory";
    constexpr const char* program = "/kq/bin/softinv";
    if (::access(program, X_OK) == 0)
        return {Result::ok, name, std::string(program) + " is executable", {}};
    return {Result::warn, name, std::string(program) + ": " + std::strerror(errno),
            "Needed only for the kind of a process (group 16, RunType)"};
}

} // namespace owbctl

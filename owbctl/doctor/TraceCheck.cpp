#include "doctor/TraceCheck.hpp"

#include "doctor/Users.hpp"

#include <owb.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

constexpr const char* name = "trace";
/** In the order in which the library looks for them. */
constexpr const char* switches[] = {"vdxDebug", "/tmp/vdxDebug"};
/** What the library reads of a switch file's first line. */
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
    const std::string folder = slash == std::string::npos ? "." : log.substr(0, slash + 1);
    const int result = ::access(exists ? log.c_str() : folder.c_str(), W_OK);
    return result == 0 ? std::string() : std::strerror(errno);
}

Check checkSwitch(const std::string& path, std::ifstream& file) {
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
                "That user decides where agents write: remove the switch unless it is meant"};
    return {Result::warn, name, finding, "Remove the switch when the trace is not needed any more: it grows"};
}

} // namespace

Check checkTrace() {
    for (const char* const path : switches) {
        std::error_code ignored;
        if (std::filesystem::is_fifo(path, ignored))
            return {Result::fail, name,
                    std::string(path) + " is a named pipe: agents stand still at their first request",
                    "Remove it"};
        std::ifstream file(path);
        if (file)
            return checkSwitch(path, file);
    }
    return {Result::ok, name, "off: neither vdxDebug here nor /tmp/vdxDebug can be read", {}};
}

} // namespace owbctl

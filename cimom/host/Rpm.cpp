#include "host/SoftwarePackages.hpp"

#include "system/Program.hpp"

#include <optional>
#include <stdexcept>

namespace cimom {
namespace {

// The directory of the database, and the former one, which may be a link to the other.
const char* const directories[] = {"/usr/lib/sysimage/rpm", "/var/lib/rpm"};

// SQLite and its write-ahead log, ndb, Berkeley DB.
const char* const databases[] = {"rpmdb.sqlite", "rpmdb.sqlite-wal", "Packages.db", "Packages"};

/** The directory of the database; absent if there is none. */
std::optional<std::string> databaseDirectory(const Host& host) {
    for (const std::string directory : directories) {
        for (const std::string file : databases) {
            if (host.fileVersion(directory + "/" + file))
                return directory;
        }
    }
    return std::nullopt;
}

/** Maps a group. Only old distributions have groups. */
SoftwareKind kindOf(std::string_view group) {
    if (group == "System Environment/Kernel")
        return SoftwareKind::operatingSystem;
    const std::string_view top = group.substr(0, group.find('/'));
    return top == "Applications" || top == "Amusements" ? SoftwareKind::application : SoftwareKind::unknown;
}

/** The columns of a line, separated by tabs. A column may be empty. */
std::vector<std::string_view> columnsOf(std::string_view line) {
    std::vector<std::string_view> columns;
    for (;;) {
        const std::size_t tab = line.find('\t');
        columns.push_back(line.substr(0, tab));
        if (tab == std::string_view::npos)
            return columns;
        line.remove_prefix(tab + 1);
    }
}

/** Absent for an entry without architecture: those are signing keys, not software. */
std::optional<SoftwarePackage> parsePackage(std::string_view line) {
    enum Column { name, version, architecture, installed, group, count };
    const std::vector<std::string_view> columns = columnsOf(line);
    if (columns.size() != count || columns[name].empty() || columns[version].empty() ||
        columns[architecture].empty() || columns[architecture] == "(none)")
        return std::nullopt;
    std::optional<std::timespec> time;
    if (const std::optional<std::time_t> seconds = number<std::time_t>(columns[installed]))
        time = std::timespec{*seconds, 0};
    const std::string versionedName = std::string(columns[name]).append("-").append(columns[version]);
    return SoftwarePackage{"rpm:" + versionedName + "." + std::string(columns[architecture]),
                           std::string(columns[name]), std::string(columns[version]), time,
                           kindOf(columns[group])};
}

} // namespace

std::vector<std::string> rpmDatabaseFiles() {
    std::vector<std::string> files;
    for (const std::string directory : directories) {
        for (const char* const file : databases)
            files.push_back(directory + "/" + file);
    }
    return files;
}

service::Question rpmQuestion(const Host& host) {
    const std::optional<std::string> directory = databaseDirectory(host);
    if (!directory)
        return nullptr;
    return [command = std::vector<std::string>{
                host.realPath("/usr/bin/rpm"), "--dbpath", host.realPath(*directory), "-qa", "--qf",
                R"(%{NAME}\t%{VERSION}-%{RELEASE}\t%{ARCH}\t%{INSTALLTIME}\t%{GROUP}\n)"}] {
        ProgramOutput output = outputOf(command);
        if (!output.hasSucceeded)
            throw std::runtime_error("rpm failed");
        return std::move(output.text);
    };
}

std::vector<SoftwarePackage> rpmPackages(const std::string& answer) {
    std::vector<SoftwarePackage> packages;
    for (const std::string_view line : lines(answer)) {
        if (std::optional<SoftwarePackage> package = parsePackage(line))
            packages.push_back(std::move(*package));
    }
    return packages;
}

} // namespace cimom

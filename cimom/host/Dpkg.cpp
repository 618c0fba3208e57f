#include "host/SoftwarePackages.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cimom {

const char* const dpkgStatusFile = "/var/lib/dpkg/status";

namespace {

/** The fields of deb-status(5) that are read. */
struct Stanza {
    std::string_view package;
    std::string_view status;
    std::string_view section;
    std::string_view architecture;
    std::string_view multiArch;
    std::string_view version;
};

const std::pair<std::string_view, std::string_view Stanza::*> fields[] = {
    {"Package", &Stanza::package},      {"Status", &Stanza::status},
    {"Section", &Stanza::section},      {"Architecture", &Stanza::architecture},
    {"Multi-Arch", &Stanza::multiArch}, {"Version", &Stanza::version},
};

/** Reads a line "name: value". A continuation line begins with a blank, so it matches no name. */
void readLine(std::string_view line, Stanza& stanza) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        return;
    const auto found = std::find_if(std::begin(fields), std::end(fields),
                                    [&](const auto& field) { return field.first == line.substr(0, colon); });
    if (found != std::end(fields))
        stanza.*found->second = ascii::trim(line.substr(colon + 1));
}

/**
 * Removes the first stanza of a text and returns it. An empty line ends a stanza. A last line without a line
 * end is truncated and ignored.
 */
Stanza takeStanza(std::string_view& text) {
    Stanza stanza;
    for (;;) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (end == std::string_view::npos || line.empty())
            return stanza;
        readLine(line, stanza);
    }
}

/** The third word is the state of the package. The others are the wanted state and an error flag. */
bool isInstalled(const Stanza& stanza) {
    const std::vector<std::string_view> status = words(stanza.status);
    return status.size() == 3 && status[2] == "installed";
}

/** Whether a word is usable as the name of a package or an architecture in identifiers and file names. */
bool isName(std::string_view word) {
    return !word.empty() && word.find_first_of(":/") == std::string_view::npos;
}

std::string idOf(const Stanza& stanza) {
    return std::string("dpkg:").append(stanza.package).append(":").append(stanza.architecture);
}

/**
 * Maps a section of the Debian archive, which may follow an area ("contrib/games"). Most sections mix parts
 * of the operating system, libraries and applications, so their kind is unknown.
 */
SoftwareKind kindOf(std::string_view section) {
    static const std::string_view applications[] = {"editors",  "education", "electronics", "games",
                                                    "graphics", "hamradio",  "mail",        "math",
                                                    "news",     "science",   "sound",       "video"};
    const std::size_t slash = section.find('/');
    if (section.substr(0, slash) == "non-free-firmware")
        return SoftwareKind::firmware;
    const std::string_view subject = slash == std::string_view::npos ? section : section.substr(slash + 1);
    if (subject == "kernel")
        return SoftwareKind::operatingSystem;
    const bool isApplication =
        std::find(std::begin(applications), std::end(applications), subject) != std::end(applications);
    return isApplication ? SoftwareKind::application : SoftwareKind::unknown;
}

std::optional<std::timespec> installationTime(const Host& host, const Stanza& stanza) {
    std::string path = "/var/lib/dpkg/info/" + std::string(stanza.package);
    // A package that can be installed for several architectures has a list for each.
    if (stanza.multiArch == "same")
        path.append(":").append(stanza.architecture);
    return host.modificationTime(path + ".list");
}

} // namespace

std::vector<SoftwarePackage> dpkgPackages(const Host& host) {
    const std::string content = host.readFile(dpkgStatusFile).value_or("");
    std::string_view rest = content;
    std::vector<SoftwarePackage> packages;
    while (!rest.empty()) {
        const Stanza stanza = takeStanza(rest);
        if (!isInstalled(stanza) || !isName(stanza.package) || !isName(stanza.architecture) ||
            stanza.version.empty())
            continue;
        packages.push_back({idOf(stanza), std::string(stanza.package), std::string(stanza.version),
                            installationTime(host, stanza), kindOf(stanza.section)});
    }
    return packages;
}

} // namespace cimom

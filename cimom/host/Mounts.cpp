#include "host/Mounts.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** A field without escapes: a backslash and three octal digits for a blank, tab, line feed or backslash. */
std::string unescaped(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const std::optional<unsigned> code = field[i] == '\\' && i + 3 < field.size()
                                                 ? number<unsigned>(field.substr(i + 1, 3), 8)
                                                 : std::nullopt;
        if (code && *code <= 0xFF) {
            text += static_cast<char>(*code);
            i += 3;
        } else {
            text += field[i];
        }
    }
    return text;
}

/** Whether "ro" is among options, which commas separate. */
bool hasReadOnly(std::string_view options) {
    while (!options.empty()) {
        const std::size_t end = std::min(options.find(','), options.size());
        if (options.substr(0, end) == "ro")
            return true;
        options.remove_prefix(std::min(end + 1, options.size()));
    }
    return false;
}

std::optional<Mount> parseMount(std::string_view line) {
    enum Column { id, parent, device, part, point, options, firstOptional };
    enum ColumnAfterDash { type = 1, source = 2, fileSystemOptions = 3 };
    const std::vector<std::string_view> fields = words(line);
    if (fields.size() <= firstOptional)
        return std::nullopt;
    const auto dash = std::find(fields.begin() + firstOptional, fields.end(), "-");
    if (fields.end() - dash <= fileSystemOptions)
        return std::nullopt;
    const std::optional<UInt32> ownId = number<UInt32>(fields[id]);
    const std::optional<UInt32> parentId = number<UInt32>(fields[parent]);
    const std::optional<DeviceNumber> ofDevice = parseDeviceNumber(fields[device]);
    if (!ownId || !parentId || !ofDevice || fields[point].front() != '/')
        return std::nullopt;
    return Mount{*ownId,
                 *parentId,
                 *ofDevice,
                 unescaped(fields[part]),
                 unescaped(fields[point]),
                 unescaped(dash[type]),
                 unescaped(dash[source]),
                 hasReadOnly(fields[options]) || hasReadOnly(dash[fileSystemOptions])};
}

/** The parents and mount points of all mounts. */
class MountTree {
public:
    explicit MountTree(const std::vector<Mount>& all) {
        for (const Mount& mount : all) {
            m_parents[mount.id] = mount.parent;
            m_byPoint[mount.point].push_back(mount.id);
        }
    }

    /** Whether a mount that is no ancestor is on the mount point or on a directory above it. */
    bool isHidden(const Mount& mount) const {
        const std::set<UInt32> ancestors = ancestorsOf(mount);
        for (std::string path = mount.point;; path.resize(path.rfind('/'))) {
            const auto found = m_byPoint.find(path.empty() ? "/" : path);
            const auto hides = [&ancestors](UInt32 id) { return ancestors.count(id) == 0; };
            if (found != m_byPoint.end() && std::any_of(found->second.begin(), found->second.end(), hides))
                return true;
            if (path.empty() || path == "/")
                return false;
        }
    }

private:
    /** The mount itself, its parent, the parent of that, and so on. */
    std::set<UInt32> ancestorsOf(const Mount& mount) const {
        std::set<UInt32> ancestors = {mount.id};
        auto next = m_parents.find(mount.id);
        while (next != m_parents.end() && ancestors.insert(next->second).second)
            next = m_parents.find(next->second);
        return ancestors;
    }

    std::map<UInt32, UInt32> m_parents;
    std::map<std::string, std::vector<UInt32>> m_byPoint;
};

} // namespace

std::vector<Mount> mounts(const Host& host) {
    const std::string content = host.readFile("/proc/self/mountinfo").value_or("");
    std::vector<Mount> all;
    for (const std::string_view line : lines(content)) {
        if (std::optional<Mount> mount = parseMount(line))
            all.push_back(std::move(*mount));
    }
    const MountTree tree(all);
    std::vector<Mount> visible;
    std::copy_if(all.begin(), all.end(), std::back_inserter(visible),
                 [&tree](const Mount& mount) { return !tree.isHidden(mount); });
    return visible;
}

bool isBelow(const std::string& path, const std::string& directory) {
    return path.compare(0, directory.size() + 1, directory + "/") == 0;
}

} // namespace cimom

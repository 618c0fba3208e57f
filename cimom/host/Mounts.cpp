#include "host/Mounts.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace cimom {

using namespace OpenWBEM;

namespace {

/**
 * A field without its escapes: a backslash and three octal digits for a blank, tab, line feed, backslash.
 */
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

/** Whether options, which commas separate, say "ro". */
bool sayReadOnly(std::string_view options) {
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
    enum ColumnBehindTheDash { type = 1, source = 2, fileSystemOptions = 3 };
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
                 sayReadOnly(fields[options]) || sayReadOnly(dash[fileSystemOptions])};
}

/** Finds mounts by what they say of each other. */
class MountTree {
public:
    explicit MountTree(const std::vector<Mount>& all) {
        for (const Mount& mount : all) {
            m_parents[mount.id] = mount.parent;
            m_onFolder[mount.point].push_back(mount.id);
        }
    }

    /** Whether another mount stands on the folder of a mount, or on one above, without carrying it. */
    bool isHidden(const Mount& mount) const {
        const std::set<UInt32> carrying = carriersOf(mount);
        for (std::string folder = mount.point;; folder.resize(folder.rfind('/'))) {
            const auto found = m_onFolder.find(folder.empty() ? "/" : folder);
            const auto hides = [&carrying](UInt32 id) { return carrying.count(id) == 0; };
            if (found != m_onFolder.end() && std::any_of(found->second.begin(), found->second.end(), hides))
                return true;
            if (folder.empty() || folder == "/")
                return false;
        }
    }

private:
    /** The mount itself, the one that it stands on, the one that this one stands on, and so on. */
    std::set<UInt32> carriersOf(const Mount& mount) const {
        std::set<UInt32> carriers = {mount.id};
        auto next = m_parents.find(mount.id);
        while (next != m_parents.end() && carriers.insert(next->second).second)
            next = m_parents.find(next->second);
        return carriers;
    }

    std::map<UInt32, UInt32> m_parents;
    std::map<std::string, std::vector<UInt32>> m_onFolder;
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
    std::vector<Mount> seen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(seen),
                 [&tree](const Mount& mount) { return !tree.isHidden(mount); });
    return seen;
}

bool isBelow(const std::string& path, const std::string& folder) {
    return path.compare(0, folder.size() + 1, folder + "/") == 0;
}

} // namespace cimom

#include "metrics/Naming.hpp"

#include "agent/GroupNames.hpp"
#include "metrics/Value.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace metrics {

using agent::Attribute;
using agent::Kind;

namespace {

// Group 17 repeats group 4. Groups 8, 23, 24, 25, 28 and 29 only connect instances.
constexpr Subject subjects[] = {
    {0, "chassis", Shape::labels},   {1, "host", Shape::rows},
    {2, "host", Shape::rows},        {3, "storage", Shape::rows},
    {4, "system", Shape::rows},      {5, "tcp", Shape::rows},
    {6, "tcp", Shape::rows},         {7, "tcp_connections", Shape::sums},
    {9, "network", Shape::rows},     {10, "network", Shape::rows},
    {11, "icmp", Shape::rows},       {12, "ip", Shape::rows},
    {13, "ip", Shape::rows},         {14, "udp", Shape::rows},
    {15, "packages", Shape::sums},   {16, "processes", Shape::sums},
    {18, "disk", Shape::rows},       {19, "partition", Shape::rows},
    {20, "filesystem", Shape::rows}, {21, "device", Shape::rows},
    {22, "processes", Shape::sums},  {26, "expansion_chassis", Shape::labels},
    {27, "module", Shape::labels},   {30, "slot", Shape::labels},
};

constexpr Count counts[] = {
    {7, 0, "owb_tcp_connections", "state", "TCP connections and listeners, by state."},
    {15, -1, "owb_packages", "", "Installed packages."},
    {16, 6, "owb_processes", "state", "Processes, by state."},
    {16, 5, "owb_processes_by_kind", "kind", "Processes, by kind of program."},
};

/** An attribute whose use or name differs from the derived one. */
struct Exception {
    long group;
    long nominator;
    Use use;
    /** Quantity or label; empty if the derived one fits. */
    const char* name;
};

constexpr Exception exceptions[] = {
    {0, 0, Use::label, "index"},
    {0, 6, Use::label, "name"},
    {0, 13, Use::label, "alias"},
    {0, 14, Use::label, "asset_tag"},
    {0, 15, Use::label, "replaceable"},
    {0, 19, Use::label, "contained_in"},
    {2, 1, Use::label, "object_id"},
    {2, 3, Use::label, "contact"},
    {2, 4, Use::label, "name"},
    {2, 5, Use::label, "location"},
    {2, 6, Use::value, "services"},
    {2, 8, Use::label, "version"},
    {3, 1, Use::key, "type"},
    {3, 2, Use::key, "description"},
    {3, 3, Use::value, "block_size"},
    {3, 4, Use::value, "size"},
    {3, 5, Use::value, "used"},
    {3, 7, Use::key, "storage"},
    {4, 0, Use::value, "boot"},
    {4, 1, Use::value, "clock"},
    {4, 2, Use::label, "boot_device"},
    {4, 3, Use::label, "boot_parameters"},
    {4, 4, Use::value, "users"},
    {4, 5, Use::value, "processes"},
    {4, 6, Use::value, "max_processes"},
    {6, 8, Use::value, "established_connections"},
    {9, 2, Use::label, "type"},
    {9, 3, Use::value, "mtu"},
    {9, 5, Use::label, "address"},
    {9, 8, Use::value, "last_state_change"},
    {9, 22, Use::none, ""},
    {9, 23, Use::none, ""},
    {9, 24, Use::key, "device"},
    {9, 25, Use::none, ""},
    {10, 9, Use::value, "receive"},
    {10, 10, Use::value, "receive_unicast_packets"},
    {10, 11, Use::value, "receive_nonunicast_packets"},
    {10, 12, Use::value, "receive_discards"},
    {10, 13, Use::value, "receive_errors"},
    {10, 14, Use::value, "receive_unknown_protocols"},
    {10, 15, Use::value, "transmit"},
    {10, 16, Use::value, "transmit_unicast_packets"},
    {10, 17, Use::value, "transmit_nonunicast_packets"},
    {10, 18, Use::value, "transmit_discards"},
    {10, 19, Use::value, "transmit_errors"},
    {10, 20, Use::value, "transmit_queue_packets"},
    {10, 26, Use::key, "device"},
    {13, 14, Use::value, "reassembly_oks"},
    {13, 16, Use::value, "frag_oks"},
    {15, 4, Use::value, "last_installed"},
    {18, 0, Use::none, ""},
    {18, 1, Use::label, "medium"},
    {18, 3, Use::value, "size"},
    {18, 4, Use::key, "device_index"},
    {19, 5, Use::label, "device_index"},
    {19, 6, Use::key, "partition"},
    {20, 1, Use::key, "mountpoint"},
    {20, 2, Use::label, "remote"},
    {20, 3, Use::key, "fstype"},
    {21, 0, Use::key, "device_index"},
    {21, 1, Use::label, "type"},
    {21, 2, Use::label, "description"},
    {21, 3, Use::label, "id"},
    {21, 4, Use::value, "status"},
    {21, 5, Use::value, "errors"},
    {22, 7, Use::value, "cpu"},
    {22, 9, Use::value, "text"},
    {22, 10, Use::value, "data"},
    {22, 11, Use::value, "stack"},
    {26, 0, Use::label, "index"},
    {26, 6, Use::label, "name"},
    {26, 13, Use::label, "alias"},
    {26, 14, Use::label, "asset_tag"},
    {26, 15, Use::label, "replaceable"},
    {27, 0, Use::label, "index"},
    {27, 13, Use::label, "alias"},
    {27, 14, Use::label, "asset_tag"},
    {27, 15, Use::label, "replaceable"},
    {27, 18, Use::label, "module"},
    {27, 19, Use::label, "contained_in"},
    {30, 0, Use::label, "slot"},
    {30, 1, Use::label, "module_type"},
};

const Exception* exceptionOf(const Attribute& attribute) {
    const auto* const found =
        std::find_if(std::begin(exceptions), std::end(exceptions), [&attribute](const Exception& each) {
            return each.group == attribute.group && each.nominator == attribute.nominator;
        });
    return found == std::end(exceptions) ? nullptr : found;
}

/** The use of an attribute of a group of Shape::rows. */
Use useOfKind(Kind kind) {
    switch (kind) {
    case Kind::key:
    case Kind::index:
    case Kind::reference:
    case Kind::text:
        return Use::label;
    case Kind::state:
    case Kind::counter:
    case Kind::gauge:
    case Kind::size:
    case Kind::date:
    case Kind::interval:
    case Kind::flag:
        break;
    }
    return Use::value;
}

/** Whether values of a kind can be combined into one of all rows. */
bool isSummedUp(Kind kind) {
    return kind == Kind::size || kind == Kind::interval || kind == Kind::date;
}

std::string nameOf(const Attribute& attribute) {
    const Exception* const exception = exceptionOf(attribute);
    if (exception != nullptr && *exception->name != '\0')
        return exception->name;
    std::string name = inSnakeCase(attribute.property);
    for (const char* const suffix : {"_time", "_date"}) {
        const std::size_t size = std::strlen(suffix);
        if (attribute.kind == Kind::date && name.size() > size &&
            name.compare(name.size() - size, size, suffix) == 0)
            name.resize(name.size() - size);
    }
    return name;
}

std::string helpOf(const Attribute& attribute, const Subject& subject) {
    if (subject.shape != Shape::sums)
        return attribute.description;
    return std::string(attribute.kind == Kind::date ? "Latest" : "Sum") + " of all " + subject.name + ": " +
           attribute.description;
}

} // namespace

const Subject* subjectOf(long group) {
    const auto* const found = std::find_if(std::begin(subjects), std::end(subjects),
                                           [group](const Subject& each) { return each.group == group; });
    return found == std::end(subjects) ? nullptr : found;
}

std::vector<long> measuredGroups() {
    std::vector<long> groups;
    std::transform(std::begin(subjects), std::end(subjects), std::back_inserter(groups),
                   [](const Subject& each) { return each.group; });
    return groups;
}

std::vector<long> measuredGroupsNamed(const std::string& text) {
    std::vector<long> groups = agent::groupsNamed(text);
    groups.erase(
        std::remove_if(groups.begin(), groups.end(), [](long group) { return subjectOf(group) == nullptr; }),
        groups.end());
    return groups;
}

std::vector<Count> countsOf(long group) {
    std::vector<Count> found;
    std::copy_if(std::begin(counts), std::end(counts), std::back_inserter(found),
                 [group](const Count& each) { return each.group == group; });
    return found;
}

Use useOf(const Attribute& attribute) {
    if (const Exception* const exception = exceptionOf(attribute))
        return exception->use;
    switch (subjectOf(attribute.group)->shape) {
    case Shape::rows:
        return useOfKind(attribute.kind);
    case Shape::labels:
        return Use::label;
    case Shape::sums:
        break;
    }
    return isSummedUp(attribute.kind) ? Use::value : Use::none;
}

std::string labelOf(const Attribute& attribute) {
    return nameOf(attribute);
}

Family familyOf(const Attribute& attribute) {
    const Subject& subject = *subjectOf(attribute.group);
    const std::string unit = unitOf(attribute);
    const char* const timestamp = attribute.kind == Kind::date ? "_timestamp" : "";
    return {std::string("owb_") + subject.name + '_' + nameOf(attribute) + timestamp +
                (unit.empty() ? "" : "_" + unit),
            attribute.kind == Kind::counter ? Type::counter : Type::gauge,
            unit,
            helpOf(attribute, subject),
            {}};
}

Family infoFamilyOf(const Subject& subject) {
    return {std::string("owb_") + subject.name,
            Type::info,
            "",
            std::string(agent::classOf(subject.group).subject) + '.',
            {}};
}

std::string inSnakeCase(std::string_view name) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char lower = ascii::toLower(name[i]);
        const bool isUpper = lower != name[i];
        const bool isLetterOrDigit = (lower >= 'a' && lower <= 'z') || ascii::isDigit(lower);
        const bool followsLower = i > 0 && ascii::toLower(name[i - 1]) == name[i - 1];
        const bool precedesLower = i + 1 < name.size() && name[i + 1] >= 'a' && name[i + 1] <= 'z';
        const bool beginsWord = isUpper && (followsLower || precedesLower);
        if ((beginsWord || !isLetterOrDigit) && !result.empty() && result.back() != '_')
            result += '_';
        if (isLetterOrDigit)
            result += lower;
    }
    return result;
}

} // namespace metrics

#include "snmp/Oid.hpp"

#include "util/Number.hpp"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace snmp {

const Oid mib2{1, 3, 6, 1, 2, 1};

Oid joined(const Oid& first, const Oid& rest) {
    Oid all;
    all.reserve(first.size() + rest.size());
    all.insert(all.end(), first.begin(), first.end());
    all.insert(all.end(), rest.begin(), rest.end());
    return all;
}

bool startsWith(const Oid& oid, const Oid& prefix) {
    return oid.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), oid.begin());
}

std::string text(const Oid& oid) {
    std::string text;
    for (const std::uint32_t id : oid)
        text += (text.empty() ? "" : ".") + std::to_string(id);
    return text;
}

Oid parseOid(std::string_view text) {
    if (!text.empty() && text.front() == '.')
        text.remove_prefix(1);
    Oid oid;
    for (std::size_t end = 0; end != std::string_view::npos && !text.empty();) {
        end = text.find('.');
        const std::optional<std::uint32_t> id = util::decimal<std::uint32_t>(text.substr(0, end));
        const bool isLast = end == std::string_view::npos;
        if (!id || oid.size() == longestOid || end + 1 == text.size())
            throw std::invalid_argument("not an object identifier");
        oid.push_back(*id);
        text.remove_prefix(isLast ? text.size() : end + 1);
    }
    return oid;
}

} // namespace snmp

#include "users/Users.hpp"

#include "users/PasswordHash.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

namespace cimom {
namespace {

/** Throws unless a text can be a user name. RFC 7617: the first colon ends the name. */
void checkName(const std::string& name) {
    if (name.empty())
        throw std::runtime_error("user name: empty");
    if (name.front() == '#')
        throw std::runtime_error("user name: begins with #");
    if (name.find(':') != std::string::npos)
        throw std::runtime_error("user name: contains a colon");
    if (ascii::holdsControls(name))
        throw std::runtime_error("user name: contains a control character");
}

const char* const readOnly = "read-only";

/** What a user with a mark after the hash may do. */
Access markedAccess(const std::string& mark) {
    if (mark != readOnly)
        throw std::runtime_error("invalid mark after the hash, not \"read-only\"");
    return Access::read;
}

} // namespace

Users::Users(const std::string& text) {
    std::map<std::string, unsigned> firstLines; // by user
    std::istringstream lines(text);
    std::string line;
    for (unsigned number = 1; std::getline(lines, line); ++number) {
        try {
            m_lines.push_back(lineOf(line));
        } catch (const std::runtime_error& e) {
            throw Error(number, e.what());
        }
        const std::string& name = m_lines.back().name;
        const auto [first, isNew] = firstLines.emplace(name, number);
        if (!name.empty() && !isNew)
            throw Error(number,
                        "duplicate user \"" + name + "\", first on line " + std::to_string(first->second));
    }
}

Users::Line Users::lineOf(const std::string& text) {
    if (ascii::holdsControls(text))
        throw std::runtime_error("contains a control character");
    if (text.empty() || text.front() == '#')
        return {std::string(), text, Access::read};
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        throw std::runtime_error("no colon after the user name");
    const std::size_t hashEnd = std::min(text.find(':', colon + 1), text.size());
    Line line{text.substr(0, colon), text.substr(colon + 1, hashEnd - colon - 1)};
    checkName(line.name);
    if (hashEnd < text.size())
        line.access = markedAccess(text.substr(hashEnd + 1));
    const std::string fault = faultOfHash(line.rest);
    if (!fault.empty())
        throw std::runtime_error("the hash of user \"" + line.name + "\" " + fault);
    return line;
}

bool Users::matches(const std::string& user, const std::string& password) const {
    const auto known = find(user);
    const std::string& hash = known == m_lines.end() ? anyHash(user) : known->rest;
    const bool isRight = isPasswordOf(hash, password);
    return known != m_lines.end() && isRight;
}

/** The hash of some user, always the same one for a name; empty if there are no users. */
const std::string& Users::anyHash(const std::string& user) const {
    std::vector<const std::string*> hashes;
    for (const Line& line : m_lines) {
        if (!line.name.empty())
            hashes.push_back(&line.rest);
    }
    static const std::string none;
    return hashes.empty() ? none : *hashes[std::hash<std::string>()(user) % hashes.size()];
}

void Users::set(const std::string& user, const std::string& hash) {
    checkName(user);
    const auto known = find(user);
    if (known == m_lines.end())
        m_lines.push_back({user, hash, Access::write});
    else
        m_lines[static_cast<std::size_t>(known - m_lines.begin())].rest = hash;
}

void Users::restrict(const std::string& user) {
    const auto known = find(user);
    if (known != m_lines.end())
        m_lines[static_cast<std::size_t>(known - m_lines.begin())].access = Access::read;
}

bool Users::has(const std::string& user) const {
    return !user.empty() && find(user) != m_lines.end(); // the names of comments are empty
}

Access Users::access(const std::string& user) const {
    const auto known = find(user);
    return known == m_lines.end() ? Access::read : known->access;
}

bool Users::remove(const std::string& user) {
    const auto known = find(user);
    if (known == m_lines.end())
        return false;
    m_lines.erase(known);
    return true;
}

std::vector<Users::Line>::const_iterator Users::find(const std::string& user) const {
    return std::find_if(m_lines.begin(), m_lines.end(),
                        [&user](const Line& line) { return !line.name.empty() && line.name == user; });
}

std::string Users::text() const {
    std::string text;
    for (const Line& line : m_lines) {
        const bool isUser = !line.name.empty();
        text += (isUser ? line.name + ":" : "") + line.rest;
        text += isUser && line.access == Access::read ? std::string(":") + readOnly + "\n" : "\n";
    }
    return text;
}

} // namespace cimom

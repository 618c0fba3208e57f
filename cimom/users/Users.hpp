#ifndef CIMOM_USERS_USERS_HPP_INCLUDED
#define CIMOM_USERS_USERS_HPP_INCLUDED
#include "objects/Access.hpp"

#include <stdexcept>
#include <string>
#include <vector>

namespace cimom {

/**
 * Users, the hashes of their passwords, and what they may do: a text of lines `name:hash` or, for a user who
 * may only read, `name:hash:read-only`. The hash is in the form of crypt(5). Empty lines, and lines that
 * begin with "#", are comments.
 */
class Users {
public:
    /** A syntax error and its line, counted from 1. */
    class Error : public std::runtime_error {
    public:
        Error(unsigned line, const std::string& why)
            : std::runtime_error(why)
            , m_line(line) {}
        unsigned line() const { return m_line; }

    private:
        unsigned m_line;
    };

    /** No users. */
    Users() = default;
    /** Throws Error if a line has another form, or for a duplicate user. */
    explicit Users(const std::string& text);

    /**
     * Whether a user exists and has this password. Takes as long for a user who does not exist, so that the
     * time does not reveal who does. For the cost see isPasswordOf().
     */
    bool matches(const std::string& user, const std::string& password) const;

    bool has(const std::string& user) const;

    /** What a user may do. A user who does not exist may read. */
    Access access(const std::string& user) const;

    /**
     * Sets the hash of a user. A new user is added at the end, and may write. Throws std::runtime_error if
     * the name is empty, begins with "#", or contains a colon or a control character.
     */
    void set(const std::string& user, const std::string& hash);
    /** Lets a user only read. No effect if the user does not exist. */
    void restrict(const std::string& user);
    /** Removes a user. False if the user does not exist. */
    bool remove(const std::string& user);

    /** The text, with all comments. */
    std::string text() const;

private:
    struct Line {
        std::string name; // empty: a comment
        std::string rest; // the hash or the comment
        Access access = Access::write;
    };

    static Line lineOf(const std::string& text);
    std::vector<Line>::const_iterator find(const std::string& user) const;
    const std::string& anyHash(const std::string& user) const;

    std::vector<Line> m_lines;
};

} // namespace cimom
#endif

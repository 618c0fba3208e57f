#ifndef CIMOM_USERS_USERS_HPP_INCLUDED
#define CIMOM_USERS_USERS_HPP_INCLUDED
#include "objects/Access.hpp"

#include <stdexcept>
#include <string>
#include <vector>

namespace cimom {

/**
 * Users, the hashes of their passwords and what they may do: a text of lines `name:hash` or, for a user who
 * may only read, `name:hash:read-only`, the hash in the form of crypt(5). Empty lines, and lines that begin
 * with "#", are comments.
 */
class Users {
public:
    /** What is wrong with a text, and on which line, from 1. */
    class Error : public std::runtime_error {
    public:
        Error(unsigned line, const std::string& why)
            : std::runtime_error(why)
            , m_line(line) {}
        unsigned line() const { return m_line; }

    private:
        unsigned m_line;
    };

    /** None. */
    Users() = default;
    /** Throws Error when a line is none of the above, or a user comes twice. */
    explicit Users(const std::string& text);

    /**
     * Whether a user is there and has this password. Takes as long for a user who is not there as for one
     * of those who are, so that time does not tell who is; how long, see isPasswordOf().
     */
    bool matches(const std::string& user, const std::string& password) const;

    /** What a user may do: read, if there is no such user. */
    Access access(const std::string& user) const;

    /**
     * Gives a user a hash. A new one comes last and may write, another one may do what it could before.
     * Throws std::runtime_error when the name is empty, begins with "#", or holds a colon or a control
     * character.
     */
    void set(const std::string& user, const std::string& hash);
    /** Lets a user who is there only read. */
    void restrict(const std::string& user);
    /** False when the user is not there. */
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

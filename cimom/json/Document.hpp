#ifndef CIMOM_JSON_DOCUMENT_HPP_INCLUDED
#define CIMOM_JSON_DOCUMENT_HPP_INCLUDED
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace cimom::json {

/** A value of a JSON document (RFC 8259) and its line. */
struct Value {
    enum class Kind { null, boolean, number, string, array, object };

    Kind kind = Kind::null;
    /** Line on which the value begins; of a string, line on which it ends. From 1. */
    unsigned line = 1;
    /** The characters of a string in UTF-8; the source text of a number or a boolean. */
    std::string text;
    /** The elements of an array. */
    std::vector<Value> elements;
    /** The members of an object in source order. Names are unique. */
    std::vector<std::pair<std::string, Value>> members;
};

/** An error in a document, and its line. */
class Error : public std::runtime_error {
public:
    Error(unsigned line, const std::string& why)
        : std::runtime_error(why)
        , m_line(line) {}
    unsigned line() const { return m_line; }

private:
    unsigned m_line;
};

/**
 * Parses a document. Throws Error if it is not JSON, if an object has duplicate names, or if values are
 * nested more than 64 levels deep.
 */
Value parse(const std::string& document);

} // namespace cimom::json
#endif

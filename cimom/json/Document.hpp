#ifndef CIMOM_JSON_DOCUMENT_HPP_INCLUDED
#define CIMOM_JSON_DOCUMENT_HPP_INCLUDED
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace cimom::json {

/** A value of a JSON document (RFC 8259) that knows where it stands. */
struct Value {
    enum class Kind { null, boolean, number, string, array, object };

    Kind kind = Kind::null;
    /** Line of the document on which the value begins, or a string ends; from 1. */
    unsigned line = 1;
    /** Of a string its characters in UTF-8; of a number and a truth value its text. */
    std::string text;
    /** Of an array. */
    std::vector<Value> elements;
    /** Of an object, in their order. No name comes twice. */
    std::vector<std::pair<std::string, Value>> members;
};

/** What is wrong with a document, and on which line. */
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
 * Reads a document. Throws Error for one that is not JSON, in which a name comes twice in an object, or whose
 * values stand more than 64 levels deep.
 */
Value parse(const std::string& document);

} // namespace cimom::json
#endif

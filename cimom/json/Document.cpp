#include "json/Document.hpp"

#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

namespace cimom::json {
namespace {

/** The position of the parser in the document. The iterators that the parser reads through advance it. */
class Position {
public:
    explicit Position(const std::string& document)
        : m_counted(document.data())
        , m_next(document.data()) {}

    void advance() { ++m_next; }

    /** Line of the last character read. Does not count a line end that the parser read to end a number. */
    unsigned line() {
        for (; m_counted + 1 < m_next; ++m_counted)
            m_line += *m_counted == '\n';
        return m_line;
    }

private:
    const char* m_counted;
    const char* m_next;
    unsigned m_line = 1;
};

/** Iterates over the characters of a document and advances a position. */
class Iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Iterator(const char* at, Position& position)
        : m_at(at)
        , m_position(&position) {}

    reference operator*() const { return *m_at; }
    Iterator& operator++() {
        ++m_at;
        m_position->advance();
        return *this;
    }
    bool operator==(const Iterator& other) const { return m_at == other.m_at; }
    bool operator!=(const Iterator& other) const { return m_at != other.m_at; }

private:
    const char* m_at;
    Position* m_position;
};

/** A message of nlohmann without its prefix, which holds the position. */
std::string reason(const std::string& message) {
    const std::size_t prefix = message.find(": ");
    return prefix == std::string::npos ? message : message.substr(prefix + 2);
}

/** Builds the document from the parser's events. */
class Builder : public nlohmann::json_sax<nlohmann::json> {
public:
    Builder(Value& root, Position& position)
        : m_root(root)
        , m_position(position) {}

    bool null() override { return leaf(Value::Kind::null, "null"); }
    bool boolean(bool value) override { return leaf(Value::Kind::boolean, value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return number(std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return number(std::to_string(value)); }
    bool number_float(number_float_t, const string_t& text) override { return number(text); }
    bool string(string_t& value) override { return leaf(Value::Kind::string, value); }
    bool binary(binary_t&) override { return false; } // JSON has no binary values

    bool start_object(std::size_t) override { return open(Value::Kind::object); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Value::Kind::array); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override {
        if (!m_open.back().names.insert(name).second)
            throw Error(m_position.line(), "duplicate name \"" + name + "\"");
        m_open.back().value->members.emplace_back(name, Value());
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& e) override {
        throw Error(m_position.line(), reason(e.what()));
    }

private:
    /** An array or an object whose end has not been read. */
    struct Open {
        Value* value;
        std::set<std::string> names; // of the members of an object
    };

    bool number(const std::string& text) { return leaf(Value::Kind::number, text); }

    bool leaf(Value::Kind kind, const std::string& text) {
        add(kind).text = text;
        return true;
    }

    bool open(Value::Kind kind) {
        const std::size_t deepest = 64;
        if (m_open.size() == deepest)
            throw Error(m_position.line(), "more than 64 levels deep");
        m_open.push_back({&add(kind), {}});
        return true;
    }

    bool close() {
        m_open.pop_back();
        return true;
    }

    /** Adds a value to the innermost open one. Only that one grows, so pointers to the others stay valid. */
    Value& add(Value::Kind kind) {
        Value& value = next();
        value.kind = kind;
        value.line = m_position.line();
        return value;
    }

    Value& next() {
        if (m_open.empty())
            return m_root;
        Value& parent = *m_open.back().value;
        if (parent.kind == Value::Kind::object)
            return parent.members.back().second;
        return parent.elements.emplace_back();
    }

    Value& m_root;
    Position& m_position;
    std::vector<Open> m_open; // the innermost last
};

} // namespace

Value parse(const std::string& document) {
    Value root;
    Position position(document);
    Builder builder(root, position);
    const char* const begin = document.data();
    nlohmann::json::sax_parse(Iterator(begin, position), Iterator(begin + document.size(), position),
                              &builder);
    return root;
}

} // namespace cimom::json

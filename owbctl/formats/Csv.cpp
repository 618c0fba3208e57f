#include "formats/Csv.hpp"

#include "output/Text.hpp"

namespace owbctl {
namespace {

bool mustBeQuoted(std::string_view text) {
    return text.empty() || text.find_first_of(",\"\r\n") != std::string_view::npos || text.front() == ' ' ||
           text.back() == ' ';
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text)
        result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

} // namespace

void Csv::header(const std::vector<std::string>& names) {
    for (const std::string& name : names)
        text(name);
    end();
}

Csv& Csv::text(std::string_view text) {
    const std::string valid = validUtf8(text);
    return bare(mustBeQuoted(valid) ? quoted(valid) : valid);
}

Csv& Csv::bare(std::string_view text) {
    m_text += m_first ? "" : ",";
    m_text += text;
    m_first = false;
    return *this;
}

Csv& Csv::values(const std::vector<std::string>& values) {
    if (values.empty())
        return bare("");
    std::string all;
    for (const std::string& value : values)
        all += (&value == &values.front() ? "" : "\n") + value;
    return text(all);
}

void Csv::end() {
    m_text += '\n';
    m_first = true;
}

} // namespace owbctl

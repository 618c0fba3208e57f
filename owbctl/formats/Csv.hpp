#ifndef OWBCTL_FORMATS_CSV_HPP
#define OWBCTL_FORMATS_CSV_HPP

#include <string>
#include <string_view>
#include <vector>

namespace owbctl {

/** Records of comma-separated values as RFC 4180 writes them, but with a line feed behind each. */
class Csv {
public:
    void header(const std::vector<std::string>& names);

    /** Adds a field: a text, quoted where it must be and when it is empty. */
    Csv& text(std::string_view text);
    /** Adds a field that needs no quotes; the empty one stands for no value. */
    Csv& bare(std::string_view text);
    template <class Number>
    Csv& number(Number number) {
        return bare(std::to_string(number));
    }
    /** Adds a field that holds all values, a line feed between them; none is no value. */
    Csv& values(const std::vector<std::string>& values);
    /** Ends a record. */
    void end();

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
    bool m_first = true;
};

} // namespace owbctl
#endif

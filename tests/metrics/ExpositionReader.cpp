#include "ExpositionReader.hpp"

#include <algorithm>
#include <codecvt>
#include <locale>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>

namespace exposition {
namespace {

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool isUtf8(const std::string& text) {
    try {
        std::wstring_convert<std::codecvt_utf8<char32_t>, char32_t>().from_bytes(text);
        return true;
    } catch (const std::range_error&) {
        return false;
    }
}

/** Reads the lines one by one. */
class Reader {
public:
    explicit Reader(metrics::Format format)
        : m_isOpenMetrics(format == metrics::Format::openMetrics) {}

    void take(const std::string& line) {
        if (m_isEnded)
            fault(line, "after the end");
        else if (line.empty())
            fault(line, "empty line");
        else if (line == "# EOF")
            m_isEnded = true;
        else if (line.compare(0, 7, "# HELP ") == 0)
            takeHelp(line.substr(7));
        else if (line.compare(0, 7, "# TYPE ") == 0)
            takeType(line.substr(7));
        else if (line.compare(0, 7, "# UNIT ") == 0)
            takeUnit(line.substr(7));
        else
            takeSample(line);
    }

    Text end() {
        if (m_isEnded != m_isOpenMetrics)
            fault("# EOF", "is for OpenMetrics alone");
        return std::move(m_text);
    }

private:
    void fault(const std::string& line, const std::string& why) {
        m_text.faults.push_back(why + ": " + line.substr(0, 200));
    }

    void takeHelp(const std::string& rest) {
        m_family = rest.substr(0, rest.find(' '));
        m_isTyped = false;
        if (!m_text.helps.emplace(m_family, rest.substr(std::min(m_family.size() + 1, rest.size()))).second)
            fault(rest, "second HELP: families are interleaved");
        if (m_text.helps[m_family].empty())
            fault(rest, "no help text");
    }

    void takeType(const std::string& rest) {
        const std::string name = rest.substr(0, rest.find(' '));
        if (name != m_family || m_isTyped)
            fault(rest, "TYPE does not follow its HELP");
        m_isTyped = true;
        const std::string type = m_text.types[name] = rest.substr(name.size() + 1);
        if (type != "counter" && type != "gauge" && !(type == "info" && m_isOpenMetrics))
            fault(rest, "unknown type");
        if (!m_isOpenMetrics && (type == "counter") != endsWith(name, "_total"))
            fault(rest, "_total is for counters");
        if (m_isOpenMetrics && (endsWith(name, "_total") || endsWith(name, "_info")))
            fault(rest, "family with a suffix");
        checkName(name);
    }

    void takeUnit(const std::string& rest) {
        const std::string name = rest.substr(0, rest.find(' '));
        const std::string unit = m_text.units[name] = rest.substr(name.size() + 1);
        if (!m_isOpenMetrics || name != m_family || !endsWith(name, "_" + unit))
            fault(rest, "UNIT does not fit");
    }

    /** The rules of promtool. */
    void checkName(const std::string& name) {
        static const std::regex form("owb(_[a-z0-9]+)+");
        if (!std::regex_match(name, form))
            fault(name, "no name in snake case");
        static const std::regex discouraged(
            "_(s|ms|us|ns|sec|b|kb|mb|gb|tb|pb|m|h|d|counter|gauge|histogram|summary|bits|minutes|hours|days|"
            "weeks|"
            "((pico|nano|micro|milli|centi|deci|deca|hecto|kilo|kibi|mega|mebi|giga|gibi|tera|tebi|peta|pebi)"
            "(bytes|seconds|bits)))(_|$)");
        if (std::regex_search(name, discouraged))
            fault(name, "abbreviation, type or unit that is no base unit");
        if (std::regex_search(name, std::regex("_(bucket|count|sum|created)$")))
            fault(name, "suffix of a histogram");
    }

    std::string sampleName() {
        if (!m_isOpenMetrics)
            return m_family;
        const std::string& type = m_text.types[m_family];
        return m_family + (type == "counter" ? "_total" : type == "info" ? "_info" : "");
    }

    void takeSample(const std::string& line) {
        Sample sample;
        std::size_t at = line.find_first_of("{ ");
        sample.name = line.substr(0, at);
        if (!m_isTyped || sample.name != sampleName())
            fault(line, "sample of another family");
        if (at != std::string::npos && line[at] == '{')
            at = takeLabels(line, at, sample);
        sample.value = line.substr(std::min(at + 1, line.size()));
        if (!std::regex_match(sample.value, std::regex("-?(0|[1-9][0-9]*)(\\.[0-9]*[1-9])?")))
            fault(line, "no decimal number");
        std::string identity = sample.name;
        for (const auto& [name, value] : sample.labels)
            identity += '\0' + name + '\0' + value;
        if (!m_identities.insert(identity).second)
            fault(line, "second sample of a series");
        m_text.samples.push_back(std::move(sample));
    }

    /** The character that an escape sequence means; its backslash precedes the index. */
    char unescaped(const std::string& line, std::size_t at) {
        const char c = at < line.size() ? line[at] : '\0';
        if (c != '\\' && c != '"' && c != 'n')
            fault(line, "unknown escape");
        return c == 'n' ? '\n' : c;
    }

    /** Returns the index of the blank after the labels. */
    std::size_t takeLabels(const std::string& line, std::size_t at, Sample& sample) {
        do {
            const std::size_t mark = line.find("=\"", ++at);
            const std::string name = line.substr(at, mark - at);
            at = mark + 2;
            std::string value;
            for (; at < line.size() && line[at] != '"'; ++at) {
                if (line[at] == '\\')
                    value += unescaped(line, ++at);
                else
                    value += line[at];
            }
            if (mark == std::string::npos || !std::regex_match(name, std::regex("[a-z][a-z0-9_]*")) ||
                value.empty())
                fault(line, "invalid label");
            if (!isUtf8(value))
                fault(line, "label is not UTF-8");
            if (!sample.labels.emplace(name, value).second)
                fault(line, "label twice");
            ++at;
        } while (at < line.size() && line[at] == ',');
        if (at + 1 >= line.size() || line[at] != '}' || line[at + 1] != ' ')
            fault(line, "labels do not end");
        return at + 1;
    }

    const bool m_isOpenMetrics;
    Text m_text;
    std::string m_family;
    bool m_isTyped = false;
    bool m_isEnded = false;
    std::set<std::string> m_identities;
};

} // namespace

std::string Text::value(const std::string& name, const std::map<std::string, std::string>& labels) const {
    std::string found = "(none)";
    for (const Sample& sample : samples) {
        if (sample.name == name &&
            std::includes(sample.labels.begin(), sample.labels.end(), labels.begin(), labels.end()))
            found = found == "(none)" ? sample.value : "(several)";
    }
    return found;
}

std::size_t Text::count(const std::string& name) const {
    return static_cast<std::size_t>(std::count_if(samples.begin(), samples.end(),
                                                  [&name](const Sample& each) { return each.name == name; }));
}

Text read(const std::string& text, metrics::Format format) {
    Reader reader(format);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        reader.take(line);
    Text result = reader.end();
    if (!text.empty() && text.back() != '\n')
        result.faults.push_back("the last line has no end");
    return result;
}

} // namespace exposition

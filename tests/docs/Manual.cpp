#include "Manual.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace manual {
namespace {

std::string without(const std::string& text, const char* pattern) {
    return std::regex_replace(text, std::regex(pattern), " ");
}

/** Not by a regular expression: std::regex uses stack for every character of a comment. */
std::string withoutComments(std::string text) {
    for (std::size_t begin; (begin = text.find("/*")) != std::string::npos;) {
        const std::size_t end = text.find("*/", begin + 2);
        if (end == std::string::npos)
            throw std::runtime_error("a comment without an end");
        text.replace(begin, end + 2 - begin, " ");
    }
    return text;
}

/** Splits code at semicolons. */
std::vector<std::string> statements(const std::string& text) {
    std::vector<std::string> found;
    std::istringstream in(text);
    for (std::string statement; std::getline(in, statement, ';');)
        found.push_back(statement);
    return found;
}

/** Canonical form: white space only where it separates words. */
std::string compact(const std::string& text) {
    const std::string spaced = std::regex_replace(text, std::regex(R"(\s+)"), " ");
    const std::string tight = std::regex_replace(spaced, std::regex(R"( ?([(),*&\[\]]) ?)"), "$1");
    return std::regex_replace(tight, std::regex("^ | $"), "");
}

/** The functions, and the variables declared "extern", in C code without comments and macros. */
std::vector<Declaration> declarationsOf(const std::string& code) {
    static const std::regex function(R"(^[\w:*& ]+\b(\w+)\()"), variable(R"(^extern [\w* ]+\b(\w+)(\[|$))");
    std::vector<Declaration> found;
    for (const std::string& statement : statements(code)) {
        const std::string text = compact(statement);
        std::smatch match;
        if (std::regex_search(text, match, function) || std::regex_search(text, match, variable))
            found.push_back({match[1], text});
    }
    return found;
}

/** The source of one section of a page. */
std::string section(const std::string& page, const std::string& title) {
    const std::string heading = "\n.SH " + title + "\n";
    const std::size_t begin = page.find(heading);
    if (begin == std::string::npos)
        throw std::runtime_error("no section " + title);
    const std::size_t first = begin + heading.size();
    return page.substr(first, page.find("\n.SH ", first - 1) - first);
}

/** The text of a line `.B text`, without quotes; empty for any other line. */
std::string boldText(const std::string& line) {
    if (line.compare(0, 3, ".B ") != 0)
        return std::string();
    const std::string text = line.substr(3);
    return text.front() == '"' ? text.substr(1, text.find_last_of('"') - 1) : text;
}

} // namespace

std::string contentOf(const std::string& path) {
    std::ifstream file(path);
    std::stringstream content;
    content << file.rdbuf();
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    return content.str();
}

std::vector<Declaration> declarationsIn(const std::string& header) {
    std::string code = without(withoutComments(header), R"(#[^\n]*)");
    code = without(code, R"(__attribute__\s*\(\(.*\)\))");
    return declarationsOf(without(code, R"(extern "C(\+\+)?"\s*\{|\})"));
}

std::set<std::string> identifiersIn(const std::string& text) {
    static const std::regex identifier(R"([A-Za-z_]\w*)");
    return {std::sregex_token_iterator(text.begin(), text.end(), identifier), std::sregex_token_iterator()};
}

std::string pageOf(const std::string& directory, const std::string& name) {
    return contentOf(directory + "/" + name + ".3");
}

std::vector<std::string> namesOfPages(const std::string& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.path().extension() == ".3")
            names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::set<std::string> namesIn(const std::string& page) {
    const std::string line = section(page, "NAME");
    return identifiersIn(line.substr(0, line.find(" \\- ")));
}

std::vector<Declaration> synopsisOf(const std::string& page) {
    std::string code;
    std::istringstream lines(section(page, "SYNOPSIS"));
    for (std::string line; std::getline(lines, line);) {
        const std::string text = boldText(line);
        if (text.compare(0, 1, "#") != 0)
            code += text + "\n";
    }
    return declarationsOf(code);
}

} // namespace manual

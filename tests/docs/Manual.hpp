#ifndef DOCS_MANUAL_HPP
#define DOCS_MANUAL_HPP
#include <set>
#include <string>
#include <vector>

/** The declarations of the public header and those of the man pages in section 3. */
namespace manual {

/** A declared function or variable. */
struct Declaration {
    std::string name;
    /** The text in canonical white space. */
    std::string text;
};

std::string contentOf(const std::string& path);

/** The functions and the variables that a C or C++ header declares. */
std::vector<Declaration> declarationsIn(const std::string& header);

/** All identifiers of a text. */
std::set<std::string> identifiersIn(const std::string& text);

/** The page of a name in section 3. Throws if there is no page. */
std::string pageOf(const std::string& directory, const std::string& name);

/** The names of all pages of section 3. */
std::vector<std::string> namesOfPages(const std::string& directory);

/** The names that the section NAME of a page lists. */
std::set<std::string> namesIn(const std::string& page);

/** The declarations in the section SYNOPSIS of a page: its lines in bold. */
std::vector<Declaration> synopsisOf(const std::string& page);

} // namespace manual
#endif

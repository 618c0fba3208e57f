#ifndef TESTS_OWBCTL_OWBCTL_HPP
#define TESTS_OWBCTL_OWBCTL_HPP

#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <string>
#include <vector>

namespace owbctl_test {

/** Runs owbctl with the given arguments. */
support::ProgramResult owbctl(const std::vector<std::string>& arguments);

/** Runs a shell command line; "$OWBCTL" is the program. */
support::ProgramResult shell(const std::string& line);

/** A successful answer with the given instances. */
support::Step instances(const std::vector<std::string>& each);

/** A successful answer with one instance of the given properties. */
support::Step instanceOf(const std::vector<std::string>& properties);

/** A successful answer to a write. */
support::Step accepted();

/** All answers to a write of one row: the instances before it, twice, since the library counts the rows
 * again; a successful answer to the write; the instances after it. */
std::vector<support::Step> writeOf(const support::Step& before, const support::Step& after);

/** URL of a socket that does not exist. */
std::string deadUrl();

/** Runs `owbctl --url URL` and the given arguments, with a peer that plays the given answers. */
support::ProgramResult owbctlAt(const std::vector<support::Step>& answers,
                                const std::vector<std::string>& arguments);

/** Runs `owbctl get` for the groups, with a peer that plays the given answers, one for each group. */
support::ProgramResult get(const std::vector<support::Step>& answers,
                           const std::vector<std::string>& arguments);

} // namespace owbctl_test
#endif

#ifndef AGENT_CONNECTION_HPP
#define AGENT_CONNECTION_HPP

#include <string>

namespace owbctl {

/**
 * Drops the library's client, if there is one, and makes a new one for the URL that is set. Nothing is sent.
 * Returns the empty text, or why there is no client, as for a malformed URL.
 */
std::string connectAnew();

} // namespace owbctl
#endif

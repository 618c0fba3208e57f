#ifndef AGENT_CLIENT_HPP
#define AGENT_CLIENT_HPP

#include "agent/Reason.hpp"

#include <optional>
#include <string>

/**
 * Requests through the client that the library keeps. The library catches the exceptions of its client and
 * only traces them; these functions report them. All return nothing on success, block like a call of the
 * library, and must run in the thread that calls it: the client is one per process.
 */
namespace agent {

/** Drops the library's client, if there is one, and makes a new one for the URL that is set. Sends nothing:
 * the next request connects. Fails for example for a malformed URL. */
std::optional<Failure> reconnect();

/** Requests all instances of a class, as OWB_getGroup() does, and drops them. */
std::optional<Failure> requestInstances(const std::string& className);

/** Requests the instance that a path names, as OWB_getInstance() does, and drops it. */
std::optional<Failure> requestInstance(const std::string& path);

} // namespace agent
#endif

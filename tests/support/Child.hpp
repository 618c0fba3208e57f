#ifndef TESTS_SUPPORT_CHILD_HPP
#define TESTS_SUPPORT_CHILD_HPP
#include <functional>
#include <string>

namespace support {

/**
 * Runs a body in a child process with the given current directory. Returns its standard output. The state
 * that the library keeps for each process (the trace switch, the client) is new in the child. A failed
 * expectation or a crash of the body fails the calling test.
 */
std::string inChild(const std::string& directory, const std::function<void()>& body);

} // namespace support
#endif

#ifndef TESTS_SUPPORT_CHILD_HPP
#define TESTS_SUPPORT_CHILD_HPP
#include <functional>
#include <string>

namespace support {

/**
 * Runs a body in a child process, with the given current directory, and returns what it printed to
 * standard output. What the library keeps once a process (the trace switch, the client) begins afresh there.
 * A failed expectation of the body, or a crash, is a failure of the calling test.
 */
std::string inChild(const std::string& directory, const std::function<void()>& body);

} // namespace support
#endif

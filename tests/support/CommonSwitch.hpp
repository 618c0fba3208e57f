#ifndef TESTS_SUPPORT_COMMON_SWITCH_HPP
#define TESTS_SUPPORT_COMMON_SWITCH_HPP
#include <string>

namespace support {

/**
 * The file that stands for /tmp/vdxDebug in this program, so that no test depends on what lies in /tmp. None
 * unless a test names one.
 */
extern std::string commonSwitch;

} // namespace support
#endif

#ifndef TESTS_SUPPORT_COMMON_SWITCH_HPP
#define TESTS_SUPPORT_COMMON_SWITCH_HPP
#include <string>

namespace support {

/**
 * The file that this program opens instead of /tmp/vdxDebug, so that no test depends on the contents of /tmp.
 * Empty: there is no such file.
 */
extern std::string commonSwitch;

} // namespace support
#endif

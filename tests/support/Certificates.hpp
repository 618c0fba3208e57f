#ifndef TESTS_SUPPORT_CERTIFICATES_HPP
#define TESTS_SUPPORT_CERTIFICATES_HPP
#include <string>

namespace support {

/**
 * The path of a file that make_certificates.sh makes, such as "localhost.pem". The variable
 * OWB_TEST_CERTIFICATES names the directory, which CTest makes once for all tests; without it, each process
 * makes its own.
 */
std::string certificate(const std::string& name);

} // namespace support
#endif

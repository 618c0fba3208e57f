#include "support/Certificates.hpp"

#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <cstdlib>
#include <stdexcept>

namespace support {
namespace {

std::string makeCertificates() {
    static const TempDir parent;
    std::string directory = parent.file("certificates");
    const ProgramResult made = runProgram({MAKE_CERTIFICATES, OPENSSL, directory});
    if (made.exitCode != 0)
        throw std::runtime_error("cannot make certificates: " + made.err);
    return directory;
}

} // namespace

std::string certificate(const std::string& name) {
    static const char* const given = std::getenv("OWB_TEST_CERTIFICATES");
    static const std::string directory = given ? given : makeCertificates();
    return directory + "/" + name;
}

} // namespace support

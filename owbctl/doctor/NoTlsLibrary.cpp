#include "doctor/TlsLibrary.hpp"

namespace owbctl {

std::unique_ptr<owtls::TlsEngine> tlsEngine(const std::string&, bool) {
    return nullptr;
}

} // namespace owbctl

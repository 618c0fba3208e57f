#include "snmp/session/MasterAddress.hpp"

#include "http/NetworkAddress.hpp"

#include <cstddef>
#include <sys/un.h>

namespace snmp {
namespace {

const std::string tcp = "tcp:";

MasterAddress unixAddress(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return {path, {&address, sizeof address}};
}

} // namespace

std::optional<MasterAddress> masterAddress(const std::string& text) {
    if (text.rfind(tcp, 0) == 0) {
        const std::optional<http::NetworkAddress> network = http::networkAddress(text.substr(tcp.size()));
        if (!network)
            return std::nullopt;
        return MasterAddress{text, {&network->address, network->size}};
    }
    if (text.empty() || text.size() >= sizeof(sockaddr_un::sun_path))
        return std::nullopt;
    return unixAddress(text);
}

} // namespace snmp

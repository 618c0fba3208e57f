// The URL of an object manager, and its address.
#include "OW_Exception.hpp"
#include "OW_URL.hpp"
#include "client/Endpoint.hpp"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace OpenWBEM;
    try {
        const URL url(String(reinterpret_cast<const char*>(data), size));
        endpointOf(url);
    } catch (const Exception&) {
    }
    return 0;
}

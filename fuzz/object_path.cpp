// The text of an object path: parse, write, parse again.
#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace OpenWBEM;
    try {
        const CIMObjectPath path = CIMObjectPath::parse(String(reinterpret_cast<const char*>(data), size));
        if (path)
            CIMObjectPath::parse(path.toString());
    } catch (const Exception&) {
    }
    return 0;
}

// The text of a date or an interval.
#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace OpenWBEM;
    const String text(reinterpret_cast<const char*>(data), size);
    try {
        CIMDateTime(text).toString();
    } catch (const Exception&) {
    }
    try {
        DateTime(text).get();
    } catch (const Exception&) {
    }
    return 0;
}
